#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# What the DLL imports, and how it may be loaded.
set -euo pipefail
library=$1
headers=$(x86_64-w64-mingw32-objdump -p "$library")
failed=0
fail() { echo "$1"; echo "To mend: $2"; failed=1; }

system_dlls='^(KERNEL32|msvcrt|CFGMGR32|VERSION)\.dll$'
imported=$(echo "$headers" | sed -n 's/^\s*DLL Name: //p')
others=$(echo "$imported" | grep -vE "$system_dlls" || true)
[ -n "$imported" ] || fail "no imports were found" "look at the output of objdump -p"
[ -z "$others" ] || fail "imports other than the system's: $others" "link it statically in src/CMakeLists.txt"

characteristics=$((16#$(echo "$headers" | sed -n 's/^DllCharacteristics\s*//p')))
has() { [ $((characteristics & $1)) -ne 0 ] || fail "the DLL lacks $2" "pass $3 to the linker in src/CMakeLists.txt"; }
has 0x0020 "64-bit address randomisation" -Wl,--high-entropy-va
has 0x0040 "address randomisation" -Wl,--dynamicbase
has 0x0100 "data execution prevention" -Wl,--nxcompat
grep -q '\.reloc' <<<"$headers" || fail "the DLL has no relocations" "link without --disable-reloc-section"

size=$(stat -c %s "$library")
[ "$size" -lt 204800 ] || fail "the DLL has $size bytes, 200 KB is the limit" "see what grew: objdump -h"
echo "imports: $(echo $imported); $size bytes; characteristics $(printf '0x%04x' "$characteristics")"
exit $failed
