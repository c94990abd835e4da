# SPDX-License-Identifier: Apache-2.0
<#
.SYNOPSIS
    Builds the library and the tool with Visual Studio and shows a policy binary.
.DESCRIPTION
    For any PowerShell; Windows' own takes scripts with
        powershell -ExecutionPolicy Bypass -File scripts\quickstart.ps1
    The newest Visual Studio on the machine is used. vcpkg fetches the tool's libraries (vcpkg.json).
.PARAMETER WithDriver
    Also takes the sample policies through the Asm store of the driver that this machine has, which loses what the
    store held. Meant for a machine with the simulated driver.
#>
[CmdletBinding()]
param([switch]$WithDriver)

Set-StrictMode -Version Latest
$ErrorActionPreference = 'Stop'
. (Join-Path $PSScriptRoot 'visual-studio.ps1')

$tool = 'build/msvc/bin/Release/vqs.exe'
$policies = 'examples/policies'
$out = 'build/quickstart'

function Invoke-Tool {
    param([Parameter(Mandatory)][string[]]$Arguments)
    Write-Host "`n  > vqs $Arguments"
    Invoke-Checked -Program $tool -Arguments $Arguments | ForEach-Object { "  $_" }
}

function Assert-SameFile {
    param([Parameter(Mandatory)][string]$Made, [Parameter(Mandatory)][string]$Sample)
    if ((Get-FileHash -LiteralPath $Made).Hash -ne (Get-FileHash -LiteralPath $Sample).Hash) {
        throw "$Made differs from $Sample"
    }
    Write-Host "  $Made is byte for byte $Sample."
}

function Build-Tool {
    Assert-Program cmake, ninja, cl
    Write-Host 'Building the library and the tool ...'
    Invoke-Checked -Program cmake -Arguments @('--preset', 'msvc')
    Invoke-Checked -Program cmake -Arguments @('--build', '--preset', 'msvc', '--target', 'vqs')
    New-Item -ItemType Directory -Force -Path $out | Out-Null
}

function Show-Store {
    Write-Host "`n2. Its policies go into the driver's Asm store ..."
    Invoke-Tool @('store', 'load', 'asm', "$policies/laptop-r5.bin", '--reset')

    Write-Host "`n3. ... and come back out of it."
    Invoke-Tool @('store', 'list', 'asm')

    Write-Host "`n4. They leave again: as a policy binary, and as registry export text."
    Invoke-Tool @('store', 'save', 'asm', "$out/laptop.bin")
    Assert-SameFile -Made "$out/laptop.bin" -Sample "$policies/laptop-r5.bin"
    Invoke-Tool @('store', 'save', 'asm', "$out/laptop.reg", '--registry')
    Assert-SameFile -Made "$out/laptop.reg" -Sample "$policies/laptop-asm.reg"
}

Invoke-WithVisualStudio {
    Build-Tool
    Write-Host "`n1. A policy binary holds rules: when these conditions hold, take these actions."
    Invoke-Tool @('binary', 'show', "$policies/laptop-r5.bin")
    if ($WithDriver) {
        Show-Store
        Write-Host "`nNext: $tool --help, the headers in include/vqs, and README.md."
    }
    else {
        Write-Host "`nNext: with a simulated driver on this machine, scripts/quickstart.ps1 -WithDriver goes on."
    }
}
