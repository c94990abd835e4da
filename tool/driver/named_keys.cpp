// SPDX-License-Identifier: Apache-2.0
#include "tool/driver/named_keys.h"

#include <fmt/format.h>

#include <algorithm>

#include "tool/terminal/errors.h"
#include "tool/terminal/nearest.h"
#include "tool/terminal/numbers.h"
#include "tool/terminal/text.h"

namespace tool {

bool isKey(const NamedKey& key, const std::string& idOrName) {
  return isDecimal(idOrName) ? key.id == parseNumber<std::uint32_t>(idOrName) : folded(key.name) == folded(idOrName);
}

std::size_t findKey(const std::vector<NamedKey>& keys, const std::string& idOrName, const std::string& expected) {
  const auto found = std::ranges::find_if(keys, [&](const auto& key) { return isKey(key, idOrName); });
  if (found != keys.end()) return static_cast<std::size_t>(found - keys.begin());
  std::vector<std::string> names;
  names.reserve(keys.size());
  for (const auto& key : keys) names.push_back(key.name);
  throw UsageError{fmt::format("{} is not {}{}", inQuotes(idOrName), expected, didYouMean(idOrName, names))};
}

}  // namespace tool
