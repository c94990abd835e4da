// SPDX-License-Identifier: Apache-2.0
#include "documents/policies/policy_set.h"

#include <algorithm>
#include <span>

#include "documents/policies/entries.h"
#include "documents/policies/numbers.h"
#include "format/bytes.h"
#include "format/policy/fields.h"

namespace documents {
namespace {

constexpr auto isSameEntry = [](const auto& a, const auto& b) { return isSame(a, b); };

// The units of records are of a type of their own on each system, those of policies are char16_t everywhere.

template <std::size_t N>
std::u16string unitsOf(const VqsChar16 (&field)[N]) {
  std::u16string units(vqs::unitsBeforeZero(std::span<const VqsChar16>{field}), u'\0');
  std::ranges::transform(std::span{field}.first(units.size()), units.begin(),
                         [](VqsChar16 unit) { return static_cast<char16_t>(unit); });
  return units;
}

/// Fills the front of a field of zeros, and leaves the last of them.
template <std::size_t N>
void putUnits(VqsChar16 (&field)[N], const std::u16string& units) {
  std::ranges::transform(std::span{units}.first(std::min(units.size(), N - 1)), field,
                         [](char16_t unit) { return static_cast<VqsChar16>(unit); });
}

std::string bytesOf(const char (&field)[VQS_POLICY_DESCRIPTION_SIZE]) {
  return {field, vqs::unitsBeforeZero(std::span<const char>{field})};
}

/// What a packed policy and a caller's record have alike, by the same names. Texts differ.
template <class Record>
Policy fromFields(const Record& record) {
  Policy policy;
  policy.id = record.id;
  policy.name = unitsOf(record.name);
  policy.description = bytesOf(record.description);
  const std::span conditions{record.conditions};
  const std::span actions{record.actions};
  const std::span texts{record.texts};
  for (const auto& condition : conditions.first(std::min<std::size_t>(record.conditionCount, conditions.size())))
    policy.conditions.push_back(condition);
  for (const auto& action : actions.first(std::min<std::size_t>(record.actionCount, actions.size())))
    vqs::copyAction(action, policy.actions.emplace_back());
  for (const auto& text : texts.first(std::min<std::size_t>(record.textCount, texts.size())))
    policy.texts.push_back({.text = unitsOf(text.text), .flag = text.flag});
  policy.flag0 = record.flag0;
  policy.flag1 = record.flag1;
  policy.flag2 = record.flag2;
  policy.param0 = record.param0;
  policy.param1 = record.param1;
  policy.param2 = record.param2;
  return policy;
}

template <class Record>
Record toFields(const Policy& policy) {
  Record record{};
  record.id = policy.id;
  putUnits(record.name, policy.name);
  const auto description = policy.description.substr(0, VQS_POLICY_DESCRIPTION_SIZE - 1);
  vqs::copyBytes(record.description, description.data(), description.size());
  record.conditionCount = static_cast<std::uint32_t>(std::min(policy.conditions.size(), std::size(record.conditions)));
  record.actionCount = static_cast<std::uint32_t>(std::min(policy.actions.size(), std::size(record.actions)));
  record.textCount = static_cast<std::uint32_t>(std::min(policy.texts.size(), std::size(record.texts)));
  std::ranges::copy_n(policy.conditions.begin(), record.conditionCount, record.conditions);
  for (std::size_t i = 0; i < record.actionCount; ++i) vqs::copyAction(policy.actions[i], record.actions[i]);
  for (std::size_t i = 0; i < record.textCount; ++i) {
    putUnits(record.texts[i].text, policy.texts[i].text);
    record.texts[i].flag = policy.texts[i].flag;
  }
  record.flag0 = policy.flag0;
  record.flag1 = policy.flag1;
  record.flag2 = policy.flag2;
  record.param0 = policy.param0;
  record.param1 = policy.param1;
  record.param2 = policy.param2;
  return record;
}

}  // namespace

bool operator==(const Policy& a, const Policy& b) {
  return a.id == b.id && numbersOf(a) == numbersOf(b) && a.name == b.name && a.description == b.description &&
         a.texts == b.texts && std::ranges::equal(a.conditions, b.conditions, isSameEntry) &&
         std::ranges::equal(a.actions, b.actions, isSameEntry);
}

Policy fromPacked(const vqs::PackedPolicy& packed) { return fromFields(packed); }

vqs::PackedPolicy toPacked(const Policy& policy) {
  auto packed = toFields<vqs::PackedPolicy>(policy);
  for (auto& text : std::span{packed.texts}.first(packed.textCount))
    text.length = static_cast<std::uint16_t>(vqs::unitsBeforeZero(std::span<const VqsChar16>{text.text}) + 1);
  return packed;
}

Policy fromRecord(const VqsPolicyV2& record) { return fromFields(record); }

VqsPolicyV2 toRecord(const Policy& policy) { return toFields<VqsPolicyV2>(policy); }

}  // namespace documents
