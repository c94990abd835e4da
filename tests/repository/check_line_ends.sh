#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Every file is checked out as the same bytes, whatever git was told about line ends: check_line_ends.sh SOURCES
set -euo pipefail
cd "$1"
failed=0
fail() { echo "$1"; echo "To mend: $2"; failed=1; }

# Whoever owns the folder, and whatever this machine's git is set to.
git() { command git -c safe.directory='*' "$@"; }
if ! command -v git >/dev/null || ! git rev-parse --git-dir >/dev/null 2>&1; then
  echo "this is not a git checkout, or there is no git"
  exit 77
fi

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
git -c core.autocrlf=false -c core.eol=lf checkout-index --all --prefix="$work/kept/"
git -c core.autocrlf=true checkout-index --all --prefix="$work/autocrlf/"
git -c core.autocrlf=false -c core.eol=crlf checkout-index --all --prefix="$work/crlf/"
for setting in autocrlf crlf; do
  diff -rq "$work/kept" "$work/$setting" || fail "a checkout with $setting changes these files" "name them in .gitattributes"
done

# "i/crlf" and "i/mixed" are text with other line ends in the repository itself. Some test data has them on purpose.
if git ls-files --eol | grep -E '^i/(crlf|mixed)' | grep -v 'attr/-text'; then fail "these are text with CR" "git add --renormalize ."; fi

# What is compared byte for byte is never converted, even if it should look like text.
checked=0
while read -r state file; do
  checked=$((checked + 1))
  [ "$state" = unset ] || fail "$file is not kept as it is" "give it -text in .gitattributes"
done < <(git ls-files '*.bin' '*.reg' 'fuzz/corpus/*' | git check-attr --stdin text | sed -E 's/^(.*): text: (.*)$/\2 \1/')
[ "$checked" -gt 200 ] || fail "only $checked files are binary" "see the patterns in this script"
echo "$(git ls-files | wc -l) files, $checked of them binary"
exit $failed
