#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Packages made a second time, later, are the same bytes: check_reproducible.sh CPACK BUILD PACKAGES OUTPUT
set -euo pipefail
cpack=$1 build=$2 packages=$3 output=$4

sleep 2
"$(dirname "$0")/make_packages.sh" "$cpack" "$build" "$output"
compared=0
for package in "$packages"/*.deb "$packages"/*.zip; do
  [ -e "$package" ] || continue
  cmp "$package" "$output/$(basename "$package")"
  compared=$((compared + 1))
done
[ $compared -gt 0 ] || { echo "there is no package in $packages"; exit 1; }
echo "$compared packages are the same again"
