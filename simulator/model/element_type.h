// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace simulator {

/// What a telemetry value is made of.
enum class ElementType : std::uint32_t { kBytes = 0, kInt32 = 3, kBool8 = 5, kUint16 = 6, kUint32 = 7 };

}  // namespace simulator
