#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# VexoQTFServices.lib has every export in the form that Microsoft's linker reads, the CMake package gives it to a compiler
# for Microsoft's ABI, and a program that imports every name starts:
# check_import_library.sh ROOT EXPORTS SOURCES WORK WINE
set -euo pipefail
export LC_ALL=C
root=$1 exports=$2 sources=$3 work=$4
shift 4
library=$root/lib/VexoQTFServices.lib

names=$(sed -n 's/^  \([A-Za-z0-9_]*\).*/\1/p' "$exports" | sort)
count=$(wc -l <<<"$names")
[ -n "$names" ] || { echo "there are no names in $exports"; exit 1; }
diff <(echo "$names") <(x86_64-w64-mingw32-nm "$library" | sed -n 's/.* I __imp_//p' | sort) || {
  echo "$exports (<) and $library (>) differ"
  exit 1
}
exported=$(llvm-readobj-19 --coff-exports "$root/bin/VexoQTFServices.dll" | awk '$1 == "Name:" { print $2 }' | sort)
diff <(echo "$exported") <(echo "$names") || { echo "the DLL (<) and $library (>) differ"; exit 1; }
short=$(llvm-readobj-19 "$library" | grep -c '^Format: COFF-import-file' || true)
[ "$short" = "$count" ] || { echo "$short of $count members have the short import format"; exit 1; }

rm -rf "$work"
mkdir -p "$work"
{
  echo 'void use(void (*function)(void));'
  for name in $names; do echo "__declspec(dllimport) void $name(void);"; done
  echo 'void use_all(void);'
  echo 'void use_all(void) {'
  for name in $names; do echo "  use($name);"; done
  echo '}'
} >"$work/names.c"
cmake -S "$sources" -B "$work/build" -G Ninja --toolchain "$sources/toolchain.cmake" -D CMAKE_BUILD_TYPE=Release \
  -D NAMES="$work/names.c" -D VexoQTFServices_DIR="$root/lib/cmake/VexoQTFServices" >"$work/log" 2>&1 &&
  cmake --build "$work/build" >>"$work/log" 2>&1 || { cat "$work/log"; exit 1; }
cp "$root/bin/VexoQTFServices.dll" "$work/build"
status=0
"$@" "$work/build/msvc_client.exe" || status=$?
[ $status = 42 ] || { echo "the program ended with $status, not with 42"; exit 1; }
echo "$count names, imported by a program that ran"
