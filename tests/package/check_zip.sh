#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# What the .zip files hold: check_zip.sh PACKAGES SYMBOLS-LIST LIST...
set -euo pipefail
export LC_ALL=C
packages=$1 symbols=$2
shift 2

check() { # name of the archive, and lists of what is in it
  local name=VexoQTFServices-0.1.0-windows-x64$1
  shift
  cmake -E tar tf "$packages/$name.zip" | grep -v '/$' | sort | diff <(sed "s,^,$name/," "$@" | sort) - || {
    echo "$name.zip differs from $* (> is there, < is expected)"
    exit 1
  }
}
check "" "$@"
check -symbols "$symbols"
find "$packages/tree" -type f -empty | (! grep .) || { echo "these files are empty"; exit 1; }
