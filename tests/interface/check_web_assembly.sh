#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Every source and header of format/ compiles for 32-bit WebAssembly as well: check_web_assembly.sh SOURCES
set -euo pipefail
cd "$1"
options=(--target=wasm32-wasi -std=c++20 -stdlib=libc++ -fno-exceptions -fno-rtti -Wall -Wextra -Wconversion -Wshadow -Werror
  -fsyntax-only -I. -Iinclude)
failed=0
compile() { # file
  clang++-19 "${options[@]}" -x c++ "$1" || { failed=1; echo "$1 does not compile"; }
}
headers=$(mktemp --suffix=.cpp)
trap 'rm -f "$headers"' EXIT
find format -name '*.h' | sort | sed 's/.*/#include "&"/' >"$headers"
compile "$headers"
for source in format/*/*.cpp; do compile "$source"; done

count=$(find format -name '*.h' -o -name '*.cpp' | wc -l)
[ "$count" -gt 15 ] || { failed=1; echo "only $count files were found in format/"; }
[ $failed = 0 ] || echo "To mend: no system calls, and no type whose size the target decides; if a header of the target is
missing: scripts/install-packages.sh test"
echo "$count files"
exit $failed
