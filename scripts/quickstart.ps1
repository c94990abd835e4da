# SPDX-License-Identifier: Apache-2.0
<#
.SYNOPSIS
    Builds the library and the tool with Visual Studio 2022 and shows a policy binary.
.DESCRIPTION
    To be run in a "Developer PowerShell for VS 2022". vcpkg fetches the tool's libraries (vcpkg.json).
.PARAMETER WithDriver
    Also takes the sample policies through the Asm store of the driver that this machine has, which loses what the
    store held. Meant for a machine with the simulated driver.
#>
[CmdletBinding()]
param([switch]$WithDriver)

Set-StrictMode -Version Latest
$ErrorActionPreference = 'Stop'
Set-Location -LiteralPath (Split-Path -Parent $PSScriptRoot)
[Console]::OutputEncoding = [System.Text.Encoding]::UTF8

function Invoke-Checked {
    param([Parameter(Mandatory)][string]$Program, [string[]]$Arguments = @())
    & $Program @Arguments
    if ($LASTEXITCODE -ne 0) { throw "this failed with exit code ${LASTEXITCODE}: $Program $Arguments" }
}

function Assert-Prepared {
    if (-not (Get-Command -Name cmake -CommandType Application -ErrorAction SilentlyContinue)) {
        throw 'cmake is missing: run this in a "Developer PowerShell for VS 2022" with the C++ CMake tools.'
    }
    if (-not $env:VCPKG_ROOT) { throw 'VCPKG_ROOT does not name a vcpkg folder: https://learn.microsoft.com/vcpkg' }
    if (-not (Test-Path -LiteralPath (Join-Path $env:VCPKG_ROOT 'scripts/buildsystems/vcpkg.cmake'))) {
        throw "There is no vcpkg in $env:VCPKG_ROOT."
    }
}

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

Assert-Prepared
Write-Host 'Building the library and the tool ...'
Invoke-Checked -Program cmake -Arguments @('--preset', 'msvc')
Invoke-Checked -Program cmake -Arguments @('--build', '--preset', 'msvc', '--target', 'vqs')

$tool = 'build/msvc/bin/Release/vqs.exe'
$policies = 'examples/policies'
$out = 'build/quickstart'
New-Item -ItemType Directory -Force -Path $out | Out-Null

Write-Host "`n1. A policy binary holds rules: when these conditions hold, take these actions."
Invoke-Tool @('binary', 'show', "$policies/laptop-r5.bin")

if (-not $WithDriver) {
    Write-Host "`nNext: with a simulated driver on this machine, scripts/quickstart.ps1 -WithDriver goes on."
    exit 0
}

Write-Host "`n2. Its policies go into the driver's Asm store ..."
Invoke-Tool @('store', 'load', 'asm', "$policies/laptop-r5.bin", '--reset')

Write-Host "`n3. ... and come back out of it."
Invoke-Tool @('store', 'list', 'asm')

Write-Host "`n4. They leave again: as a policy binary, and as registry export text."
Invoke-Tool @('store', 'save', 'asm', "$out/laptop.bin")
Assert-SameFile -Made "$out/laptop.bin" -Sample "$policies/laptop-r5.bin"
Invoke-Tool @('store', 'save', 'asm', "$out/laptop.reg", '--registry')
Assert-SameFile -Made "$out/laptop.reg" -Sample "$policies/laptop-asm.reg"

Write-Host "`nNext: $tool --help, the headers in include/vqs, and README.md."
