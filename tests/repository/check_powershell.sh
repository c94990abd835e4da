#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Scripts for Windows, as far as they can be read here: check_powershell.sh SOURCES
set -euo pipefail
cd "$1"
failed=0
fail() { echo "$1"; echo "To mend: $2"; failed=1; }

# Windows' own PowerShell takes a script without a mark for text of the system's code page.
if LC_ALL=C grep -nP '[^\x00-\x7F]' scripts/*.ps1; then fail "these lines have characters beyond ASCII" "write them in ASCII"; fi

# A session is changed, and put back again, in one place.
if grep -nE 'Set-Location|OutputEncoding *=|\$env:\w+ *=|Set-ExecutionPolicy|\$global:' scripts/*.ps1 |
  grep -v '^scripts/visual-studio.ps1:'; then
  fail "these lines change the session that the script is run in" "use Invoke-WithVisualStudio"
fi

count=0
for script in scripts/*.ps1; do
  grep -q '^\.SYNOPSIS' "$script" || continue
  count=$((count + 1))
  name=$(basename "$script")
  for file in "$script" README.md docs/packages.md; do
    grep -qF "powershell -ExecutionPolicy Bypass -File scripts\\$name" "$file" ||
      fail "$file does not say how $name is run where scripts are not allowed" "see the other scripts"
  done
done
[ $count -ge 2 ] || fail "only $count scripts were found in scripts/" "see this script"
echo "$count scripts"
exit $failed
