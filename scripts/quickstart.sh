#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# From a bare Debian 12 to the main job done: a policy binary is read, its policies go into the driver's store, come
# back, and leave again as a policy binary and as registry export text.
set -euo pipefail
cd "$(dirname "$0")/.."

quietly() {
  local log=build/quickstart/build.log
  "$@" >>"$log" 2>&1 || { tail -n 40 "$log" >&2; echo "quickstart: this failed: $* (all of it: $log)" >&2; exit 1; }
}

title() { printf '\n%s\n' "$1"; }

run() {
  printf '\n  $ vqs'
  printf ' %s' "$@"
  printf '\n'
  build/native/bin/vqs "$@" | sed 's/^/  /'
}

same() {
  cmp "$1" "$2" || { echo "quickstart: $1 differs from $2" >&2; exit 1; }
  echo "  $1 is byte for byte $2."
}

out=build/quickstart
mkdir -p $out
: >$out/build.log
scripts/install-packages.sh build
if [ ! -x build/native/bin/vqs ]; then echo "Building the library, the simulated driver and the tool ..."; fi
[ -e build/native/build.ninja ] || quietly cmake --preset native
quietly cmake --build --preset native --target vqs

# A driver of this demonstration's own, new each time.
rm -f $out/driver.state
export VEXOQTF_SIMULATOR_STATE=$PWD/$out/driver.state
policies=examples/policies

title "1. A policy binary holds rules: when these conditions hold, take these actions."
run binary show $policies/laptop-r5.bin | sed -n '1,34p'
echo "  ... (the rest: build/native/bin/vqs binary show $policies/laptop-r5.bin)"

title "2. Its policies go into the driver's Asm store ..."
run store load asm $policies/laptop-r5.bin

title "3. ... and come back out of it."
run store list asm

title "4. They leave again: as a policy binary, and as registry export text."
run store save asm $out/laptop.bin
same $out/laptop.bin $policies/laptop-r5.bin
run store save asm $out/laptop.reg --registry
same $out/laptop.reg $policies/laptop-asm.reg

title "Next: build/native/bin/vqs --help, the headers in include/vqs, and README.md."
