// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/device/kernel.h"

/// Wine runs drivers in a process of their own and leaves out parts of the kernel. These are the detours.
namespace device::wine {

bool isPresent();

/// Stands in for MmMapViewInSystemSpace: the process of the drivers is the system.
NTSTATUS mapIntoSystem(HANDLE section, void** address, SIZE_T* size);
void unmapFromSystem(void* address);

/// Copies from the memory of a process, also what the process itself may not read.
bool copyMemory(HANDLE process, const void* from, void* to, SIZE_T length);

/// Stands in for KeSetEvent and KeClearEvent, which open the event once more and may not.
void setEvent(HANDLE event, bool signalled);

/// Stands in for ObReferenceObjectByHandle, which takes no handles of other processes.
NTSTATUS referenceEvent(HANDLE process, HANDLE handle, PKEVENT* event);

}  // namespace device::wine
