// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tool/driver/driver_session.h"

namespace tool {

/// An input of the driver's whose value can be set by hand.
struct OverrideKey {
  std::uint32_t key;
  /// as the telemetry keys have it
  std::uint32_t type;
  /// what can be set, within what the type can hold
  std::int64_t lowest;
  std::int64_t highest;
  std::string name;
  /// the value in force
  std::int64_t value;
  bool overridden;
};

/// Every such input, in the driver's order.
std::vector<OverrideKey> readOverrideKeys(const Session& session);

/// The input of that id, or of that name whatever its case. Throws a UsageError that suggests the nearest name.
OverrideKey readOverrideKeyNamed(const Session& session, const std::string& idOrName);

/// A value that an input can take. Throws a UsageError that names the range.
std::int64_t parseOverrideValue(const OverrideKey& key, const std::string& text);

/// Overrides an input with a value, or ends the override.
void setOverride(const Session& session, const OverrideKey& key, std::int64_t value);
void liftOverride(const Session& session, const OverrideKey& key);

}  // namespace tool
