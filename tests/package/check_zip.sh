#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# What the .zip holds: check_zip.sh PACKAGES LIST...
set -euo pipefail
export LC_ALL=C
packages=$1
shift

archive=$packages/VexoQTFServices-0.1.0-windows-x64.zip
cmake -E tar tf "$archive" | grep -v '/$' | sort |
  diff <(sed 's,^,VexoQTFServices-0.1.0-windows-x64/,' "$@" | sort) - || {
  echo "the archive differs from $* (> is there, < is expected)"
  exit 1
}
find "$packages/tree" -type f -empty | (! grep .) || { echo "these files are empty"; exit 1; }
