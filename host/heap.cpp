// SPDX-License-Identifier: Apache-2.0
#include "host/call_hook.h"
#include "host/host.h"

namespace {
char processHeap;
}

HANDLE GetProcessHeap() { return &processHeap; }

void* HeapAlloc(HANDLE heap, DWORD flags, SIZE_T size) {
  if (!host::permit("HeapAlloc", flags, size) || heap != &processHeap) return nullptr;
  const SIZE_T atLeastOne = size == 0 ? 1 : size;
  return (flags & HEAP_ZERO_MEMORY) != 0 ? std::calloc(1, atLeastOne) : std::malloc(atLeastOne);
}

BOOL HeapFree(HANDLE heap, DWORD flags, void* memory) {
  static_cast<void>(host::permit("HeapFree", flags));
  if (heap != &processHeap) return FALSE;
  std::free(memory);
  return TRUE;
}
