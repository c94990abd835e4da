#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# What the DLL imports, and how large it is.
set -euo pipefail
library=$1
failed=0
fail() { echo "$1"; echo "To mend: $2"; failed=1; }

imported=$(llvm-readobj-19 --coff-imports "$library" | sed -n 's/^  Name: //p')
[ -n "$imported" ] || fail "no imports were found" "look at the output of llvm-readobj --coff-imports"
others=$(grep -vE '^((KERNEL32|CFGMGR32|VERSION)\.dll|api-ms-win-crt-[a-z]+-l1-1-0\.dll)$' <<<"$imported" || true)
[ -z "$others" ] || fail "imports other than the system's and the universal C runtime's: $others" \
  "link it statically in src/CMakeLists.txt"
grep -q '^api-ms-win-crt-locale\|^api-ms-win-crt-convert' <<<"$imported" ||
  fail "text is not converted by the universal C runtime" "compile with _UCRT and link with -lucrt"

size=$(stat -c %s "$library")
[ "$size" -lt 204800 ] || fail "the DLL has $size bytes, 200 KB is the limit" "see what grew: objdump -h"
echo "imports: $(echo $imported); $size bytes"
exit $failed
