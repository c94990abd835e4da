#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Installs the Debian packages that a purpose needs and that are missing: install-packages.sh build|windows|wasm|test|fuzz ...
set -euo pipefail

packages_for() {
  case $1 in
    build) echo g++ cmake ninja-build libcli11-dev nlohmann-json3-dev libfmt-dev libgtest-dev ;;
    windows) echo "$(packages_for build)" clang-19 lld-19 llvm-19 g++-mingw-w64-x86-64-posix binutils-mingw-w64-x86-64 ;;
    test) echo "$(packages_for bench)" "$(packages_for windows)" "$(packages_for wasm)" wine64 clang-format-19 \
      clang-tidy-19 nodejs npm python3-jsonschema pkgconf dpkg-dev file ;;
    wasm) echo cmake ninja-build clang-19 lld-19 llvm-19 libc++-19-dev-wasm32 libc++abi-19-dev-wasm32 \
      libclang-rt-19-dev-wasm32 wasi-libc ;;
    fuzz) echo "$(packages_for build)" clang-19 libclang-rt-19-dev ;;
    release) echo debootstrap git ;;
    bench) echo "$(packages_for build)" libflatbuffers-dev flatbuffers-compiler libprotobuf-dev protobuf-compiler ;;
    *) echo "install-packages.sh: no such purpose: $1 (build, windows, wasm, test, fuzz, bench, release)" >&2; exit 2 ;;
  esac
}

# Packages of Node.js from elsewhere than Debian have npm in them.
installed() {
  [ "$(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null)" = installed ] ||
    { [ "$1" = npm ] && command -v npm >/dev/null; }
}

wanted=$(for purpose in "${@:-build}"; do packages_for "$purpose"; done)
missing=()
for package in $wanted; do installed "$package" || missing+=("$package"); done
[ ${#missing[@]} -gt 0 ] || exit 0

echo "Installing from Debian: ${missing[*]}"
root=()
if [ "$(id -u)" != 0 ]; then
  command -v sudo >/dev/null || { echo "These packages are missing; install them as root, then run this again." >&2; exit 1; }
  root=(sudo)
fi
log=$(mktemp)
trap 'rm -f "$log"' EXIT
install() {
  "${root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends "${missing[@]}" >"$log" 2>&1
}
install || { "${root[@]}" apt-get update >"$log" 2>&1 && install; } || { cat "$log" >&2; exit 1; }
