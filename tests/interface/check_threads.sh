#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Each function's own comment ends with its thread rule, which is one of those that vqs.h explains.
# check_threads.sh SOURCES
set -euo pipefail
cd "$1/include/vqs"
names=$(grep -cE '^  [A-Za-z0-9_]+' ../../src/windows/exports.def)
failed=0
fail() { failed=1; printf '%s\n' "$1" "To mend: $2"; }

rules=$(sed -n 's/^ \*      -  \([a-z ,]*\): .*/\1/p' vqs.h | sort)
# "name:rule" of every declaration: what the last sentence of the comment says that ends on the line before.
said=$(awk '
  function rule(line) { return match(line, /Threads: [a-z ,]+\.( \*\/)?$/) ? substr(line, RSTART + 9) : "" }
  /^VQS_API/ {
    match($0, /vqs?[A-Z][A-Za-z0-9_]*\(/)
    print substr($0, RSTART, RLENGTH - 1) ":" rule(previous == " */" ? beforeThat : previous)
  }
  { beforeThat = previous; previous = $0 }
' ./*.h | sed 's/\.\( \*\/\)\?$//')

[ "$(wc -l <<<"$said")" = "$names" ] || fail "$(wc -l <<<"$said") functions were found, not $names" "look at the declarations"
without=$(sed -n 's/:$//p' <<<"$said")
[ -z "$without" ] || fail "these have no thread rule: $without" "end their own comments with \"Threads: ...\", see vqs.h"
used=$(sed 's/^[^:]*://; /^$/d' <<<"$said" | sort -u)
differing=$(diff <(echo "$rules") <(echo "$used") | grep '^[<>]' || true)
[ -z "$differing" ] || fail "thread rules (< only explained, > only used): $differing" "explain in vqs.h what the headers use"
echo "$(wc -l <<<"$said") functions, $(wc -l <<<"$rules") thread rules"
exit $failed
