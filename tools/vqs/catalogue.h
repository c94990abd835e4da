// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>
#include <vector>

#include "session.h"

namespace tool {

/// A condition or action type: what both have in common, and all of its fields as JSON.
struct CatalogueEntry {
  std::uint32_t id;
  std::string name;
  std::uint32_t type;
  std::int64_t lowest;
  std::int64_t highest;
  std::string units;
  std::vector<std::pair<std::int32_t, std::string>> options;
  bool enabled;
  bool driverFlag;
  nlohmann::ordered_json json;
};

/// Every condition or action type, by id.
struct Catalogue {
  /// what one of them is called: "condition"
  const char* noun;
  std::vector<CatalogueEntry> entries;
};

/// The library's catalogues, marked with what the driver supports.
Catalogue readConditions(const Session& session);
Catalogue readActions(const Session& session);

/// The entry of that id, or those with that part in their names, whatever its case; all when it is empty. Throws a
/// Failure that suggests the nearest name when there is none.
std::vector<CatalogueEntry> select(const Catalogue& catalogue, const std::string& filter);

/// One line an entry, in columns, under a heading.
std::string renderCatalogue(const std::vector<CatalogueEntry>& entries);

}  // namespace tool
