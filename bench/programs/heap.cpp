// SPDX-License-Identifier: Apache-2.0
#include "bench/programs/heap.h"

#include <malloc.h>

#include <algorithm>

// The runtime's own functions, under the names that it keeps for those who take their place.
extern "C" {
void* __libc_malloc(std::size_t);
void* __libc_calloc(std::size_t, std::size_t);
void __libc_free(void*);
}

namespace {

bench::HeapUse use{};
std::size_t bytes = 0;

void* counted(void* memory) {
  ++use.allocations;
  bytes += malloc_usable_size(memory);
  use.peakBytes = std::max(use.peakBytes, bytes);
  return memory;
}

}  // namespace

extern "C" {

[[gnu::visibility("default")]] void* malloc(std::size_t size) { return counted(__libc_malloc(size)); }

[[gnu::visibility("default")]] void* calloc(std::size_t count, std::size_t size) {
  return counted(__libc_calloc(count, size));
}

[[gnu::visibility("default")]] void free(void* memory) {
  bytes -= std::min(bytes, malloc_usable_size(memory));
  __libc_free(memory);
}
}

namespace bench {

void beginHeapUse() {
  use = {};
  bytes = 0;
}

HeapUse heapUse() { return use; }

}  // namespace bench
