#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# The WebAssembly module gives the same bytes as the native library for every file of the corpus:
# check_module.sh CLIENT MODULE SCRIPT FOLDER...
set -euo pipefail
client=$1 module=$2 script=$3
shift 3
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
mapfile -t files < <(find "$@" -type f -size -200k | sort)
[ "${#files[@]}" -gt 200 ] || { echo "only ${#files[@]} files were found below $*"; exit 1; }
mkdir "$scratch/native" "$scratch/module"
"$client" "$scratch/native" "${files[@]}"
node --no-warnings "$script" "$module" "$scratch/module" "${files[@]}"
results=$(find "$scratch/native" -type f | wc -l)
[ "$results" = $((${#files[@]} * 7 + 1)) ] || { echo "$results results of ${#files[@]} files"; exit 1; }
diff -rq "$scratch/native" "$scratch/module"
echo "$results results of ${#files[@]} files are the same"
