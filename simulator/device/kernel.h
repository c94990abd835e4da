// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <ntifs.h>

/// Exported by every 64-bit Windows, declared by no header.
extern "C" {
NTKERNELAPI NTSTATUS NTAPI MmCopyVirtualMemory(PEPROCESS source, PVOID from, PEPROCESS target, PVOID to, SIZE_T length,
                                               KPROCESSOR_MODE mode, PSIZE_T copied);
NTKERNELAPI PVOID NTAPI RtlImageDirectoryEntryToData(PVOID image, BOOLEAN isMapped, USHORT entry, PULONG size);
NTKERNELAPI PVOID NTAPI RtlPcToFileHeader(PVOID address, PVOID* image);
}

namespace device {

/// The toolchain's headers promise a pointer to the kernel's variable, and its linker gives the variable itself.
inline POBJECT_TYPE eventType() { return reinterpret_cast<POBJECT_TYPE>(ExEventObjectType); }

/// Pool memory, zeroed; nullptr when there is none. Freed with release. What threads wait for must not be paged.
inline void* allocate(POOL_TYPE pool, SIZE_T size) {
  constexpr ULONG kTag = 0x66746F51;
  void* memory = ExAllocatePoolWithTag(pool, size, kTag);
  if (memory != nullptr) RtlZeroMemory(memory, size);
  return memory;
}

inline void release(void* memory) { ExFreePoolWithTag(memory, 0); }

}  // namespace device
