// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/model/signals.h"
#include "simulator/model/surroundings.h"

namespace simulator {

/// What a log area can be made to show, for the trial of clients.
enum class LogFault : std::uint32_t {
  kNone = 0,
  /// the first key id is the lowest that does not exist
  kUnknownKey = 1,
  /// the first key id has its highest bit set
  kNegativeKey = 2,
  /// records up to the last byte, of which the last is cut
  kNoEnd = 3,
  /// one key over and over, up to the last byte
  kRepeatedKey = 4,
  /// the end marker comes first
  kEmpty = 5,
  /// key/value logs are of a data version that nobody knows
  kVersion = 6
};

/// Writes a whole log area.
void writeLogArea(std::span<std::byte> area, LogKind kind, const Sources& sources, LogFault fault);

inline constexpr std::uint32_t kPlainLogVersion = 3;
inline constexpr std::uint32_t kExLogVersion = 4;

}  // namespace simulator
