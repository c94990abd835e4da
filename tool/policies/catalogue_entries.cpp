// SPDX-License-Identifier: Apache-2.0
#include "tool/policies/catalogue_entries.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <span>
#include <sstream>

#include <vqs/catalogue.h>
#include "format/catalogue/actions.h"
#include "format/catalogue/conditions.h"
#include "tool/terminal/errors.h"
#include "tool/terminal/nearest.h"
#include "tool/terminal/numbers.h"
#include "tool/terminal/text.h"
#include "tool/terminal/text_table.h"

namespace tool {
namespace {

constexpr std::uint32_t kNoUpperBound = 0xFFFFFFFF;

/// A limit as it is meant: the record holds signed ones in the same field.
std::int64_t limitOf(std::uint32_t type, std::uint32_t word) {
  return type == VQS_VALUE_SIGNED ? std::int64_t{static_cast<std::int32_t>(word)} : std::int64_t{word};
}

nlohmann::ordered_json optionsJson(const std::vector<std::pair<std::int32_t, std::string>>& options) {
  auto array = nlohmann::ordered_json::array();
  for (const auto& [value, text] : options) array.push_back({{"Text", text}, {"Value", value}});
  return array;
}

template <class Row>
CatalogueEntry toEntry(const Row& row) {
  CatalogueEntry entry{.id = row.id,
                       .name = std::string{row.name},
                       .type = row.type,
                       .lowest = limitOf(row.type, row.min),
                       .highest = limitOf(row.type, row.max),
                       .units = std::string{row.units},
                       .options = {},
                       .support = {},
                       .row = &row};
  for (const auto& option : row.options) entry.options.emplace_back(option.Value, fromLatin1(option.Text));
  return entry;
}

template <class Row, std::size_t N>
std::vector<CatalogueEntry> toEntries(const Row (&rows)[N]) {
  std::vector<CatalogueEntry> entries;
  entries.reserve(N);
  for (const auto& row : rows) entries.push_back(toEntry(row));
  return entries;
}

/// Asks the driver, by way of one of the library's catalogues.
template <class Info>
void addSupport(const Session& session, vqsStatus(VQS_CALL* read)(QtfSession*, const Info**, std::uint32_t*),
                Catalogue& catalogue) {
  const Info* table = nullptr;
  std::uint32_t count = 0;
  require(read(session.get(), &table, &count), fmt::format("the {}s cannot be read", catalogue.noun));
  for (std::size_t i = 0; i < std::min<std::size_t>(count, catalogue.entries.size()); ++i)
    catalogue.entries[i].support = {.enabled = table[i].Enabled, .driverFlag = table[i].DriverFlag};
}

std::vector<CatalogueEntry> selectById(const Catalogue& catalogue, const std::string& id) {
  const auto number = parseNumber<std::uint32_t>(id);
  const auto found = std::ranges::find_if(catalogue.entries, [&](const auto& entry) { return entry.id == number; });
  if (found != catalogue.entries.end()) return {*found};
  throw Failure{fmt::format("unknown {0} {1}, the {0}s are 0 to {2}", catalogue.noun, id,
                            static_cast<std::int64_t>(catalogue.entries.size()) - 1)};
}

void appendWords(const std::string& name, std::vector<std::string>& words) {
  std::istringstream stream{name};
  for (std::string word; stream >> word;) words.push_back(word);
}

[[noreturn]] void failToFind(const Catalogue& catalogue, const std::string& name) {
  std::vector<std::string> names;
  names.reserve(catalogue.entries.size());
  for (const auto& entry : catalogue.entries) names.push_back(entry.name);
  // A filter may be a word of a name, too.
  for (const auto& entry : catalogue.entries) appendWords(entry.name, names);
  throw Failure{fmt::format("unknown {} {}{}", catalogue.noun, inQuotes(name), didYouMean(name, names))};
}

std::string describeKind(std::uint32_t type) {
  switch (type) {
    case VQS_VALUE_ENUMERATION:
      return "enumeration";
    case VQS_VALUE_UNSIGNED:
      return "unsigned";
    case VQS_VALUE_SIGNED:
      return "signed";
    case VQS_VALUE_BIT_SET:
      return "bit set";
    default:
      return fmt::format("special {}", type);
  }
}

std::string describeLimits(const CatalogueEntry& entry) {
  if (entry.highest == kNoUpperBound) return fmt::format("from {}", entry.lowest);
  return fmt::format("{} to {}", entry.lowest, entry.highest);
}

std::string describeOptions(const CatalogueEntry& entry) {
  std::vector<std::string> options;
  options.reserve(entry.options.size());
  for (const auto& [value, text] : entry.options) options.push_back(fmt::format("{} {}", value, printable(text)));
  return fmt::format("{}", fmt::join(options, ", "));
}

std::string supportText(const CatalogueEntry& entry, std::uint32_t Support::* flag) {
  return entry.support ? yesOrNo((*entry.support).*flag != 0) : "-";
}

nlohmann::ordered_json supportJson(const CatalogueEntry& entry, std::uint32_t Support::* flag) {
  return entry.support ? nlohmann::ordered_json((*entry.support).*flag) : nlohmann::ordered_json{};
}

nlohmann::ordered_json rowJson(const CatalogueEntry& entry, const vqs::ConditionRow& row) {
  return {{"Id", entry.id},
          {"Enabled", supportJson(entry, &Support::enabled)},
          {"Type", entry.type},
          {"OperatorMask", row.operators},
          {"MinValue", entry.lowest},
          {"MaxValue", entry.highest},
          {"Units", entry.units},
          {"Name", entry.name},
          {"Options", optionsJson(entry.options)},
          {"Attr1", row.attr1},
          {"DriverFlag", supportJson(entry, &Support::driverFlag)},
          {"Attr2", row.attr2},
          {"Attr3", row.attr3},
          {"Attr4", row.attr4}};
}

nlohmann::ordered_json rowJson(const CatalogueEntry& entry, const vqs::ActionRow& row) {
  return {{"Id", entry.id},
          {"Enabled", supportJson(entry, &Support::enabled)},
          {"Type", entry.type},
          {"MinValue", entry.lowest},
          {"MaxValue", entry.highest},
          {"Units", entry.units},
          {"Name", entry.name},
          {"Options", optionsJson(entry.options)},
          {"DriverFlag", supportJson(entry, &Support::driverFlag)},
          {"Attr1", row.attr1}};
}

}  // namespace

Catalogue readConditions(const Session& session) {
  Catalogue catalogue{.noun = "condition", .entries = toEntries(vqs::kConditionRows)};
  if (session) addSupport(session, vqsPbGetConditions, catalogue);
  return catalogue;
}

Catalogue readActions(const Session& session) {
  Catalogue catalogue{.noun = "action", .entries = toEntries(vqs::kActionRows)};
  if (session) addSupport(session, vqsPbGetActions, catalogue);
  return catalogue;
}

std::vector<CatalogueEntry> select(const Catalogue& catalogue, const std::string& filter) {
  if (isDecimal(filter)) return selectById(catalogue, filter);
  const std::string part = folded(filter);
  std::vector<CatalogueEntry> found;
  std::ranges::copy_if(catalogue.entries, std::back_inserter(found),
                       [&](const auto& entry) { return folded(entry.name).find(part) != std::string::npos; });
  if (found.empty()) failToFind(catalogue, filter);
  return found;
}

std::string renderCatalogue(const std::vector<CatalogueEntry>& entries) {
  TextTable table{{{"ID", Align::kRight},
                   {"NAME", Align::kLeft},
                   {"KIND", Align::kLeft},
                   {"RANGE", Align::kLeft},
                   {"UNITS", Align::kLeft},
                   {"ENABLED", Align::kLeft},
                   {"DRIVER", Align::kLeft},
                   {"OPTIONS", Align::kLeft}}};
  for (const auto& entry : entries)
    table.add({std::to_string(entry.id), printable(entry.name), describeKind(entry.type), describeLimits(entry),
               printable(entry.units), supportText(entry, &Support::enabled), supportText(entry, &Support::driverFlag),
               describeOptions(entry)});
  return table.render();
}

nlohmann::ordered_json toJson(const CatalogueEntry& entry) {
  return std::visit([&](const auto* row) { return rowJson(entry, *row); }, entry.row);
}

}  // namespace tool
