// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "simulator/device/kernel.h"

/// The process whose request is being carried out.
namespace device::caller {

/// A kernel handle of it, which keeps its id from being given away; nullptr when it cannot be opened.
HANDLE open(ACCESS_MASK access);

/// Copies from its memory; false when any byte of it is not its own or cannot be read.
bool read(std::uint64_t address, std::span<std::byte> destination);

/// The event behind one of its handles, referenced; nullptr when it has no such event.
PKEVENT referenceEvent(std::uint64_t handle);

}  // namespace device::caller
