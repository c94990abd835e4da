#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# A project of somebody else is configured, built and run against the unpacked package:
# check_consumer.sh SOURCES WORK DLL|- RUNNER|- CMAKE-ARGUMENT...
set -euo pipefail
sources=$1 work=$2 dll=$3 runner=$4
shift 4

rm -rf "$work"
cmake -S "$sources" -B "$work" -G Ninja "$@" >"$work.log" 2>&1 || { cat "$work.log"; exit 1; }
cmake --build "$work" >>"$work.log" 2>&1 || { cat "$work.log"; exit 1; }
[ "$dll" = - ] || cp "$dll" "$work"
run() { if [ "$runner" = - ]; then "$work/$1"; else "$runner" "$work/$1.exe"; fi | tr -d '\r'; }
diff <(run consumer_c) <(echo "C: 0.1.0.0")
diff <(run consumer_cpp) <(echo "C++: 0.1.0.0")
