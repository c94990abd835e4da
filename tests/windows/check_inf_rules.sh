#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Each rule of check_inf.sh finds the fault that it is for: check_inf_rules.sh INF VERSION WINDOWS-BUILD
set -euo pipefail
inf=$1 version=$2 build=$3
check=$(dirname "$0")/check_inf.sh
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
failed=0 count=0

# what the rule says, and how sed brings the fault in (or a file that is there)
refuses() {
  local said
  rm -f "$folder"/*
  touch "$folder/vexoqtf.sys"
  case $2 in
    +*) cp "$inf" "$folder/vexoqtf.inf" && touch "$folder/${2#+}" ;;
    -*) cp "$inf" "$folder/vexoqtf.inf" && rm "$folder/${2#-}" ;;
    *) sed "$2" "$inf" >"$folder/vexoqtf.inf" ;;
  esac
  count=$((count + 1))
  said=$("$check" "$folder/vexoqtf.inf" "$version" "$build") && { echo "not found: $2"; failed=1; return; }
  grep -qF "$1" <<<"$said" || { printf '%s\n' "fault:    $2" "expected: $1" "said:     $said"; failed=1; }
}

refuses 'does not end as Windows ends lines' 's/\r$//'
refuses 'a character beyond ASCII' 's/simulated driver/simulated dr\xc3\xafver/'
refuses 'stands here twice' 's/^\[Files\]/[Access]/'
refuses '[Version] has to come first' '1i [Strings2]\r'
refuses 'Class stands in [version] twice' 's/^Provider .*%/Class = System\r\n&/'
refuses 'a string refers to a string' 's/^Disk .*/Disk = "%Device%"\r/'
refuses 'folder 12: drivers stay in the driver store' 's/%13%/%12%/'
refuses 'folder 11: drivers stay in the driver store' 's/^Files = 13/Files = 11/'
refuses 'no valid Signature' 's/\$Windows NT\$/Windows/'
refuses 'Class and ClassGuid' 's/4d36e97d/4d36e97e/'
refuses 'Provider is not a string of [Strings]' 's/^Provider    = %Provider%/Provider = "VexoQTF"/'
refuses 'PnpLockdown = 1 is missing' '/^PnpLockdown/d'
refuses 'PnpLockdown = 1 is missing' 's/^PnpLockdown = 1/PnpLockdown = 0/'
refuses 'DriverVer is not mm/dd/yyyy,w.x.y.z' 's/^DriverVer .*,/DriverVer = 2026-01-01,/'
refuses 'DriverVer lies in the future' 's/^DriverVer .*,/DriverVer = 01\/01\/2099,/'
refuses 'DriverVer is older' 's/^DriverVer .*,/DriverVer = 01\/02\/2001,/'
refuses 'DriverVer has no such day' 's/^DriverVer .*,/DriverVer = 13\/01\/2020,/'
refuses 'DriverVer is not version' 's/^\(DriverVer .*,\).*/\19.9.9.9\r/'
refuses 'vexoqtf.cat is named and not there' 's/^PnpLockdown/CatalogFile = vexoqtf.cat\r\n&/'
refuses 'a catalogue is there and not named' '+vexoqtf.cat'
refuses 'models without a decoration' 's/= Models,.*/= Models\r/'
refuses 'models are for NTx86' 's/= Models,NTamd64[^\r]*/&,NTx86/'
refuses 'models are for NTamd64.10.0, the driver for' 's/NTamd64\.10\.0\.\.\.[0-9]*/NTamd64.10.0/'
refuses 'there is no section [Models.NTamd64' 's/^\[Models\.[^]]*/[Other/'
refuses 'a model has one install section and one hardware id' 's/,root.vexoqtf//'
refuses 'there is no section [Install.nt]' 's/^\[Install\.NT\]/[Install.NTx86]/'
refuses 'there is no section [Install.nt.Services]' 's/^\[Install\.NT\.Services\]/[Install.Services]/'
refuses 'there is no section [Files]' 's/^\[Files\]/[File]/'
refuses 'there is no section [Access]' 's/^\[Access\]/[Acces]/'
refuses 'there is no section [Service]' 's/^\[Service\]/[Servic]/'
refuses 'AddService has a name, flags and a section' 's/,0x00000002,Service/,Service/'
refuses 'the service is not the one of the device' 's/0x00000002/0x00000000/'
refuses 'does not say where [files] goes' 's/^Files = 13/DefaultDestDir = 13/'
refuses 'a file cannot be renamed' 's/^vexoqtf\.sys\r/vexoqtf.sys,driver.sys\r/'
refuses 'is missing in [SourceDisksFiles]' 's/^vexoqtf\.sys\r/other.sys\r/'
refuses 'a registry key that is not the own one' 's/^HKR,/HKLM,/'
refuses 'not a driver that is started when' 's/^StartType .*/StartType = 0\r/'
refuses 'the service is none of the files' 's/%13%.vexoqtf/%13%\\other/'
refuses 'there is no disk 2' 's/^vexoqtf\.sys = 1/vexoqtf.sys = 2/'
refuses 'is copied nowhere' 's/^\[SourceDisksFiles\]/&\r\nother.dll = 1/'
refuses 'vexoqtf.sys is not in the folder' '-vexoqtf.sys'
refuses '[unused] is used nowhere' '$a [Unused]\r'
for directive in DelFiles RenFiles DelReg BitReg LogConfig RegisterDlls UpdateInis Ini2Reg ProfileItems Include Needs; do
  refuses "[install.nt] must not hold: $directive" "s/^CopyFiles .*/&\n$directive = Files\r/"
done
refuses '[install.nt.coinstallers] is used nowhere' 's/^\[Install\.NT\.HW\]/[Install.NT.CoInstallers]/'
refuses '[install.nt.services] must not hold: DelService' 's/^AddService .*/&\nDelService = vexoqtf\r/'
refuses '[version] must not hold: LayoutFile' 's/^PnpLockdown/LayoutFile = layout.inf\r\n&/'
refuses '[service] must not hold: LoadOrderGroup' 's/^StartType/LoadOrderGroup = Base\r\n&/'
refuses '%nobody% is not in [Strings]' 's/^DisplayName .*/DisplayName = %Nobody%\r/'
refuses '%Nobody% is used nowhere' '$a Nobody = "nobody"\r'
refuses 'a string without quotes' 's/^Disk .*/Disk = VexoQTF\r/'
refuses 'this is not Microsoft' 's/"VexoQTF simulator"/"Microsoft"/'

echo "$count faults"
exit $failed
