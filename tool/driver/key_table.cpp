// SPDX-License-Identifier: Apache-2.0
#include "tool/driver/key_table.h"

#include <fmt/format.h>

#include <algorithm>
#include <vector>

#include "tool/driver/named_keys.h"
#include "tool/terminal/errors.h"

namespace tool {

KeyTable::KeyTable(LogGeneration generation)
    : keys_{generation == LogGeneration::kEx ? std::span<const vqs::KeyRow>{vqs::kExKVKeys} : vqs::kKVKeys} {}

const vqs::KeyRow& KeyTable::withId(std::uint32_t id) const {
  const auto found = std::ranges::find(keys_, id, &vqs::KeyRow::id);
  if (found == keys_.end()) throw Failure{fmt::format("the library knows nothing of its key {}", id)};
  return *found;
}

const vqs::KeyRow& KeyTable::named(const std::string& idOrName) const {
  std::vector<NamedKey> names;
  names.reserve(keys_.size());
  for (const auto& key : keys_) names.push_back({.id = key.id, .name = key.name});
  return keys_[findKey(names, idOrName, "a key of the log")];
}

std::string describeElementType(std::uint32_t type) {
  switch (type) {
    case VQS_LOG_ELEMENT_BYTES:
      return "bytes";
    case VQS_LOG_ELEMENT_INT32:
      return "int32";
    case VQS_LOG_ELEMENT_BOOL8:
      return "bool8";
    case VQS_LOG_ELEMENT_UINT16:
      return "uint16";
    case VQS_LOG_ELEMENT_UINT32:
      return "uint32";
    default:
      return fmt::format("type {}", type);
  }
}

}  // namespace tool
