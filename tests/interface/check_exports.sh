#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# The exported names are the same in the headers, in exports.def and in the built library. Says which name differs.
set -euo pipefail
source_dir=$1 library=$2

listed=$(sed -n 's/^  \([A-Za-z0-9_]*\).*/\1/p' "$source_dir/src/windows/exports.def" | sort)
declared=$(cat "$source_dir"/include/vqs/*.h | grep -oE 'VQS_CALL vqs?[A-Za-z0-9_]+\(' | sed 's/VQS_CALL //; s/($//' | sort)
case $library in
  *.dll) built=$(x86_64-w64-mingw32-objdump -p "$library" | sed -n '/\[Ordinal\/Name Pointer\] Table/,/^$/s/^\s*\[ *[0-9]*\] //p' | sort) ;;
  *) built=$(nm -D --defined-only "$library" | awk '{ print $3 }' | sort) ;;
esac

failed=0
compare() { # what, how to mend, names
  local differing
  differing=$(diff <(echo "$listed") <(echo "$3") | grep '^[<>]' || true)
  [ -z "$differing" ] && return
  failed=1
  printf '%s\n' "$1 and src/windows/exports.def differ (< only in exports.def, > only in $1):" "$differing" "To mend: $2"
}
compare "include/vqs" "declare the function with VQS_API and VQS_CALL, or list it in exports.def" "$declared"
compare "$(basename "$library")" "define the function, and build again: cmake --build --preset native" "$built"
[ "$(echo "$listed" | uniq -d)" = "" ] || { echo "listed twice: $(echo "$listed" | uniq -d)"; failed=1; }
echo "$(echo "$listed" | wc -l) names listed, $(echo "$declared" | wc -l) declared, $(echo "$built" | wc -l) exported"
exit $failed
