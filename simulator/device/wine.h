// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/device/kernel.h"

/// Wine runs drivers in an ordinary process and lacks parts of the kernel. These functions do the same work without
/// them.
namespace device::wine {

bool isPresent();

/// Stands in for MmMapViewInSystemSpace: maps the section into the process that runs the drivers.
NTSTATUS mapIntoSystem(HANDLE section, void** address, SIZE_T* size);
void unmapFromSystem(void* address);

/// Copies from the memory of a process, including pages that the process itself may not read.
bool copyMemory(HANDLE process, const void* from, void* to, SIZE_T length);

/// Stands in for KeSetEvent and KeClearEvent, which open the event anew in Wine and lack the right to do so.
void setEvent(HANDLE event, bool signalled);

/// Stands in for ObReferenceObjectByHandle, which takes no handles of other processes.
NTSTATUS referenceEvent(HANDLE process, HANDLE handle, PKEVENT* event);

}  // namespace device::wine
