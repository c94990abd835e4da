#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# The WebAssembly module gives the same bytes as the native library for every file of the corpus:
# check_module.sh CMAKE SOURCE BUILD CLIENT FOLDER...
set -euo pipefail
cmake=$1 source=$2 build=$3 client=$4
shift 4
command -v node >/dev/null || { echo "node is missing; to mend: scripts/install-packages.sh test"; exit 1; }
"$cmake" -S "$source" -B "$build" -G Ninja -D CMAKE_BUILD_TYPE=Release \
  -D CMAKE_TOOLCHAIN_FILE="$source/cmake/wasm32-wasi.cmake" >/dev/null
"$cmake" --build "$build" -- --quiet
module=$build/bin/vqs_documents.wasm

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
mapfile -t files < <(find "$@" -type f -size -200k | sort)
[ "${#files[@]}" -gt 200 ] || { echo "only ${#files[@]} files were found below $*"; exit 1; }
mkdir "$scratch/native" "$scratch/module"
"$client" "$scratch/native" "${files[@]}"
node --no-warnings "$source/tests/documents/c/corpus_module.mjs" "$module" "$scratch/module" "${files[@]}"
results=$(find "$scratch/native" -type f | wc -l)
[ "$results" = $((${#files[@]} * 7 + 1)) ] || { echo "$results results of ${#files[@]} files"; exit 1; }
diff -rq "$scratch/native" "$scratch/module"
echo "$results results of ${#files[@]} files are the same; the module has $(wc -c <"$module") bytes"
