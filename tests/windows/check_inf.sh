#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# The rules for an INF file that InfVerif /w holds a driver package to, as far as this one can break them:
# check_inf.sh INF VERSION WINDOWS-BUILD
set -euo pipefail
inf=$1 version=$2 build=$3
folder=$(dirname "$inf")
awk -v version="$version" -v decoration="ntamd64.10.0...$build" -v today="$(date -u +%Y%m%d)" \
  -v files="$(ls "$folder")" '
function fail(line, what) { printf "%s(%d): %s\n", FILENAME, line, what; failed = 1 }
function trim(text) { gsub(/^[ \t]+|[ \t]+$/, "", text); return text }
# what a value refers to, in lower case
function target(section) { section = tolower(trim(section)); referenced[section] = 1; return section }
function need(section, line) { target(section); if (!(tolower(section) in first)) fail(line, "there is no section [" section "]") }
function exists(file) { return ("\n" files "\n") ~ ("\n" file "\n") }

BEGIN {
  # sections by their kind, and what may stand in each; "*" is any key, "-" lines without one
  keys["version"] = " signature class classguid provider driverver pnplockdown catalogfile "
  keys["destinationdirs"] = keys["sourcedisksnames"] = keys["sourcedisksfiles"] = keys["manufacturer"] = "*"
  keys["strings"] = keys["models"] = "*"
  keys["install"] = " copyfiles "
  keys["hardware"] = " addreg "
  keys["services"] = " addservice "
  keys["service"] = " displayname servicetype starttype errorcontrol servicebinary "
  keys["files"] = keys["registry"] = "-"
  split("version destinationdirs sourcedisksnames sourcedisksfiles manufacturer strings", fixed, " ")
  for (i in fixed) { kind[fixed[i]] = fixed[i]; referenced[fixed[i]] = 1 }
}

!/\r$/ { fail(FNR, "the line does not end as Windows ends lines") }
/[^ -~\r]/ { fail(FNR, "a character beyond ASCII") }
{ sub(/\r$/, ""); if ($0 !~ /"/) sub(/;.*/, ""); $0 = trim($0) }
$0 == "" { next }
/^\[.*\]$/ {
  section = tolower(substr($0, 2, length($0) - 2))
  if (section in first) fail(FNR, "[" section "] stands here twice")
  if (!count_sections++ && section != "version") fail(FNR, "[Version] has to come first")
  first[section] = FNR
  next
}
{
  n = ++entries[section]
  at[section, n] = FNR
  split_at = index($0, "=")
  if (section in first && split_at && $0 !~ /^HK/) {
    key[section, n] = trim(substr($0, 1, split_at - 1))
    value[section, n] = trim(substr($0, split_at + 1))
    if ((section, tolower(key[section, n])) in of) fail(FNR, key[section, n] " stands in [" section "] twice")
    of[section, tolower(key[section, n])] = value[section, n]
    where[section, tolower(key[section, n])] = FNR
  } else value[section, n] = $0
  rest = $0
  while (match(rest, /%[^%]*%/)) {
    token = tolower(substr(rest, RSTART + 1, RLENGTH - 2))
    rest = substr(rest, RSTART + RLENGTH)
    if (section == "strings") fail(FNR, "a string refers to a string")
    else if (token ~ /^[0-9]+$/) { if (token != 13) fail(FNR, "folder " token ": drivers stay in the driver store, 13") }
    else { used[token] = 1; used_at[token] = FNR }
  }
}

END {
  # Version
  if (of["version", "signature"] != "\"$Windows NT$\"") fail(where["version", "signature"], "no valid Signature")
  if (of["version", "class"] != "System" || tolower(of["version", "classguid"]) != "{4d36e97d-e325-11ce-bfc1-08002be10318}")
    fail(where["version", "class"], "Class and ClassGuid are not those of system devices")
  if (of["version", "provider"] !~ /^%.*%$/) fail(where["version", "provider"], "Provider is not a string of [Strings]")
  if (of["version", "pnplockdown"] != "1") fail(where["version", "pnplockdown"], "PnpLockdown = 1 is missing")
  line = where["version", "driverver"]
  if (split(of["version", "driverver"], parts, ",") != 2 || parts[1] !~ /^[01][0-9]\/[0-3][0-9]\/20[0-9][0-9]$/)
    fail(line, "DriverVer is not mm/dd/yyyy,w.x.y.z")
  else {
    split(parts[1], day, "/")
    date = day[3] day[1] day[2]
    if (date > today) fail(line, "DriverVer lies in the future")
    if (date < 20090421) fail(line, "DriverVer is older than any Windows allows")
    if (day[1] < 1 || day[1] > 12 || day[2] < 1 || day[2] > 31) fail(line, "DriverVer has no such day")
    if (trim(parts[2]) != version) fail(line, "DriverVer is not version " version)
  }
  catalogue = of["version", "catalogfile"]
  if (catalogue != "" && !exists(catalogue)) fail(where["version", "catalogfile"], catalogue " is named and not there")
  if (catalogue == "" && files ~ /\.cat(\n|$)/) fail(first["version"], "a catalogue is there and not named")

  # Manufacturer, models, and what they install
  for (i = 1; i <= entries["manufacturer"]; ++i) {
    line = at["manufacturer", i]
    n = split(value["manufacturer", i], parts, ",")
    if (n < 2) fail(line, "models without a decoration are for 32 bits")
    for (j = 2; j <= n; ++j) {
      if (tolower(trim(parts[j])) != decoration) fail(line, "models are for " trim(parts[j]) ", the driver for " decoration)
      name = trim(parts[1]) "." trim(parts[j])
      need(name, line)
      kind[tolower(name)] = "models"
    }
  }
  for (name in first) if (kind[name] == "models") for (i = 1; i <= entries[name]; ++i) {
    line = at[name, i]
    if (split(value[name, i], parts, ",") != 2 || trim(parts[2]) == "") fail(line, "a model has one install section and one hardware id")
    install = trim(parts[1]) ".nt"
    need(install, line); kind[tolower(install)] = "install"
    need(install ".Services", line); kind[tolower(install ".Services")] = "services"
    if (tolower(install ".HW") in first) { target(install ".HW"); kind[tolower(install ".HW")] = "hardware" }
  }
  for (name in first) {
    if (kind[name] == "install") { files_section = of[name, "copyfiles"]; need(files_section, where[name, "copyfiles"]); kind[tolower(files_section)] = "files" }
    if (kind[name] == "hardware") { registry = of[name, "addreg"]; need(registry, where[name, "addreg"]); kind[tolower(registry)] = "registry" }
    if (kind[name] == "services") for (i = 1; i <= entries[name]; ++i) {
      line = at[name, i]
      if (split(value[name, i], parts, ",") != 3) fail(line, "AddService has a name, flags and a section")
      if (trim(parts[2]) !~ /^(2|0x0*2)$/) fail(line, "the service is not the one of the device")
      need(trim(parts[3]), line); kind[tolower(trim(parts[3]))] = "service"
    }
  }

  # Files: from the folder of the INF file into the driver store
  for (i = 1; i <= entries["destinationdirs"]; ++i)
    if (value["destinationdirs", i] != "13") fail(at["destinationdirs", i], "folder " value["destinationdirs", i] ": drivers stay in the driver store, 13")
  for (name in first) {
    if (kind[name] == "files") {
      if (!(("destinationdirs", name) in of)) fail(first[name], "[DestinationDirs] does not say where [" name "] goes")
      for (i = 1; i <= entries[name]; ++i) {
        file = value[name, i]; copied[tolower(file)] = 1
        if (file ~ /,/) fail(at[name, i], "a file cannot be renamed in the driver store")
        else if (!(("sourcedisksfiles", tolower(file)) in of)) fail(at[name, i], file " is missing in [SourceDisksFiles]")
      }
    }
    if (kind[name] == "registry") for (i = 1; i <= entries[name]; ++i)
      if (value[name, i] !~ /^HKR,/) fail(at[name, i], "a registry key that is not the own one of the device")
    if (kind[name] == "service") {
      if (of[name, "servicetype"] != "1" || of[name, "starttype"] != "3" || of[name, "errorcontrol"] != "1")
        fail(first[name], "not a driver that is started when its device is there")
      binary = tolower(of[name, "servicebinary"])
      binary_at = where[name, "servicebinary"]
    }
  }
  if (substr(binary, 1, 5) != "%13%\\" || !(substr(binary, 6) in copied)) fail(binary_at, "the service is none of the files that are copied")
  for (i = 1; i <= entries["sourcedisksfiles"]; ++i) {
    line = at["sourcedisksfiles", i]; file = key["sourcedisksfiles", i]
    if (!(("sourcedisksnames", value["sourcedisksfiles", i]) in of)) fail(line, "there is no disk " value["sourcedisksfiles", i])
    if (!(tolower(file) in copied)) fail(line, file " is copied nowhere")
    if (!exists(file)) fail(line, file " is not in the folder of the INF file")
  }

  # What nobody knows, or nobody uses
  for (name in first) {
    if (!(name in referenced)) fail(first[name], "[" name "] is used nowhere")
    allowed = keys[kind[name]]
    if (kind[name] == "" || allowed == "*") continue
    for (i = 1; i <= entries[name]; ++i)
      if (allowed == "-" ? (name, i) in key : index(allowed, " " tolower(key[name, i]) " ") == 0 || !((name, i) in key))
        fail(at[name, i], "[" name "] must not hold: " (((name, i) in key) ? key[name, i] : value[name, i]))
  }
  for (token in used) if (!(("strings", token) in of)) fail(used_at[token], "%" token "% is not in [Strings]")
  for (i = 1; i <= entries["strings"]; ++i) {
    line = at["strings", i]
    if (!(tolower(key["strings", i]) in used)) fail(line, "%" key["strings", i] "% is used nowhere")
    if (value["strings", i] !~ /^".+"$/) fail(line, "a string without quotes")
    if (tolower(value["strings", i]) ~ /microsoft/) fail(line, "this is not Microsoft'"'"'s")
  }
  if (!failed) print count_sections " sections follow the rules"
  exit failed
}' "$inf"
