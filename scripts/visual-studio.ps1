# SPDX-License-Identifier: Apache-2.0
# What quickstart.ps1 and test.ps1 have in common.

function Invoke-Checked {
    param([Parameter(Mandatory)][string]$Program, [string[]]$Arguments = @())
    & $Program @Arguments
    if ($LASTEXITCODE -ne 0) { throw "this failed with exit code ${LASTEXITCODE}: $Program $Arguments" }
}

# Makes this session a developer prompt for x64 programs, of the newest Visual Studio that has a compiler for them.
function Enter-VisualStudio {
    if ($env:VSCMD_ARG_TGT_ARCH -eq 'x64') { return }
    if ($env:VSCMD_ARG_TGT_ARCH) {
        throw "This is a developer prompt for $env:VSCMD_ARG_TGT_ARCH programs: use one for x64, or a PowerShell that is none."
    }
    $vswhere = Join-Path ${env:ProgramFiles(x86)} 'Microsoft Visual Studio\Installer\vswhere.exe'
    if (-not (Test-Path -LiteralPath $vswhere)) { throw 'There is no Visual Studio on this machine.' }
    $folder = & $vswhere -latest -products '*' -property installationPath `
        -requires Microsoft.VisualStudio.Component.VC.Tools.x86.x64
    if (-not $folder) { throw 'No Visual Studio on this machine has a C++ compiler for x64 programs.' }
    Import-Module (Join-Path $folder 'Common7\Tools\Microsoft.VisualStudio.DevShell.dll')
    Enter-VsDevShell -VsInstallPath $folder -SkipAutomaticLocation `
        -DevCmdArguments '-arch=x64 -host_arch=x64 -no_logo' | Out-Null
    Remove-Module -Name Microsoft.VisualStudio.DevShell
}

function Assert-Program {
    param([Parameter(Mandatory)][string[]]$Name)
    foreach ($program in $Name) {
        if (-not (Get-Command -Name $program -CommandType Application -ErrorAction SilentlyContinue)) {
            throw "$program is missing: Visual Studio needs its component `"C++ CMake tools for Windows`"."
        }
    }
}

function Assert-Vcpkg {
    if (-not $env:VCPKG_ROOT) { throw 'VCPKG_ROOT does not name a vcpkg folder: https://learn.microsoft.com/vcpkg' }
    if (-not (Test-Path -LiteralPath (Join-Path $env:VCPKG_ROOT 'scripts/buildsystems/vcpkg.cmake'))) {
        throw "There is no vcpkg in $env:VCPKG_ROOT."
    }
}

function Restore-Environment {
    param([Parameter(Mandatory)][System.Collections.IDictionary]$Variables)
    foreach ($name in @([Environment]::GetEnvironmentVariables().Keys)) {
        if (-not $Variables.Contains($name)) { [Environment]::SetEnvironmentVariable($name, $null) }
    }
    foreach ($name in $Variables.Keys) { [Environment]::SetEnvironmentVariable($name, $Variables[$name]) }
}

# Runs a script block in the top folder, with Visual Studio at hand, and leaves the session as it was before: its folder,
# its environment, and how it reads the output of programs.
function Invoke-WithVisualStudio {
    param([Parameter(Mandatory)][scriptblock]$Action)
    $variables = [Environment]::GetEnvironmentVariables()
    $encoding = [Console]::OutputEncoding
    Push-Location -LiteralPath (Split-Path -Parent $PSScriptRoot)
    try {
        [Console]::OutputEncoding = New-Object System.Text.UTF8Encoding $false
        Enter-VisualStudio
        Assert-Vcpkg
        & $Action
    }
    finally {
        [Console]::OutputEncoding = $encoding
        Restore-Environment $variables
        Pop-Location
    }
}
