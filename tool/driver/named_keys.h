// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace tool {

/// A key of the driver's, by its id and by its name.
struct NamedKey {
  std::uint32_t id;
  std::string name;
};

/// True when a key is meant: its id, or its name whatever its case.
bool isKey(const NamedKey& key, const std::string& idOrName);

/// Where the key of that id, or of that name whatever its case, stands. Throws a UsageError that suggests the nearest
/// name: "<what was typed> is not <what it should be>".
std::size_t findKey(const std::vector<NamedKey>& keys, const std::string& idOrName, const std::string& expected);

}  // namespace tool
