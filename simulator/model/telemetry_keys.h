// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/model/element_type.h"
#include "simulator/model/signals.h"

namespace simulator {

/// A telemetry key: what its value is made of, and where it comes from.
struct TelemetryKey {
  std::uint32_t id;
  ElementType type;
  std::uint32_t count;
  /// where the value comes from; if null, every element is `constant`, or the value is the first of `texts`
  Signal signal = nullptr;
  /// which element of the signal is the value's first
  std::uint32_t first = 0;
  std::int32_t constant = 0;
  /// for values that are text: the texts for the signal's 0, 1, 2 ...
  std::span<const char* const> texts{};
  /// for values that are text: writes the text, if not null
  TextSignal write = nullptr;
  /// bytes from the value to the next record, when more than the value needs; otherwise 0
  std::uint32_t step = 0;
};

inline constexpr std::size_t kKeyValueKeys = 228;
inline constexpr std::size_t kExKeyValueKeys = 50;

std::span<const TelemetryKey, kKeyValueKeys> keyValueKeys();
std::span<const TelemetryKey, kExKeyValueKeys> exKeyValueKeys();

/// Bytes of a key's value in the log.
constexpr std::size_t valueSize(const TelemetryKey& key) {
  const bool isWord = key.type == ElementType::int32 || key.type == ElementType::uint32;
  const std::size_t width = isWord ? 4 : key.type == ElementType::uint16 ? 2 : 1;
  return key.step != 0 ? key.step : (key.count * width + 3) / 4 * 4;
}

}  // namespace simulator
