# SPDX-License-Identifier: Apache-2.0
<#
.SYNOPSIS
    Builds with Visual Studio, warnings as errors, and checks what was built as far as it needs no driver.
.DESCRIPTION
    For any PowerShell; Windows' own takes scripts with
        powershell -ExecutionPolicy Bypass -File scripts\test.ps1
    The newest Visual Studio on the machine is used. Checks the DLL's exports and imports, the tool on the samples, the
    package, and a project of somebody else that uses the package. The tests proper run on Debian: scripts/test.sh.
#>
[CmdletBinding()]
param()

Set-StrictMode -Version Latest
$ErrorActionPreference = 'Stop'
. (Join-Path $PSScriptRoot 'visual-studio.ps1')

$script:passed = 0
$script:failed = 0

# A check passes when its lists are equal, and an empty list is never right.
function Test-Equal {
    param(
        [Parameter(Mandatory)][string]$Name,
        [AllowNull()][AllowEmptyCollection()][object[]]$Expected,
        [AllowNull()][AllowEmptyCollection()][object[]]$Found
    )
    $Expected = @($Expected)
    $Found = @($Found)
    $same = $Expected.Count -gt 0 -and $Expected.Count -eq $Found.Count
    for ($i = 0; $same -and $i -lt $Expected.Count; $i++) { $same = $Expected[$i] -ceq $Found[$i] }
    if ($same) {
        $script:passed++
        Write-Host "passed  $Name"
        return
    }
    $script:failed++
    Write-Host "FAILED  $Name"
    Write-Host "  expected: $($Expected -join ' ')"
    Write-Host "  found:    $($Found -join ' ')"
}

function Test-ExitCode {
    param([Parameter(Mandatory)][string]$Name, [Parameter(Mandatory)][int]$Expected, [string[]]$Arguments)
    $process = Start-Process -FilePath $tool -ArgumentList $Arguments -NoNewWindow -Wait -PassThru `
        -RedirectStandardError "$work/stderr.txt" -RedirectStandardOutput "$work/stdout.txt"
    Test-Equal -Name $Name -Expected @($Expected) -Found @($process.ExitCode)
}

function Get-ListedExport {
    Get-Content -LiteralPath 'src/windows/exports.def' |
        ForEach-Object { if ($_ -cmatch '^  (\w+)') { $Matches[1] } } | Sort-Object -CaseSensitive
}

function Get-BuiltExport {
    Invoke-Checked -Program dumpbin -Arguments @('/nologo', '/exports', $library) |
        ForEach-Object { if ($_ -cmatch '^\s+\d+\s+[0-9A-F]+\s+[0-9A-F]{8}\s+(vqs?\w+)') { $Matches[1] } } |
        Sort-Object -CaseSensitive
}

function Get-Import {
    $imports = @(Invoke-Checked -Program dumpbin -Arguments @('/nologo', '/dependents', $library) |
            ForEach-Object { if ($_ -match '^\s+(\S+\.dll)\s*$') { $Matches[1] } })
    if ($imports.Count -eq 0) { throw "nothing was found that $library imports" }
    $imports
}

function Get-ForeignImport {
    $foreign = @(Get-Import | Where-Object { $_ -notmatch '^(kernel32|cfgmgr32|version|ucrtbase|api-ms-win-[\w-]+)\.dll$' })
    if ($foreign.Count -gt 0) { $foreign } else { 'none' }
}

function Test-SharedRuntime {
    @(Get-Import | Where-Object { $_ -match '^(ucrtbase|api-ms-win-crt-[\w-]+)\.dll$' }).Count -gt 0
}

function Get-PolicyText {
    param([Parameter(Mandatory)][string]$Json)
    (ConvertFrom-Json -InputObject $Json).policies | ConvertTo-Json -Depth 20 -Compress
}

function Test-Sample {
    param([Parameter(Mandatory)][string]$Sample)
    $expected = Get-Content -Raw -Encoding UTF8 -LiteralPath "examples/policies/$Sample.json"
    $shown = Invoke-Checked -Program $tool -Arguments @('binary', 'show', "examples/policies/$Sample.bin", '--json')
    Test-Equal -Name "vqs shows $Sample as what it holds" -Expected @(Get-PolicyText $expected) `
        -Found @(Get-PolicyText ($shown -join "`n"))
}

function Test-Package {
    param([Parameter(Mandatory)][string]$Prefix)
    Invoke-Checked -Program cmake -Arguments @('--install', $build, '--config', 'Release', '--prefix', $Prefix)
    foreach ($file in 'bin/VexoQTFServices.dll', 'bin/vqs.exe', 'lib/VexoQTFServices.lib', 'include/vqs/vqs.h',
        'lib/cmake/VexoQTFServices/VexoQTFServicesConfig.cmake', 'LICENSE.txt', 'VexoQTFServices.spdx.json') {
        Test-Equal -Name "the package has $file" -Expected @($true) -Found @(Test-Path -LiteralPath "$Prefix/$file")
    }
    $bill = Get-Content -Raw -LiteralPath "$Prefix/VexoQTFServices.spdx.json" | ConvertFrom-Json
    $entry = @($bill.files | Where-Object { $_.fileName -ceq './bin/VexoQTFServices.dll' })
    Test-Equal -Name 'the bill of materials has the checksum of the DLL' `
        -Expected @((Get-FileHash -Algorithm SHA256 -LiteralPath "$Prefix/bin/VexoQTFServices.dll").Hash) `
        -Found @($entry | ForEach-Object { $_.checksums[1].checksumValue.ToUpperInvariant() })
}

function Test-Consumer {
    param([Parameter(Mandatory)][string]$Prefix)
    $consumer = "$work/consumer"
    Invoke-Checked -Program cmake -Arguments @('-S', 'tests/package/consumer', '-B', $consumer,
        '-G', 'Ninja Multi-Config', '-DCMAKE_C_COMPILER=cl', '-DCMAKE_CXX_COMPILER=cl', "-DCMAKE_PREFIX_PATH=$Prefix")
    Invoke-Checked -Program cmake -Arguments @('--build', $consumer, '--config', 'Release')
    Copy-Item -LiteralPath "$Prefix/bin/VexoQTFServices.dll" -Destination "$consumer/Release"
    Test-Equal -Name 'a program in C uses the package' -Expected @('C: 0.1.0.0') `
        -Found @(Invoke-Checked -Program "$consumer/Release/consumer_c.exe")
    Test-Equal -Name 'a program in C++ uses the package' -Expected @('C++: 0.1.0.0') `
        -Found @(Invoke-Checked -Program "$consumer/Release/consumer_cpp.exe")
}

Invoke-WithVisualStudio {
    Assert-Program cmake, ninja, cl, cpack, dumpbin
    Write-Host 'Building msvc ...'
    Invoke-Checked -Program cmake -Arguments @('--preset', 'msvc')
    Invoke-Checked -Program cmake -Arguments @('--build', '--preset', 'msvc')

    $build = Join-Path (Get-Location).Path 'build/msvc'
    $tool = "$build/bin/Release/vqs.exe"
    $library = "$build/bin/Release/VexoQTFServices.dll"
    $work = "$build/checks"
    if (Test-Path -LiteralPath $work) { Remove-Item -Recurse -Force -LiteralPath $work }
    New-Item -ItemType Directory -Force -Path $work | Out-Null

    Test-Equal -Name 'the DLL exports the names of exports.def' -Expected @(Get-ListedExport) -Found @(Get-BuiltExport)
    Test-Equal -Name 'the DLL imports system DLLs only' -Expected @('none') -Found @(Get-ForeignImport)
    Test-Equal -Name 'the DLL shares the C runtime of Windows' -Expected @($true) -Found @(Test-SharedRuntime)
    Test-Equal -Name 'the tool tells its version' -Expected @('vqs 0.1.0') `
        -Found @(Invoke-Checked -Program $tool -Arguments @('--version'))
    foreach ($sample in 'laptop-r3', 'laptop-r4', 'laptop-r5', 'limits-r5', 'wide-r5') { Test-Sample $sample }
    Test-ExitCode -Name 'a missing file is a failure' -Expected 1 -Arguments @('binary', 'show', 'no-such-file.bin')
    Test-ExitCode -Name 'an unknown command is wrong usage' -Expected 2 -Arguments @('no-such-command')
    Test-Package -Prefix "$work/installed"
    Test-Consumer -Prefix "$work/installed"
    Invoke-Checked -Program cpack -Arguments @('--preset', 'msvc', '-B', "$work/package")
    foreach ($name in 'VexoQTFServices-0.1.0-windows-x64.zip', 'VexoQTFServices-0.1.0-windows-x64-symbols.zip') {
        Test-Equal -Name "there is $name" -Expected @($true) -Found @(Test-Path -LiteralPath "$work/package/$name")
    }
}

Write-Host "$($script:passed) passed, $($script:failed) failed"
if ($script:failed -gt 0) { exit 1 }
