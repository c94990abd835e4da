#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# The INF file's date is that of the sources, whenever they are built: check_inf_date.sh CMAKE DEVICE-FOLDER
set -euo pipefail
cmake=$1 device=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failed=0

# what it is, and the folder of the sources
expect() {
  local is
  "$cmake" -D SOURCES="$2" -D RELEASED=1767225600 -D DRIVER_VERSION=1.2.3.0 -D DRIVER_WINDOWS_BUILD=16299 \
    -D TEMPLATE="$device/vexoqtf.inf.in" -D OUTPUT="$work/vexoqtf.inf" -P "$device/write_inf.cmake"
  is=$(sed -n 's/^DriverVer *= \(.*\)\r$/\1/p' "$work/vexoqtf.inf")
  [ "$is" = "$1" ] || { echo "DriverVer is $is, not $1, for ${SOURCE_DATE_EPOCH:-no SOURCE_DATE_EPOCH} and $2"; failed=1; }
}

unset SOURCE_DATE_EPOCH
export GIT_CEILING_DIRECTORIES=$work
mkdir "$work/archive" "$work/repository"
expect 01/01/2026,1.2.3.0 "$work/archive"
if command -v git >/dev/null; then
  git -C "$work/repository" init -q
  GIT_COMMITTER_DATE='2024-05-31T23:30:00-0200' git -C "$work/repository" -c user.name=a -c user.email=a@b commit \
    -q --allow-empty -m a
  expect 06/01/2024,1.2.3.0 "$work/repository"
  TZ=America/New_York expect 06/01/2024,1.2.3.0 "$work/repository"
else
  echo "git is not there: no commit has a date"
fi
SOURCE_DATE_EPOCH=1700000000 expect 11/14/2023,1.2.3.0 "$work/repository"
exit $failed
