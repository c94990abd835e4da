#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# The manual page knows every command, every option and every exit code of the tool: check_manual.sh VQS PAGE
set -euo pipefail
vqs=$1
page=$(gzip -dc "$2" | sed 's/\\-/-/g')
failed=0
checked=0

know() { # a command or an option, how the page writes it
  checked=$((checked + 1))
  grep -qE -e "$2" <<<"$page" || { echo "docs/man/vqs.1 does not know \"$1\""; failed=1; }
}
know_command() { know "$1" "^\.B[IR]? \"?$1([ \"]|$)"; }
know_option() { know "$1" "(^|[^a-z-])$1([^a-z-]|$)"; }

visit() { # the words of a command
  local help name
  help=$("$vqs" "$@" --help)
  while read -r name; do know_option "$name"; done < <(grep -oE '^  .*-[a-z-]+' <<<"$help" | grep -oE -e '--[a-z-]+' | sort -u)
  while read -r name; do
    visit "$@" "$name"
  done < <(sed -n '/^Subcommands:/,/^$/s/^  \([a-z]\+\) .*/\1/p' <<<"$help")
  grep -q '^Subcommands:' <<<"$help" || know_command "$*"
}

visit
while read -r code; do know "exit code $code" "^\.B $code\$"; done < <("$vqs" --help | sed -n '/^Exit codes:/,/^$/s/^  \([0-9]\)  .*/\1/p')
[ $checked -gt 15 ] || { echo "only $checked commands and options were found"; failed=1; }
echo "$checked commands, options and exit codes"
exit $failed
