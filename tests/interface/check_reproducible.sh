#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Linking the DLL again gives the same bytes.
set -euo pipefail
cmake=$1 build_dir=$2 library=$3
first=$(mktemp)
trap 'rm -f "$first"' EXIT
cp "$library" "$first"
sleep 1
rm "$library"
"$cmake" --build "$build_dir" --target VexoQTFServices >/dev/null
cmp "$first" "$library" || { echo "To mend: keep -brepro among the image's link options."; exit 1; }
