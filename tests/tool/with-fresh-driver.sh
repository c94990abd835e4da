#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# WITH_DRIVER WINE BIN PROGRAM [ARGUMENT...]: runs a program in front of a driver that nobody has used before.
set -euo pipefail
"$1" "$2" "$3" install
exec "$@"
