// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/device/kernel.h"

/// In Wine, work on another process's memory is carried out by that process, and the caller waits for ever when it ends
/// meanwhile. These functions let a thread of their own wait, and give it up when the process has ended.
namespace device::wine {

/// Stand in for ZwMapViewOfSection and ZwUnmapViewOfSection on another process, whose handle must have the right to
/// wait.
NTSTATUS mapIntoProcess(HANDLE section, HANDLE process, void** address);
void unmapFromProcess(HANDLE process, void* address);

/// Stands in for MmCopyVirtualMemory.
bool readMemory(HANDLE process, const void* from, void* to, SIZE_T length);

}  // namespace device::wine
