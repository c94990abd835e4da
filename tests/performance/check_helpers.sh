#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# In format/, bytes are copied and searched by the two functions of format/bytes.h alone, whose work is counted. No export reads registry
# text, so its reader may search as it likes.
set -euo pipefail
cd "$1"
[ -e format/bytes.h ] || { echo "format/bytes.h is gone: say here what took its place"; exit 1; }
copy='(mem(p?cpy|move|chr|ccpy)|str[a-z]*(cpy|cat|len|chr)|wcs[a-z]*|__builtin_[a-z]+)'
algorithm='(copy(_n|_if|_backward)?|move_backward|find[a-z_]*|adjacent_find|search(_n)?)'
found=$(grep -rnE "\b$copy *\(|\bstd::(ranges::)?$algorithm *\(|\.find(_first_of|_last_of)? *\(|\bchar_traits\b" format \
  --include='*.h' --include='*.cpp' | grep -vE '^format/(bytes\.h|binary/registry_reader\.cpp):' || true)
[ -z "$found" ] && exit 0
printf '%s\n' "what copies or searches beside format/bytes.h:" "$found" \
  "To mend: use copyBytes and unitsBeforeZero, so that tests/performance counts it"
exit 1
