#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Nothing of the library runs when it is loaded.
set -euo pipefail
objdump=$1 archive=$2

objects=$("$objdump" -h "$archive" | grep -c 'file format')
found=$("$objdump" -h "$archive" | awk '/file format/ { object = $1 } / \.(init_array|ctors|CRT\$XC)/ { print object, $2 }')
[ "$objects" -gt 30 ] || { echo "only $objects objects were found in $archive"; exit 1; }
[ -z "$found" ] || { echo "these objects have initialisers:"; echo "$found"; echo "To mend: make their tables constinit"; exit 1; }
echo "$objects objects, none with an initialiser"
