// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdio>
#include <cstdlib>

namespace bench {

/// What is measured must have been done: a run that lacks something ends.
inline void require(bool isThere, const char* what) {
  if (isThere) return;
  std::fprintf(stderr, "bench: missing: %s\n", what);
  std::exit(1);
}

}  // namespace bench
