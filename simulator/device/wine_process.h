// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/device/kernel.h"

/// Wine lets the process that is meant do the work on its memory, and waits for ever when it ends meanwhile. These wait
/// on a thread that can be left behind.
namespace device::wine {

/// Stand in for ZwMapViewOfSection and ZwUnmapViewOfSection on another process; its handle allows to wait for it.
NTSTATUS mapIntoProcess(HANDLE section, HANDLE process, void** address);
void unmapFromProcess(HANDLE process, void* address);

/// Stands in for MmCopyVirtualMemory.
bool readMemory(HANDLE process, const void* from, void* to, SIZE_T length);

}  // namespace device::wine
