// SPDX-License-Identifier: Apache-2.0
#include "simulator/device/pool.h"

namespace device::pool {
namespace {

/// Since Windows 10, version 2004, where the function for pools and tags is deprecated.
using AllocatePool2 = void*(NTAPI*)(ULONG64 flags, SIZE_T size, ULONG tag);

constexpr ULONG64 kResident = 0x40;
constexpr ULONG64 kPaged = 0x100;

void* allocateAsBefore(ULONG64 flags, SIZE_T size, ULONG tag) {
  void* const memory = ExAllocatePoolWithTag(flags == kPaged ? PagedPool : NonPagedPoolNx, size, tag);
  if (memory != nullptr) RtlZeroMemory(memory, size);
  return memory;
}

void* allocate(ULONG64 flags, SIZE_T size, ULONG tag) {
  const auto allocatePool2 = kernelFunction<AllocatePool2>(L"ExAllocatePool2");
  return allocatePool2 != nullptr ? allocatePool2(flags, size, tag) : allocateAsBefore(flags, size, tag);
}

}  // namespace

void* allocateResident(Purpose purpose, SIZE_T size) { return allocate(kResident, size, static_cast<ULONG>(purpose)); }

void* allocatePaged(Purpose purpose, SIZE_T size) { return allocate(kPaged, size, static_cast<ULONG>(purpose)); }

void release(Purpose purpose, void* memory) { ExFreePoolWithTag(memory, static_cast<ULONG>(purpose)); }

}  // namespace device::pool
