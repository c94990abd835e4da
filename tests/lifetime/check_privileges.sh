#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# A program that runs with more rights than its caller has does not look at the driver's variables in its caller's
# environment: check_privileges.sh CLIENT. Ends with 77 where there can be no such program.
set -euo pipefail
client=$1
owner=1 caller=65534
failed=0
fail() { echo "$1"; failed=1; }
skip() { echo "Skipped: $1"; exit 77; }
as() { # user, command
  local user=$1
  shift
  setpriv --reuid="$user" --regid="$user" --clear-groups "$@"
}

[ "$(id -u)" = 0 ] || skip "only root can give programs to other users"
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
chmod 755 "$folder"
# Both can write here: what is not made was not tried.
mkdir -m 777 "$folder/state"
chmod 777 "$folder/state"
install -o $owner -m 4755 "$(command -v id)" "$folder/id"
[ "$(as $caller "$folder/id" -u)" = $owner ] || skip "programs in $folder do not get their owner's rights"
install -o $owner -m 755 "$client" "$folder/plain"
install -o $owner -m 4755 "$client" "$folder/raised"

state=VEXOQTF_SIMULATOR_STATE=$folder/state
as $caller env "$state/callers" "$folder/plain" session_open || fail "the program does not run for its caller"
[ -e "$folder/state/callers" ] || fail "without its owner's rights the program does not look at its environment"
as $caller env "$state/raised" "$folder/raised" session_open || fail "the program does not run with its owner's rights"
[ ! -e "$folder/state/raised" ] || fail "with its owner's rights the program makes the file that its caller names"

# A file that is its owner's alone.
as $owner env "$state/owners" "$folder/plain" session_open || fail "the program does not run for its owner"
[ "$(as $owner env "$state/owners" "$folder/plain" list)" = "7 " ] || fail "the owner's file does not hold the policy"
[ "$(as $caller env "$state/owners" "$folder/raised" list)" = "" ] || fail "the program shows its owner's file to its caller"

options=VEXOQTF_SIMULATOR_OPTIONS=unknown=1
if as $caller env $options "$folder/plain" list 2>/dev/null; then fail "the program does not look at its options"; fi
as $caller env $options "$folder/raised" list || fail "with its owner's rights the program takes its caller's options"
[ $failed = 1 ] || echo "neither variable is looked at with the rights of another user"
exit $failed
