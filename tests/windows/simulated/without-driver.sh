#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# WITH_DRIVER WINE BIN PROGRAM [ARGUMENT...]: runs a program on a system where no driver is installed.
set -euo pipefail
"$1" "$2" "$3" remove >/dev/null 2>&1 || true
exec "$2" "${@:4}"
