// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>

namespace bench {

/// What a stretch of a program took from the runtime's heap. A program that has heap.cpp takes all of its memory, and
/// that of its libraries, through there.
struct HeapUse {
  int allocations;
  /// the most that was there at once, of what was taken since
  std::size_t peakBytes;
};

void beginHeapUse();
HeapUse heapUse();

}  // namespace bench
