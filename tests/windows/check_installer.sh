#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# What vqs-simulator says, returns and leaves behind, from an installed driver to an installed driver:
# check_installer.sh WINE TESTS, the folder of the tests' programs
set -euo pipefail
wine=$1
tests=$2
package=$tests/package
failed=0
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

windows_path() { echo "Z:$(realpath -m "$1" | tr / '\\')"; }
fail() { failed=1; printf '%s\n' "$@"; }

# exit code, standard output, standard error, and a command that is run
expect_of() {
  local code=$1 out=$2 err=$3 is_code=0 is_out is_err
  shift 3
  is_out=$("$@" 2>"$work/errors" | tr -d '\r'; exit "${PIPESTATUS[0]}") || is_code=$?
  is_err=$(tr -d '\r' <"$work/errors")
  [ "$code/$out/$err" = "$is_code/$is_out/$is_err" ] ||
    fail "$*" "  expected: $code/$out/$err" "  found:    $is_code/$is_out/$is_err"
}
expect() { expect_of "${@:1:3}" "$wine" "$package/vqs-simulator.exe" "${@:4}"; }

gone='vqs-simulator: the simulated driver is installed, but its device'
# A first installation. Wine now and then starts a driver before the part of itself that has the devices, and the driver's
# process ends: it is tried again then.
expect_fresh() {
  local tries
  for tries in 1 2 3; do
    "$wine" "$package/vqs-simulator.exe" "$@" >"$work/output" 2>"$work/errors" && break
    grep -qF "$gone does not come up" "$work/errors" || break
    "$wine" "$package/vqs-simulator.exe" remove >/dev/null
    forget
    rm -f "$work/log"
  done
  [ "$(tail -n 1 "$work/output" | tr -d '\r')$(cat "$work/errors")" = installed ] ||
    fail "$*" "  expected: installed" "  found:    $(cat "$work/output" "$work/errors")"
}
# What Wine keeps of a driver.
forget() {
  "$wine" sc stop vexoqtf >/dev/null || true
  find "$system/system32" -name vexoqtf.sys -delete
}

system=$WINEPREFIX/drive_c/windows
packages() { grep -l 'VexoQTF simulator' "$system"/inf/*.inf 2>/dev/null | wc -l; }
expect_left() { # packages, copies of the driver for those who ask for its version
  local copies=0
  [ ! -e "$system/system32/vexoqtf.sys" ] || copies=1
  [ "$(packages)/$copies" = "$1/$2" ] || fail "$(packages) packages and $copies copies are there, not $1 and $2"
}

see='(see "vqs-simulator --help")'
expect 0 'running' '' status
expect_left 1 1
expect 0 'installed again' '' install
expect 0 'installed again' '' install --inf "$(windows_path "$package/vexoqtf.inf")"
expect 0 'running' '' status
expect_left 1 1
expect 1 '' 'vqs-simulator: Z:\nowhere\vexoqtf.inf cannot be installed: Path not found (0x3)' \
  install --inf 'Z:\nowhere\vexoqtf.inf'
expect 0 'running' '' status
expect 0 'removed' '' remove
expect_left 0 0
expect 1 '' 'vqs-simulator: the simulated driver is not installed' status
expect 1 '' 'vqs-simulator: the simulated driver is not installed' remove
expect 2 '' "vqs-simulator: A subcommand is required $see"
expect 2 '' "vqs-simulator: --inf: 1 required FILE missing $see" install --inf
expect 2 '' "vqs-simulator: --tools requires --test-sign $see" install --tools x
expect 2 '' "vqs-simulator: The following argument was not expected: twice $see" remove twice

# Packages that lost their device, as after a removal that needed a restart.
mkdir "$work/left"
cp "$package/vexoqtf.sys" "$work/left"
cp "$package/vexoqtf.inf" "$work/left/oem77.inf"
"$wine" "$tests/installer_helper.exe" publish "$(windows_path "$work/left/oem77.inf")"
expect_left 1 0
expect 0 'removed' '' remove
expect_left 0 0

# A newer package takes the place of an older one.
expect_fresh install
mkdir "$work/newer"
cp "$package/vexoqtf.sys" "$work/newer"
sed 's/^\(DriverVer .*,\).*/\19.9.9.9\r/' "$package/vexoqtf.inf" >"$work/newer/vexoqtf.inf"
expect 0 'installed again' '' install --inf "$(windows_path "$work/newer/vexoqtf.inf")"
expect_left 1 1
grep -q '9\.9\.9\.9' "$(grep -l 'VexoQTF simulator' "$system"/inf/*.inf)" || fail "the older package is left"

# Everybody may look, and administrators change something. Windows asks nobody for more rights before that is said.
grep -aqF 'requestedExecutionLevel level="asInvoker"' "$package/vqs-simulator.exe" || fail "the program has no manifest"
unprivileged() { expect_of "${@:1:3}" "$wine" "$tests/installer_helper.exe" unprivileged \
  "$(windows_path "$package/vqs-simulator.exe")" "$4"; }
only='only administrators can install and remove drivers: open a terminal with "Run as administrator"'
unprivileged 0 'running' '' status
unprivileged 1 '' "vqs-simulator: $only" install
unprivileged 1 '' "vqs-simulator: $only" remove
expect 0 'running' '' status

# Why a device does not come up: Wine does not know, and is told.
expect 0 'removed' '' remove
forget
mkdir "$work/broken"
cp "$package/vexoqtf.inf" "$work/broken"
echo "no driver" >"$work/broken/vexoqtf.sys"
"$wine" "$tests/installer_helper.exe" problem 10 C000003A &
expect 1 '' "$gone does not come up: code 10, its driver refused to start (status 0xC000003A)" \
  install --inf "$(windows_path "$work/broken/vexoqtf.inf")"
wait $! || fail "Wine was told nothing"
"$wine" "$tests/installer_helper.exe" problem 22 0
expect 1 '' "$gone is not there: code 22, it is disabled; enable it in Device Manager" status
"$wine" "$tests/installer_helper.exe" problem 0 0
expect 1 '' "$gone is not there" status
expect 0 'removed' '' remove
forget

# Signing for tests: what is missing, then with programs that only write down what they were asked.
expect 1 '' "vqs-simulator: test signing needs signtool.exe (Windows SDK), inf2cat.exe (Windows Driver Kit); both kits: \
https://learn.microsoft.com/windows-hardware/drivers/download-the-wdk; programs in another folder: --tools FOLDER" \
  install --test-sign
expect 1 '' 'vqs-simulator: the simulated driver is not installed' status
tools="$work/tools and kits"
mkdir "$tools" "$work/it's here"
for name in powershell signtool inf2cat; do cp "$tests/installer_tool.exe" "$tools/$name.exe"; done
cp "$package"/vexoqtf.{inf,sys} "$work/it's here"
signed=$(windows_path "$work/it's here/test-signed")
quoted=${signed/it\'s/it\'\'s}
export VQS_STAND_IN_LOG
VQS_STAND_IN_LOG=$(windows_path "$work/log")
test_sign=(install --inf "$(windows_path "$work/it's here/vexoqtf.inf")" --test-sign --tools "$(windows_path "$tools")")
expect_fresh "${test_sign[@]}"
expect 0 'running' '' status
script="\$ErrorActionPreference = 'Stop'; \$subject = 'CN=VexoQTF test'; \
\$cert = Get-ChildItem Cert:\\LocalMachine\\My | Where-Object { \$_.Subject -eq \$subject -and \$_.HasPrivateKey \
-and \$_.NotAfter -gt (Get-Date).AddDays(30) } | Select-Object -First 1; \
if (-not \$cert) { \$cert = New-SelfSignedCertificate -Type CodeSigningCert -Subject \$subject \
-CertStoreLocation Cert:\\LocalMachine\\My -NotAfter (Get-Date).AddYears(5) }; \
Export-Certificate -Cert \$cert -FilePath '$quoted\\vexoqtf-test.cer' | Out-Null; \
foreach (\$store in 'Root', 'TrustedPublisher') { Import-Certificate -FilePath '$quoted\\vexoqtf-test.cer' \
-CertStoreLocation Cert:\\LocalMachine\\\$store | Out-Null }"
sign='signtool [sign] [/fd] [SHA256] [/sm] [/s] [My] [/n] [VexoQTF test] [/a]'
expected="powershell [-NoProfile] [-NonInteractive] [-ExecutionPolicy] [Bypass] [-Command] [$script]
$sign [$signed\\vexoqtf.sys]
inf2cat [/driver:$signed] [/os:10_RS3_X64]
$sign [$signed\\vexoqtf.cat]"
diff <(echo "$expected") <(tr -d '\r' <"$work/log") || fail "other commands than those expected (<) were run (>)"
[ "$(grep -c '^CatalogFile = vexoqtf.cat' "$work/it's here/test-signed/vexoqtf.inf")" = 1 ] || fail "no catalogue is named"
expect 0 'installed again' '' install --inf "$signed\\vexoqtf.inf" --test-sign --tools "$(windows_path "$tools")"
[ "$(grep -c '^CatalogFile = vexoqtf.cat' "$work/it's here/test-signed/test-signed/vexoqtf.inf")" = 1 ] ||
  fail "the catalogue is named twice"
rm -r "$work/it's here/test-signed/test-signed"
[ "$(ls "$work/it's here/test-signed" | tr '\n' ' ')" = 'vexoqtf.cat vexoqtf.inf vexoqtf.sys ' ] ||
  fail "the signed package is not complete"
"$(dirname "$0")/check_inf.sh" "$work/it's here/test-signed/vexoqtf.inf" 0 0 | grep -q 'catalog' &&
  fail "the catalogue is there, and not named as it should be"
for name in powershell signtool inf2cat; do
  export VQS_STAND_IN_FAILS=$name
  expect 1 "$name refuses" "vqs-simulator: $name.exe failed with 7: see what it said above" "${test_sign[@]}"
done
unset VQS_STAND_IN_FAILS
expect 0 'running' '' status

# From nothing to the driver of the tests.
expect 0 'removed' '' remove
forget
expect_fresh install
expect 0 'running' '' status
expect_left 1 1
exit $failed
