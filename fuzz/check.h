// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdio>
#include <cstdlib>

/// What must hold for every input; otherwise the program ends, and the fuzzer keeps the input. The place comes from the
/// compiler, since clang lacks std::source_location.
inline void check(bool holds, const char* file = __builtin_FILE(), int line = __builtin_LINE()) {
  if (holds) return;
  std::fprintf(stderr, "%s:%d: check failed\n", file, line);
  std::abort();
}
