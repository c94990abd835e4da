#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# The library shares the C runtime with its program: check_runtime.sh WINE PROGRAM
set -euo pipefail
wine=$1 program=$2
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
for image in "$program" "$(dirname "$program")/VexoQTFServices.dll"; do
  if llvm-readobj-19 --coff-imports "$image" | grep -i 'Name: msvcr'; then
    echo "$(basename "$image") is not on the universal C runtime"
    echo "To mend: compile with _UCRT, and link with -lucrt and nothing that brings another runtime along."
    exit 1
  fi
done
"$wine" "$program" "Z:$folder" .1251
