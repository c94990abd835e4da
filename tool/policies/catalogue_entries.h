// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "format/catalogue/row.h"
#include "tool/driver/driver_session.h"

namespace tool {

/// The driver's word on an entry.
struct Support {
  std::uint32_t enabled;
  std::uint32_t driverFlag;
};

/// A condition or action type.
struct CatalogueEntry {
  std::uint32_t id;
  std::string name;
  std::uint32_t type;
  std::int64_t lowest;
  std::int64_t highest;
  std::string units;
  std::vector<std::pair<std::int32_t, std::string>> options;
  /// nothing when no driver was asked
  std::optional<Support> support;
  /// where it is from, with the fields that only one of the kinds has
  std::variant<const vqs::ConditionRow*, const vqs::ActionRow*> row;
};

/// Every condition or action type, by id.
struct Catalogue {
  /// what one of them is called: "condition"
  const char* noun;
  std::vector<CatalogueEntry> entries;
};

/// The catalogues, with what the driver of a session supports when there is one.
Catalogue readConditions(const Session& session);
Catalogue readActions(const Session& session);

/// The entry of that id, or those with that part in their names, whatever its case; all when it is empty. Throws a
/// Failure that suggests the nearest name when there is none.
std::vector<CatalogueEntry> select(const Catalogue& catalogue, const std::string& filter);

/// One line an entry, in columns, under a heading.
std::string renderCatalogue(const std::vector<CatalogueEntry>& entries);

/// All of an entry's fields.
nlohmann::ordered_json toJson(const CatalogueEntry& entry);

}  // namespace tool
