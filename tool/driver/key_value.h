// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include <vqs/telemetry.h>

namespace tool {

/// A key, and the value that it had when it was read.
class KeyValue {
 public:
  /// Copies the value from where the log holds it.
  KeyValue(const vqs::KeyRow& key, std::uint64_t address);

  [[nodiscard]] const vqs::KeyRow& key() const { return key_; }
  /// The first of its numbers; every key has one.
  [[nodiscard]] std::int64_t number() const { return numbers().front(); }
  /// Text as it is, or else hexadecimal; numbers with commas between them, and those that repeat as "97*0".
  [[nodiscard]] std::string text() const;
  /// A text, a number, or an array of numbers.
  [[nodiscard]] nlohmann::ordered_json json() const;

 private:
  [[nodiscard]] std::vector<std::int64_t> numbers() const;
  [[nodiscard]] std::string bytesAsText() const;

  vqs::KeyRow key_;
  std::vector<std::uint8_t> bytes_;
};

}  // namespace tool
