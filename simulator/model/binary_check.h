// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace simulator {

/// What a policy binary says of itself.
struct BinarySummary {
  std::uint16_t version1;
  std::uint16_t version2;
  std::uint32_t policies;
};

/// Goes through a policy binary of revision 3, 4 or 5 to its last policy. False when it is not a valid one.
bool checkBinary(std::span<const std::byte> file, BinarySummary& summary);

}  // namespace simulator
