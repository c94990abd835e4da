#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# The exported names are the same in the headers, in exports.def and in the built library. Says which name differs.
set -euo pipefail
source_dir=$1 library=$2

listed=$(sed -n 's/^  \([A-Za-z0-9_]*\).*/\1/p' "$source_dir/src/windows/exports.def" | sort)
declared=$(cat "$source_dir"/include/vqs/*.h | grep -oE 'VQS_CALL vqs?[A-Za-z0-9_]+\(' | sed 's/VQS_CALL //; s/($//' | sort)
# "name address" of every export
case $library in
  *.dll)
    exports=$(llvm-readobj-19 --coff-exports "$library" | awk '$1 == "Name:" { name = $2 } $1 == "RVA:" { print name, $2 }')
    ;;
  *) exports=$(nm -D --defined-only "$library" | awk '{ print $3, $1 }') ;;
esac
built=$(awk '{ print $1 }' <<<"$exports" | sort)

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

# Second and third names of one function.
address() { awk -v name="$1" '$1 == name { print $2 }' <<<"$exports"; }
same() {
  [ -n "$(address "$1")" ] && [ "$(address "$1")" = "$(address "$2")" ] && return
  failed=1
  echo "$2 is not the same function as $1: $(address "$2") and $(address "$1")"
  echo "To mend: list it in src/windows/exports.def as $2 = $1"
}
same vqsWaitAppOutput vqsExWaitAppOutput
same vqsCustomWorkloadControl vqsQueryCurrentItsAutoModeSettings
same vqsAtstNotifyBiosEvent vqSetBiosAMTEvent
same vqsAtstNotifyBiosEvent vqSetBiosCQLEvent
same vqsCreateQTFLogKVIter vqsExCreateQTFLogExKVIter
same vqsDestroyQTFLogKVIter vqsExDestroyQTFLogExKVIter
same vqsResetQTFLogKVIter vqsExResetQTFLogExKVIter
names=$(wc -l <<<"$listed")
functions=$((names - $(grep -c '^  .* = ' "$source_dir/src/windows/exports.def")))
found=$(awk '{ print $2 }' <<<"$exports" | sort -u | wc -l)
[ "$found" = $functions ] || { failed=1; echo "$names names stand for $found functions, not $functions"; }
echo "$(echo "$listed" | wc -l) names listed, $(echo "$declared" | wc -l) declared, $(echo "$built" | wc -l) exported"
exit $failed
