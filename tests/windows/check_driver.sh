#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# What the driver imports, and how it may be loaded.
set -euo pipefail
driver=$1
headers=$(x86_64-w64-mingw32-objdump -p "$driver")
failed=0
fail() { echo "$1"; echo "To mend: $2"; failed=1; }

imported=$(echo "$headers" | sed -n 's/^\s*DLL Name: //p')
[ "$imported" = ntoskrnl.exe ] || fail "imports from: $imported" "a kernel has ntoskrnl.exe only: see cmake/KernelDriver.cmake"
grep -q '^Subsystem\s*00000001' <<<"$headers" || fail "not a native image" "link with --subsystem,native"

characteristics=$((16#$(echo "$headers" | sed -n 's/^DllCharacteristics\s*//p')))
has() { [ $((characteristics & $1)) -ne 0 ] || fail "the driver lacks $2" "pass $3 to the linker in cmake/KernelDriver.cmake"; }
has 0x0040 "address randomisation" -Wl,--dynamicbase
has 0x0100 "data execution prevention" -Wl,--nxcompat
grep -q 'CheckSum\s*0*[1-9a-f]' <<<"$headers" || fail "the image has no checksum" "look at the linker"

mixed=$(x86_64-w64-mingw32-objdump -h "$driver" | grep CODE | grep -v READONLY || true)
[ -z "$mixed" ] || fail "code that can be written: $mixed" "memory integrity does not load such drivers"
echo "imports: $imported; $(stat -c %s "$driver") bytes; characteristics $(printf '0x%04x' "$characteristics")"
exit $failed
