// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/device/kernel.h"

/// The system's memory. Each purpose has a tag, by which the system's tools count what is allocated.
namespace device::pool {

/// A tag reads from its lowest byte on: these are VqsS, VqsD, VqsL, VqsC, VqsW.
enum class Purpose : ULONG {
  kSimulation = 0x53737156,
  kDriver = 0x44737156,
  kLogMapping = 0x4C737156,
  kCallerCopy = 0x43737156,
  kWork = 0x57737156
};

/// Zeroed memory that is always there, for what threads wait for; nullptr when there is none.
void* allocateResident(Purpose purpose, SIZE_T size);
/// Zeroed memory that may be written to the paging file; nullptr when there is none.
void* allocatePaged(Purpose purpose, SIZE_T size);
/// Takes back what was allocated for the same purpose.
void release(Purpose purpose, void* memory);

}  // namespace device::pool
