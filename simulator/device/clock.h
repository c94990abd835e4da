// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace device::clock {

/// The system's time, in units of 100 ns.
std::uint64_t now();

}  // namespace device::clock
