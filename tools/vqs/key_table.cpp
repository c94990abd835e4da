// SPDX-License-Identifier: Apache-2.0
#include "key_table.h"

#include <fmt/format.h>

#include <algorithm>

#include "errors.h"
#include "named_keys.h"

namespace tool {

KeyTable::KeyTable(LogGeneration generation) {
  const auto metadata = generation == LogGeneration::ex ? vqsExGetQTFLogExKVMetadata_V2 : vqsGetQTFLogKVMetadata_V2;
  std::uint32_t count = 0;
  require(metadata(nullptr, &count), "the keys cannot be counted");
  keys_.resize(count);
  // What count says after copying is another generation's number for one of the two.
  require(metadata(keys_.data(), &count), "the keys cannot be read");
}

const QtfLogKeyInfo& KeyTable::withId(std::uint32_t id) const {
  const auto found = std::ranges::find(keys_, id, &QtfLogKeyInfo::KeyId);
  if (found == keys_.end()) throw Failure{fmt::format("the library knows nothing of its key {}", id)};
  return *found;
}

const QtfLogKeyInfo& KeyTable::named(const std::string& idOrName) const {
  std::vector<NamedKey> names;
  names.reserve(keys_.size());
  for (const auto& key : keys_) names.push_back({.id = key.KeyId, .name = key.Name});
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
