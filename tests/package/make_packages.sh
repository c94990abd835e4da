#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Makes the packages of a build and unpacks them, all into OUTPUT/tree and each .deb into a folder of its own as well:
# make_packages.sh CPACK BUILD OUTPUT
set -euo pipefail
cpack=$1 build=$2 output=$3

rm -rf "$output"
mkdir -p "$output"
cd "$build"
SOURCE_DATE_EPOCH=1750000000 "$cpack" -B "$output" >"$output/cpack.log" || { cat "$output/cpack.log"; exit 1; }
rm -rf "$output/_CPack_Packages"

shopt -s nullglob
cd "$output"
for package in *.deb; do
  dpkg-deb -x "$package" tree
  dpkg-deb -x "$package" "$(dpkg-deb -f "$package" Package)"
done
for package in *-x64.zip; do cmake -E tar xf "$package" && mv "${package%.zip}" tree; done
[ -d tree ] || { echo "no package was made"; exit 1; }
