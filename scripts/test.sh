#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Every test: native, native under the sanitizers, and the Windows build under Wine. Ends with the runner's count.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-packages.sh test

# A Windows system of the tests' own; no display is needed.
export WINEPREFIX=$PWD/build/wine WINEDEBUG=-all WINEDLLOVERRIDES=mscoree,mshtml=
export PATH=$PATH:/usr/lib/wine

presets=(native native-asan windows)
# Tests of single parts run once, under the sanitizers, over code that is optimised as in the native build.
declare -A options=([native]="-D VQS_LINT=ON -D VQS_PROTOCOL_TESTS=OFF" [native-asan]="" [windows]="-D VQS_PROTOCOL_TESTS=OFF")
for preset in "${presets[@]}"; do
  echo "Building $preset ..."
  # shellcheck disable=SC2086
  cmake --preset "$preset" ${options[$preset]} >/dev/null
  cmake --build --preset "$preset" -- --quiet
done
if [ ! -e "$WINEPREFIX/system.reg" ]; then
  echo "Making a Windows prefix ..."
  wine64 wineboot -i >/dev/null 2>&1
fi

# One server for all of the tests: many programs that start and stop one at a time would race for it. An older one has to
# be gone first. The first program starts services, which keep its output open and end with the last program, so one
# program is there all the time, and the tests begin when services run.
wineserver64 -k 2>/dev/null || true
wineserver64 -w
wineserver64 -p30
exec 9> >(exec wine64 cmd >/dev/null 2>&1)
wine64 cmd /c exit >/dev/null 2>&1 </dev/null

# One run over all builds, so that one count covers them.
mkdir -p build/all
printf 'subdirs("../%s")\n' "${presets[@]}" >build/all/CTestTestfile.cmake
ctest --test-dir build/all --output-on-failure --parallel "$(nproc)" --no-tests=error "$@" 9>&-
