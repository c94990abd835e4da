#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# What vqs-simulator says and returns, from an installed driver to an installed driver.
set -euo pipefail
wine=$1
bin=$2/../tests/windows/package
failed=0

# exit code, standard output, standard error, and the command
expect() {
  local code=$1 out=$2 err=$3 is_code=0 is_out is_err
  shift 3
  is_out=$("$wine" "$bin/vqs-simulator.exe" "$@" 2>"$errors" | tr -d '\r'; exit "${PIPESTATUS[0]}") || is_code=$?
  is_err=$(tr -d '\r' <"$errors")
  [ "$code/$out/$err" = "$is_code/$is_out/$is_err" ] && return
  failed=1
  printf '%s\n' "vqs-simulator $*" "  expected: $code/$out/$err" "  found:    $is_code/$is_out/$is_err"
}
errors=$(mktemp)
trap 'rm -f "$errors"' EXIT

see='(see "vqs-simulator --help")'
expect 0 'running' '' status
expect 0 'installed again' '' install
expect 0 'installed again' '' install --inf "Z:$(realpath "$bin" | tr / '\\')\\vexoqtf.inf"
expect 0 'running' '' status
expect 1 '' 'vqs-simulator: Z:\nowhere\vexoqtf.inf cannot be installed: Path not found (0x3)' \
  install --inf 'Z:\nowhere\vexoqtf.inf'
expect 0 'running' '' status
expect 0 'removed' '' remove
expect 1 '' 'vqs-simulator: the simulated driver is not installed' status
expect 1 '' 'vqs-simulator: the simulated driver is not installed' remove
expect 2 '' "vqs-simulator: A subcommand is required $see"
expect 2 '' "vqs-simulator: --inf: 1 required FILE missing $see" install --inf
expect 2 '' "vqs-simulator: The following argument was not expected: twice $see" remove twice
expect 0 'installed' '' install
expect 0 'running' '' status
exit $failed
