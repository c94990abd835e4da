// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>
#include <string>

#include "format/telemetry/keys.h"

namespace tool {

/// The two generations of key/value logs.
enum class LogGeneration { kPlain, kEx };

/// What is known of a generation's keys.
class KeyTable {
 public:
  explicit KeyTable(LogGeneration generation);

  [[nodiscard]] std::span<const vqs::KeyRow> keys() const { return keys_; }
  /// The key of an id that the library itself has handed out.
  [[nodiscard]] const vqs::KeyRow& withId(std::uint32_t id) const;
  /// The key of that id, or of that name whatever its case. Throws a UsageError that suggests the nearest name.
  [[nodiscard]] const vqs::KeyRow& named(const std::string& idOrName) const;

 private:
  std::span<const vqs::KeyRow> keys_;
};

/// "uint32".
std::string describeElementType(std::uint32_t type);

}  // namespace tool
