#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# The public headers as people compile them: each by itself, in every language that they are for; together for every
# kind of compiler and target; functions refused where there is no library. check_headers.sh INCLUDE CLIENTS CC CXX
set -euo pipefail
include=$1 clients=$2 cc=$3 cxx=$4
mingw=x86_64-w64-mingw32

for compiler in clang-19 $mingw-gcc-posix; do
  command -v "$compiler" >/dev/null || { echo "$compiler is missing. To mend: scripts/install-packages.sh test"; exit 1; }
done

# For each header a file that includes it twice. Records are for any target, functions for those that have a library.
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir "$work"/{records,functions,wrong}
both() { tee "$work/$1.c" >"$work/$1.cpp"; }
for header in "$include"/vqs/*.h; do
  name=$(basename "$header" .h)
  case $name in base | status | *_records) kind=records ;; *) kind=functions ;; esac
  printf '#include "vqs/%s.h"\n#include "vqs/%s.h"\n' "$name" "$name" | both "$kind/$name"
done
for kind in records functions; do both "$kind/client" <"$clients/${kind}_client.c"; done
printf '#include "vqs/base.h"\nVQS_LAYOUT(sizeof(uint32_t) == 5);\n' | both wrong/layout
[ "$(find "$work" -name '*.c' | wc -l)" -gt 15 ] || { echo "too few headers were found in $include"; exit 1; }

# Jobs, one a line: the files, the command, and what the first error says where there has to be one.
jobs=$work/jobs
compile() { printf '%s\t%s\t%s\n' "$1" "$2" "${3-}" >>"$jobs"; }

strict='-fsyntax-only -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wredundant-decls -Wundef -Werror'
bare="$strict -ffreestanding -Wno-microsoft-static-assert"
every() { # files without suffix, whether C99 has VQS_TEXT, C compiler, C++ compiler, options
  local files=$1 text=$2 c=$3 cpp=$4 options=${5-$strict} standard
  compile "$files.c" "$c -std=c99 -DEXPECT_TEXT=$text $options"
  for standard in c11 c17; do compile "$files.c" "$c -std=$standard -DEXPECT_TEXT=1 $options"; done
  for standard in 11 14 17 20 23; do compile "$files.cpp" "$cpp -std=c++$standard -DEXPECT_TEXT=1 $options"; done
}
for kind in records functions; do
  every "$kind/*" 0 "$cc" "$cxx"
  every "$kind/*" 0 clang-19 clang++-19
  every "$kind/client" 1 $mingw-gcc-posix $mingw-g++-posix
  for compiler in "$cc" clang-19; do compile "$kind/client.c" "$compiler -std=c2x -DEXPECT_TEXT=1 $strict"; done
  # A compiler that knows neither C11 nor GNU's extensions.
  compile "$kind/client.c" "clang-19 -std=c99 -U__GNUC__ -DEXPECT_TEXT=0 $bare"
done

# Clang stands in for Microsoft's compiler, whose default is C of 1989 with extensions.
cl='clang-19 --driver-mode=cl /Zs /W4 /WX /DEXPECT_TEXT=1 -Xclang -ffreestanding'
for target in x86_64-pc-windows-msvc arm64ec-pc-windows-msvc; do
  for kind in records functions; do
    compile "$kind/client.c" "clang-19 --target=$target -std=gnu89 -DEXPECT_TEXT=1 $bare -Wno-language-extension-token"
    for standard in c11 c17; do compile "$kind/client.c" "$cl --target=$target /TC /std:$standard"; done
    for standard in 14 20 latest; do compile "$kind/client.cpp" "$cl --target=$target /permissive- /std:c++$standard"; done
  done
done

# Where there is no library, records can be had, and functions say what is wrong before anything else is.
without() { # target, headers with functions, whether C99 has VQS_TEXT, the first error
  every records/client "$3" "clang-19 --target=$1" "clang++-19 --target=$1" "$bare"
  compile "functions/$2.c" "clang-19 -std=c11 --target=$1 $bare" "$4"
}
for target in i686 aarch64; do without $target-pc-windows-msvc '*' 1 'VexoQTFServices.dll is for x64 programs'; done
without i686-w64-mingw32 client 1 'VexoQTFServices.dll is for x64 programs'
for target in i686-pc-linux-gnu wasm32-unknown-unknown; do
  without $target client 0 'libVexoQTFServices is for 64-bit programs'
done

# Every form of the proof refuses a wrong layout.
for command in "$cc -std=c99" "$cc -std=c11" "clang-19 -std=c99 -U__GNUC__" \
  "clang-19 -std=gnu89 --target=i686-pc-windows-msvc"; do
  compile wrong/layout.c "$command -ffreestanding -fsyntax-only" error
done
compile wrong/layout.cpp "$cxx -std=c++11 -fsyntax-only" error

passes() { $2 -I "$include" $work/$1 >"$log" 2>&1; }
refuses() { # every one of the files
  local file
  for file in $work/$1; do
    $2 -I "$include" "$file" >"$log" 2>&1 && return 1
    grep -m1 error "$log" | grep -qF "$3" || return 1
  done
}
run() { # files, command, first error
  log=$work/log.$BASHPID
  if [ -z "$3" ]; then passes "$@"; else refuses "$@"; fi && return
  head -5 "$log"
  echo "not as expected${3:+ (\"$3\" is missing)}: $2 $1"
  return 1
}
export -f passes refuses run
export work include
xargs -P "$(nproc)" -d '\n' -I {} bash -c 'IFS=$'"'\\t'"' read -r files command error <<<"$1"; run "$files" "$command" "$error"' _ {} <"$jobs" || {
  echo "To mend: keep include/vqs to what every compiler knows (base.h has macros for the rest), put records without"
  echo "pointers into their family's _records.h, and let every header with functions include functions.h."
  exit 1
}
echo "$(wc -l <"$jobs") ways to compile the headers"
