#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Files of the system's names in the current directory are none of the DLL's: a client runs among them.
# check_current_directory.sh DLL COMMAND...
set -euo pipefail
library=$1
shift
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
names=$(x86_64-w64-mingw32-objdump -p "$library" | sed -n 's/^\s*DLL Name: //p')
[ -n "$names" ] || { echo "no imports were found"; exit 1; }
for name in $names; do echo "this is no DLL" >"$folder/$name"; done
cd "$folder"
"$@" || { echo "the client failed among $names"; exit 1; }
