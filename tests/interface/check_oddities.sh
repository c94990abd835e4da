#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Each deliberate oddity of docs/compatibility.md is cited in the code, and has exports and tests that exist; each
# citation names one of them.
set -euo pipefail
cd "$1"
page=docs/compatibility.md
failed=0

complain() { # what is wrong, how to mend it
  failed=1
  printf '%s\nTo mend: %s\n' "$1" "$2"
}

rows=$(sed -n '/^## Deliberate oddities$/,/^## [^D]/p' "$page" | grep '^| `' || true)
ids=$(sed 's/^| `\([^`]*\)`.*/\1/' <<<"$rows")
named=$(cut -d'|' -f5 <<<"$rows" | grep -o '`[^`]*`' | tr -d '`' | sort -u || true)
# A citation may be broken between two lines of a comment.
cited=$(find src format include -name '*.h' -o -name '*.cpp' | sort | xargs sed -E 's@^ *(///?|\*) @@' | tr '\n' ' ' |
  grep -oE '\(compatibility\.md: [^)]*\)' | sed -E 's/^[^ ]* (.*)\)$/\1/' | sort -u || true)
cases=$(find tests -name '*.cpp' -print0 | xargs -0 cat | tr '\n' ' ' |
  grep -oE '\bTEST(_F|_P)?\([A-Za-z0-9_]+, +[A-Za-z0-9_]+\)' | sed -E 's/.*\((.*), +(.*)\)/\1.\2/' | sort -u)
exports=$(sed -n 's/^  \([A-Za-z0-9_]*\).*/\1/p' src/windows/exports.def | sort -u)
for list in rows cited cases exports; do
  [ -n "${!list}" ] || { echo "no $list were found: $0 looks for them in vain"; exit 1; }
done

for id in $(sort <<<"$ids" | uniq -d); do
  complain "$page lists $id twice" "give one of the rows another id, or take it out"
done
for id in $(comm -23 <(sort -u <<<"$ids") <(echo "$cited")); do
  complain "no comment cites $id" "end the comment at that code with (compatibility.md: $id), or take its row out of $page"
done
while read -r id; do
  complain "a comment cites $id, which $page does not list" "add its row under \"Deliberate oddities\", or correct the id"
done < <(comm -13 <(sort -u <<<"$ids") <(echo "$cited") | grep . || true)
for name in $(grep -o '`vq[A-Za-z0-9_]*`' <<<"$rows" | tr -d '`' | sort -u); do
  grep -qx "$name" <<<"$exports" || complain "$page names the export $name, which there is not" "correct it in the row"
done
for name in $(comm -23 <(echo "$named") <(echo "$cases")); do
  complain "$page names the test $name, which there is not" "write it, or name the test that shows the oddity"
done
while read -r row; do
  tests=$(cut -d'|' -f5 <<<"$row" | grep -c '`' || true)
  [ "$tests" != 0 ] || complain "no test in $row" "name the test that shows the oddity"
done <<<"$rows"
exit $failed
