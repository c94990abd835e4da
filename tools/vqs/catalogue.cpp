// SPDX-License-Identifier: Apache-2.0
#include "catalogue.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <span>
#include <sstream>

#include "errors.h"
#include "nearest.h"
#include "numbers.h"
#include "text.h"
#include "text_table.h"
#include "vqs/catalogue.h"

namespace tool {
namespace {

constexpr std::uint32_t kNoUpperBound = 0xFFFFFFFF;

/// A limit as it is meant: the record holds signed ones in the same field.
std::int64_t limitOf(std::uint32_t type, std::uint32_t word) {
  return type == VQS_VALUE_SIGNED ? std::int64_t{static_cast<std::int32_t>(word)} : std::int64_t{word};
}

template <class Info>
std::span<const QtfOptionInfo> optionsOf(const Info& info) {
  return {info.Options, info.Options != nullptr ? info.OptionCount : 0};
}

nlohmann::ordered_json optionsJson(std::span<const QtfOptionInfo> options) {
  auto array = nlohmann::ordered_json::array();
  for (const auto& option : options) array.push_back({{"Text", fromLatin1(option.Text)}, {"Value", option.Value}});
  return array;
}

template <class Info>
CatalogueEntry commonEntry(const Info& info) {
  CatalogueEntry entry{.id = info.Id,
                       .name = fromLatin1(info.Name),
                       .type = info.Type,
                       .lowest = limitOf(info.Type, info.MinValue),
                       .highest = limitOf(info.Type, info.MaxValue),
                       .units = fromLatin1(info.Units),
                       .options = {},
                       .enabled = info.Enabled != 0,
                       .driverFlag = info.DriverFlag != 0,
                       .json = {}};
  for (const auto& option : optionsOf(info)) entry.options.emplace_back(option.Value, fromLatin1(option.Text));
  return entry;
}

CatalogueEntry toEntry(const QtfConditionInfo& info) {
  auto entry = commonEntry(info);
  entry.json = {{"Id", info.Id},
                {"Enabled", info.Enabled},
                {"Type", info.Type},
                {"OperatorMask", info.OperatorMask},
                {"MinValue", entry.lowest},
                {"MaxValue", entry.highest},
                {"Units", entry.units},
                {"Name", entry.name},
                {"Options", optionsJson(optionsOf(info))},
                {"Attr1", info.Attr1},
                {"DriverFlag", info.DriverFlag},
                {"Attr2", info.Attr2},
                {"Attr3", info.Attr3},
                {"Attr4", info.Attr4}};
  return entry;
}

CatalogueEntry toEntry(const QtfActionInfo& info) {
  auto entry = commonEntry(info);
  entry.json = {{"Id", info.Id},
                {"Enabled", info.Enabled},
                {"Type", info.Type},
                {"MinValue", entry.lowest},
                {"MaxValue", entry.highest},
                {"Units", entry.units},
                {"Name", entry.name},
                {"Options", optionsJson(optionsOf(info))},
                {"DriverFlag", info.DriverFlag},
                {"Attr1", info.Attr1}};
  return entry;
}

template <class Info>
std::vector<CatalogueEntry> toEntries(const Info* table, std::uint32_t count) {
  std::vector<CatalogueEntry> entries;
  for (const auto& info : std::span{table, count}) entries.push_back(toEntry(info));
  return entries;
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

}  // namespace

Catalogue readConditions(const Session& session) {
  const QtfConditionInfo* table = nullptr;
  std::uint32_t count = 0;
  require(vqsPbGetConditions(session.get(), &table, &count), "the conditions cannot be read");
  return {.noun = "condition", .entries = toEntries(table, count)};
}

Catalogue readActions(const Session& session) {
  const QtfActionInfo* table = nullptr;
  std::uint32_t count = 0;
  require(vqsPbGetActions(session.get(), &table, &count), "the actions cannot be read");
  return {.noun = "action", .entries = toEntries(table, count)};
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
  TextTable table{{{"ID", Align::right},
                   {"NAME", Align::left},
                   {"KIND", Align::left},
                   {"RANGE", Align::left},
                   {"UNITS", Align::left},
                   {"ENABLED", Align::left},
                   {"DRIVER", Align::left},
                   {"OPTIONS", Align::left}}};
  for (const auto& entry : entries)
    table.add({std::to_string(entry.id), printable(entry.name), describeKind(entry.type), describeLimits(entry),
               printable(entry.units), yesOrNo(entry.enabled), yesOrNo(entry.driverFlag), describeOptions(entry)});
  return table.render();
}

}  // namespace tool
