#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# How a program or library for systems other than Windows is protected: check_hardening.sh IMAGE CC
set -euo pipefail
export LC_ALL=C
image=$1 cc=$2
failed=0
fail() { echo "$image $1"; echo "To mend: ${2:-link vqs_hardened, see cmake/Hardening.cmake}"; failed=1; }
head=$(readelf -hW "$image")
segments=$(readelf -lW "$image")
dynamic=$(readelf -dW "$image")
imports=$(nm -D --undefined-only "$image" | awk '{ sub(/@.*/, "", $2); print $2 }')
units=$(readelf --debug-dump=info --dwarf-depth=1 "$image" | sed -n 's/.*DW_AT_producer.*: \(GNU .*\)/\1/p')

grep -q 'Type: *DYN' <<<"$head" || fail "cannot be loaded at any address"
if grep -q 'INTERP' <<<"$segments"; then
  grep -qE 'FLAGS_1.*\bPIE\b' <<<"$dynamic" || fail "is no position-independent program"
fi
grep -qE 'FLAGS_1.*\bNOW\b' <<<"$dynamic" || fail "is bound lazily, so that its table of functions stays writable"
grep -q 'GNU_RELRO' <<<"$segments" || fail "leaves its relocated tables writable"
grep -qE 'GNU_STACK .* RW +0x' <<<"$segments" || fail "asks for a stack that can be executed, or says nothing of it"
if grep -qE 'LOAD .* RWE +0x' <<<"$segments"; then fail "has memory that can be written and executed"; fi
if grep -q 'TEXTREL' <<<"$dynamic"; then fail "has relocations in its code" "compile with -fPIC"; fi
grep -qx '__stack_chk_fail' <<<"$imports" || fail "does not watch its stack"
checked=$(grep -E '^__.*_chk$' <<<"$imports" | tr '\n' ' ' || true)
[ -n "$checked" ] || fail "calls no function that knows the size of its buffer"

# Each of our sources, by what the compiler noted of itself.
count=$(grep -c . <<<"$units" || true)
[ "$count" -gt 0 ] || fail "does not tell how it was compiled" "compile with -g"
without() { # option, units that need not have it
  local found
  found=$(grep -v -e "${2:-^$}" <<<"$units" | grep -cv -e "$1" || true)
  [ "$found" = 0 ] || fail "has $found sources without $1"
}
without -fstack-protector-strong ' -ffreestanding '
without -fstack-clash-protection
if grep -q 'X86-64' <<<"$head"; then
  without -fcf-protection=full
  # The linker says so of the whole, unless the system's own start files do not.
  start_files=(crti.o crtbeginS.o crtendS.o crtn.o)
  if grep -q 'INTERP' <<<"$segments"; then start_files+=(Scrt1.o); fi
  said=1
  for file in "${start_files[@]}"; do readelf -nW "$("$cc" -print-file-name="$file")" | grep -q 'IBT, SHSTK' || said=0; done
  [ $said = 0 ] || readelf -nW "$image" | grep -q 'IBT, SHSTK' || fail "does not promise to work with shadow stacks"
fi
echo "$(basename "$image"): $count sources; bounds are checked by $checked"
exit $failed
