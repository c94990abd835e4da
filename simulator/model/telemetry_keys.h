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
  /// where it is null, every element is the constant, or the bytes are the first text
  Signal signal = nullptr;
  /// the signal's element that the value begins with
  std::uint32_t first = 0;
  std::int32_t constant = 0;
  /// of values that are bytes: what the signal's 0, 1, 2 ... are called
  std::span<const char* const> texts{};
  /// of values that are bytes: writes them, if it is not null
  TextSignal write = nullptr;
  /// bytes from one record's value to the next record, where that is more than the value needs
  std::uint32_t step = 0;
};

inline constexpr std::size_t kKeyValueKeys = 228;
inline constexpr std::size_t kExKeyValueKeys = 50;

std::span<const TelemetryKey, kKeyValueKeys> keyValueKeys();
std::span<const TelemetryKey, kExKeyValueKeys> exKeyValueKeys();

/// Bytes of a key's value in the log.
constexpr std::size_t valueSize(const TelemetryKey& key) {
  const bool isWord = key.type == ElementType::kInt32 || key.type == ElementType::kUint32;
  const std::size_t width = isWord ? 4 : key.type == ElementType::kUint16 ? 2 : 1;
  return key.step != 0 ? key.step : (key.count * width + 3) / 4 * 4;
}

}  // namespace simulator
