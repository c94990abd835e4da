#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# What the shared object asks of its process, and when it runs by itself: check_shared_object.sh LIBRARY
set -euo pipefail
export LC_ALL=C
library=$1
failed=0
fail() { echo "$library $1"; echo "To mend: $2"; failed=1; }
dynamic=$(readelf -dW "$library")
imports=$(nm -D --undefined-only "$library" | awk '{ sub(/@.*/, "", $2); print $2 }')
refuse() { # what it does, imports that show it, how to mend it
  local found
  found=$(grep -xE "$2" <<<"$imports" | tr '\n' ' ' || true)
  [ -z "$found" ] || fail "$1: $found" "$3"
}

grep -qE 'FLAGS_1.*\bNODELETE\b' <<<"$dynamic" || fail "is unloaded although its thread may be running" "link with -z nodelete"
needed=$(sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p' <<<"$dynamic" | grep -v '^ld-linux' | tr '\n' ' ')
[ "$needed" = "libc.so.6 " ] || fail "needs more than the C library: $needed" "see what of the C++ library is used by the new code"
if grep -qE '\((RPATH|RUNPATH)\)' <<<"$dynamic"; then fail "looks for libraries by itself" "leave its INSTALL_RPATH and BUILD_RPATH empty"; fi
[ "$(wc -l <<<"$imports")" -gt 20 ] || fail "imports hardly anything" "see how this check reads its imports"
refuse "throws, or catches" '_Unwind_.*|__cxa_(throw|begin_catch|allocate_exception)|__gxx_personality_v0' \
  "compile with vqs_no_exceptions"
refuse "allocates memory with new, which throws" '_Zn[wa].*' "use malloc, and look at what it gives"
refuse "destroys something at the end of the process, when others still use it" '__cxa_atexit|atexit|on_exit' \
  "make the object trivially destructible"
refuse "trusts the environment of programs with more rights than their caller" 'getenv|environ|__environ' "use secure_getenv"
grep -qx 'secure_getenv' <<<"$imports" || fail "does not look at the environment" "see system::environment"
# One initialiser attaches the driver; the other, and the one at the end, are the compiler's own.
for array in "INIT_ARRAYSZ 16" "FINI_ARRAYSZ 8"; do
  read -r name size <<<"$array"
  found=$(sed -nE "s/.*\($name\) +([0-9]+) .*/\1/p" <<<"$dynamic")
  [ "$found" = "$size" ] || fail "has $name of $found bytes, not $size" "make the tables constinit, and nothing run at the end"
done
exit $failed
