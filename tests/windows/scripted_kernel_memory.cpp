// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "tests/windows/scripted_kernel_state.h"

using test::running;

extern "C" {

// Memory.

PVOID NTAPI ExAllocatePoolWithTag(POOL_TYPE pool, SIZE_T size, ULONG tag) {
  if (running->allocationsLeft-- <= 0) return nullptr;
  void* const memory = std::malloc(size);
  std::memset(memory, 0xA5, size);
  running->allocated[memory] = {tag, pool == PagedPool, pool != PagedPool && pool != NonPagedPoolNx};
  return memory;
}

VOID NTAPI ExFreePoolWithTag(PVOID memory, ULONG tag) {
  const auto found = running->allocated.find(memory);
  ASSERT_NE(found, running->allocated.end()) << "not allocated, or freed twice";
  EXPECT_EQ(found->second.tag, tag);
  running->allocated.erase(found);
  std::free(memory);
}

static PVOID NTAPI allocatePool2(ULONG64 flags, SIZE_T size, ULONG tag) {
  EXPECT_TRUE(flags == 0x40 || flags == 0x100) << "neither resident and not executable nor paged";
  running->state->record("ExAllocatePool2");
  void* const memory = ExAllocatePoolWithTag(flags == 0x100 ? PagedPool : NonPagedPoolNx, size, tag);
  if (memory != nullptr) std::memset(memory, 0, size);
  return memory;
}

static NTSTATUS NTAPI copyMemory(PVOID to, const void* from, SIZE_T size, ULONG flags, SIZE_T* copied) {
  EXPECT_EQ(flags, 2U) << "a virtual address";
  EXPECT_FALSE(running->allocated.empty());
  running->state->record("MmCopyMemory " + std::to_string(size));
  if (running->duringCopy) running->duringCopy();
  const auto address = reinterpret_cast<std::uint64_t>(from);
  const auto behind = running->userMemory.upper_bound(address);
  *copied = 0;
  if (behind == running->userMemory.begin()) return STATUS_ACCESS_VIOLATION;
  const auto& [start, bytes] = *std::prev(behind);
  if (address - start >= bytes.size()) return STATUS_ACCESS_VIOLATION;
  *copied = std::min<SIZE_T>(size, bytes.size() - (address - start));
  std::memcpy(to, bytes.data() + (address - start), *copied);
  return *copied == size ? STATUS_SUCCESS : STATUS_PARTIAL_COPY;
}

PVOID NTAPI MmGetSystemRoutineAddress(PUNICODE_STRING name) {
  const std::wstring wanted{name->Buffer, name->Length / sizeof(wchar_t)};
  if (!running->symbols.contains(wanted)) return nullptr;
  if (wanted == L"ExAllocatePool2") return reinterpret_cast<PVOID>(&allocatePool2);
  if (wanted == L"MmCopyMemory") return reinterpret_cast<PVOID>(&copyMemory);
  return nullptr;
}

NTSTATUS NTAPI ZwOpenProcess(PHANDLE handle, ACCESS_MASK, POBJECT_ATTRIBUTES, PCLIENT_ID) {
  ++running->handles;
  *handle = reinterpret_cast<HANDLE>(test::kProcessHandle);
  return STATUS_SUCCESS;
}

NTSTATUS NTAPI ZwCreateSection(PHANDLE handle, ACCESS_MASK, POBJECT_ATTRIBUTES, PLARGE_INTEGER, ULONG protection, ULONG,
                               HANDLE) {
  EXPECT_EQ(protection, ULONG{PAGE_READWRITE});
  ++running->handles;
  *handle = reinterpret_cast<HANDLE>(test::kSectionHandle);
  return STATUS_SUCCESS;
}

NTSTATUS NTAPI ZwMapViewOfSection(HANDLE, HANDLE process, PVOID* address, ULONG_PTR, SIZE_T, PLARGE_INTEGER, PSIZE_T,
                                  SECTION_INHERIT, ULONG, ULONG protection) {
  EXPECT_EQ(process, reinterpret_cast<HANDLE>(test::kProcessHandle));
  EXPECT_EQ(protection, ULONG{PAGE_READONLY}) << "clients must not write what others read";
  ++running->mappedViews;
  *address = reinterpret_cast<PVOID>(0x7FF000000000 + running->mappedViews * 0x10000LL);
  return STATUS_SUCCESS;
}

NTSTATUS NTAPI ZwUnmapViewOfSection(HANDLE, PVOID) {
  --running->mappedViews;
  return STATUS_SUCCESS;
}

NTSTATUS NTAPI MmMapViewInSystemSpace(PVOID, PVOID* base, PSIZE_T size) {
  ++running->mappedViews;
  *base = std::calloc(1, *size);
  return STATUS_SUCCESS;
}

NTSTATUS NTAPI MmUnmapViewInSystemSpace(PVOID base) {
  --running->mappedViews;
  std::free(base);
  return STATUS_SUCCESS;
}

VOID NTAPI KeBugCheckEx(ULONG code, ULONG_PTR first, ULONG_PTR second, ULONG_PTR third, ULONG_PTR fourth) {
  std::fprintf(stderr, "bug check %lx %llx %s %s %llx\n", code, first, second != 0 ? "cookie" : "0",
               third == ~second ? "complement" : "another", fourth);
  std::fflush(stderr);
  std::_Exit(static_cast<int>(code));
}

}  // extern "C"
