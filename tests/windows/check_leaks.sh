#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# The process that Wine runs the driver in keeps its memory and its mappings, whatever it is asked:
# check_leaks.sh WITH_DRIVER WINE BIN PROGRAM
set -euo pipefail

# The process of this prefix that has the driver loaded.
find_host() {
  local process
  for process in /proc/[0-9]*; do
    grep -q 'vexoqtf\.sys' "$process/maps" 2>/dev/null || continue
    tr '\0' '\n' <"$process/environ" 2>/dev/null | grep -qFx "WINEPREFIX=$WINEPREFIX" && echo "$process" && return
  done
  return 1
}

work() {
  VQS_TEST_REQUESTS=100000 "$@" --gtest_filter='DriverRandom.*:DriverLogs.*thousands*' >/dev/null ||
    { echo "the requests failed"; exit 1; }
}
memory() { sed -n 's/^VmRSS:\s*\([0-9]*\) kB/\1/p' "$host/status"; }
mappings() { wc -l <"$host/maps"; }

work "$@" # whatever is made once is made now
host=$(find_host) || { echo "no process has the driver loaded"; exit 1; }
before_memory=$(memory) before_mappings=$(mappings)
work "$@"
after_memory=$(memory) after_mappings=$(mappings)
echo "memory $before_memory kB, then $after_memory kB; mappings $before_mappings, then $after_mappings"
# What is lost in so many requests and logs is lost thousands of times.
[ "$after_memory" -le $((before_memory + 128)) ] && [ "$after_mappings" -le $((before_mappings + 4)) ]
