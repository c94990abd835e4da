#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Test sources begin with GoogleTest's header, behind that of what they test: it alone is precompiled, so a source that
# has it first compiles the same without it.
# check_test_includes.sh SOURCES
set -euo pipefail
cd "$1"
count=0
failed=0
while read -r test; do
  count=$((count + 1))
  first=$(grep -m 2 '^#include' "$test" | sed '1{/^#include "tests\//q};1{/gtest\.h/q}')
  grep -qF '#include <gtest/gtest.h>' <<<"$first" && continue
  failed=1
  echo "$test: does not begin with <gtest/gtest.h>"
done < <(find tests -name '*_test.cpp')
[ $failed = 0 ] || echo "To mend: include <gtest/gtest.h> before everything but the header of what is tested."
[ $count != 0 ] || { echo "no tests were found"; exit 1; }
echo "$count tests"
exit $failed
