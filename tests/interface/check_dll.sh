#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# What a DLL imports, and how large it is: check_dll.sh DLL BYTES [SYSTEM-DLL...]; every DLL imports KERNEL32.
set -euo pipefail
library=$1 limit=$2
shift 2
failed=0
fail() { echo "$1"; echo "To mend: $2"; failed=1; }

expected=$(printf '%s.dll\n' KERNEL32 "$@" | sort)
imported=$(llvm-readobj-19 --coff-imports "$library" | sed -n 's/^  Name: //p')
runtime=$(grep -E '^api-ms-win-crt-[a-z]+-l1-1-0\.dll$' <<<"$imported" || true)
system=$(grep -vxF "$runtime" <<<"$imported" | sort)
[ "$system" = "$expected" ] || fail "imports $(echo $system) beside its C runtime, not $(echo $expected)" \
  "look who calls it, and link the rest statically: src/windows/libraries.cmake"
grep -q '^api-ms-win-crt-locale\|^api-ms-win-crt-convert' <<<"$runtime" ||
  fail "text is not converted by the universal C runtime" "compile with _UCRT and link with -lucrt"

size=$(stat -c %s "$library")
[ "$size" -lt "$limit" ] || fail "the DLL has $size bytes, $limit is the limit" "see what grew: objdump -h"
echo "imports: $(echo $imported); $size bytes"
exit $failed
