// SPDX-License-Identifier: Apache-2.0
#include "tool/driver/override_keys.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <limits>
#include <optional>
#include <span>

#include <vqs/platform.h>
#include <vqs/telemetry.h>
#include "format/telemetry/keys.h"
#include "tool/driver/named_keys.h"
#include "tool/terminal/errors.h"
#include "tool/terminal/numbers.h"
#include "tool/terminal/text.h"

namespace tool {
namespace {

constexpr std::size_t kMostOverrideKeys = 4096;

// Fields of a key's description, and of its value.
constexpr std::size_t kTypeField = 4;
constexpr std::size_t kLowestField = 8;
constexpr std::size_t kHighestField = 12;
constexpr std::size_t kNameField = 16;
constexpr std::size_t kNameLength = 32;
constexpr std::size_t kValueField = 0;
constexpr std::size_t kOverriddenField = 4;

struct OverrideRange {
  std::int64_t lowest;
  std::int64_t highest;
};

template <class Number>
constexpr OverrideRange kRangeOf = {.lowest = std::numeric_limits<Number>::min(),
                                    .highest = std::numeric_limits<Number>::max()};

OverrideRange rangeOfType(std::uint32_t type) {
  switch (type) {
    case VQS_LOG_ELEMENT_INT32:
      return kRangeOf<std::int32_t>;
    case VQS_LOG_ELEMENT_BOOL8:
      return kRangeOf<std::uint8_t>;
    case VQS_LOG_ELEMENT_UINT16:
      return kRangeOf<std::uint16_t>;
    default:
      return kRangeOf<std::uint32_t>;
  }
}

/// A word of the driver's, as a key of that type means it.
std::int64_t meaningOf(std::uint32_t word, std::uint32_t type) {
  return type == VQS_LOG_ELEMENT_INT32 ? std::int64_t{static_cast<std::int32_t>(word)} : std::int64_t{word};
}

std::vector<std::uint32_t> readOverrideKeyIds(const Session& session) {
  const std::string what = "the keys that can be overridden cannot be read";
  std::uint32_t size = 0;
  require(vqsGetInputOverrideKeyList(session.get(), nullptr, &size, 1), what);
  // The driver decides anew how much it writes: the second call is not bounded by the size from the first.
  std::vector<std::uint32_t> ids(kMostOverrideKeys);
  if (size > ids.size() * sizeof(std::uint32_t))
    throw Failure{fmt::format("{}: the driver's list has {} bytes", what, size)};
  require(vqsGetInputOverrideKeyList(session.get(), ids.data(), nullptr, 0), what);
  ids.resize(size / sizeof(std::uint32_t));
  return ids;
}

OverrideKey toOverrideKey(std::uint32_t id, const VqsOverrideMetadata& metadata, const VqsOverrideValue& value) {
  const auto type = numberAt<std::uint32_t>(metadata.data, kTypeField);
  const auto wordAt = [&](std::size_t field) { return meaningOf(numberAt<std::uint32_t>(metadata.data, field), type); };
  std::array<char, kNameLength> name{};
  std::ranges::copy(std::span{metadata.data}.subspan(kNameField, kNameLength), name.begin());
  return {.key = id,
          .type = type,
          .lowest = std::max(wordAt(kLowestField), rangeOfType(type).lowest),
          .highest = std::min(wordAt(kHighestField), rangeOfType(type).highest),
          .name = fromLatin1(name),
          .value = meaningOf(numberAt<std::uint32_t>(value.data, kValueField), type),
          .overridden = numberAt<std::uint32_t>(value.data, kOverriddenField) != 0};
}

OverrideKey readOverrideKey(const Session& session, std::uint32_t id) {
  const auto what = fmt::format("key {}, which can be overridden, cannot be read", id);
  VqsOverrideMetadata metadata{};
  require(vqsGetInputOverrideKeyMetadata(session.get(), id, &metadata), what);
  VqsOverrideValue value{};
  require(vqsGetInputOverrideKeyValue(session.get(), id, &value), what);
  return toOverrideKey(id, metadata, value);
}

/// Inputs have the ids and names of telemetry keys, as far as is known.
std::optional<std::uint32_t> likelyId(const std::string& idOrName) {
  const auto found = std::ranges::find_if(
      vqs::kKVKeys, [&](const auto& key) { return isKey({.id = key.id, .name = key.name}, idOrName); });
  return found != vqs::kKVKeys.end() ? std::optional{found->id} : std::nullopt;
}

/// The input that is probably meant, without asking for all; nothing when it is another one, or none.
std::optional<OverrideKey> readLikelyKey(const Session& session, const std::string& idOrName) {
  const auto id = likelyId(idOrName);
  VqsOverrideMetadata metadata{};
  VqsOverrideValue value{};
  if (!id || vqsGetInputOverrideKeyMetadata(session.get(), *id, &metadata) != VQS_SUCCESS ||
      vqsGetInputOverrideKeyValue(session.get(), *id, &value) != VQS_SUCCESS)
    return std::nullopt;
  auto key = toOverrideKey(*id, metadata, value);
  return isKey({.id = key.key, .name = key.name}, idOrName) ? std::optional{std::move(key)} : std::nullopt;
}

/// Decimal, or the 32 bits in hexadecimal.
std::optional<std::int64_t> parseValue(const std::string& text, std::uint32_t type) {
  if (!text.starts_with("0x") && !text.starts_with("0X")) return parseNumber<std::int64_t>(text);
  const auto word = parseNumber<std::uint32_t>(std::string_view{text}.substr(2), 16);
  return word ? std::optional{meaningOf(*word, type)} : std::nullopt;
}

}  // namespace

std::vector<OverrideKey> readOverrideKeys(const Session& session) {
  std::vector<OverrideKey> keys;
  for (const auto id : readOverrideKeyIds(session)) keys.push_back(readOverrideKey(session, id));
  return keys;
}

OverrideKey readOverrideKeyNamed(const Session& session, const std::string& idOrName) {
  if (auto key = readLikelyKey(session, idOrName)) return std::move(*key);
  const auto keys = readOverrideKeys(session);
  std::vector<NamedKey> names;
  names.reserve(keys.size());
  for (const auto& key : keys) names.push_back({.id = key.key, .name = key.name});
  return keys[findKey(names, idOrName, "a key that can be overridden")];
}

std::int64_t parseOverrideValue(const OverrideKey& key, const std::string& text) {
  const auto value = parseValue(text, key.type);
  if (value && *value >= key.lowest && *value <= key.highest) return *value;
  throw UsageError{
      fmt::format("{} is not a value for {}: a number of {} to {} is expected, decimal or 0x and "
                  "hexadecimal",
                  inQuotes(text), printable(key.name), key.lowest, key.highest)};
}

void setOverride(const Session& session, const OverrideKey& key, std::int64_t value) {
  require(vqsOverrideInput(session.get(), key.key, 1, static_cast<std::uint32_t>(value)),
          fmt::format("{} was not overridden", printable(key.name)));
}

void liftOverride(const Session& session, const OverrideKey& key) {
  require(vqsOverrideInput(session.get(), key.key, 0, 0),
          fmt::format("the override of {} was not lifted", printable(key.name)));
}

}  // namespace tool
