// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace simulator {

/// What a telemetry value is made of.
enum class ElementType : std::uint32_t { bytes = 0, int32 = 3, bool8 = 5, uint16 = 6, uint32 = 7 };

}  // namespace simulator
