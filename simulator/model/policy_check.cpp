// SPDX-License-Identifier: Apache-2.0
#include "simulator/model/policy_check.h"

#include "simulator/model/request.h"

namespace simulator {
namespace {

constexpr std::uint32_t kHighestOperator = 4;
constexpr std::uint8_t kHighestTextFlag = 1;

/// The index of the first zero unit, or the number of units when there is none.
std::size_t unitsBeforeZero(std::span<const char16_t> units) {
  return static_cast<std::size_t>(std::ranges::find(units, u'\0') - units.begin());
}

bool isWellFormedEntry(const PolicyCondition& condition) { return condition.op <= kHighestOperator; }

bool isWellFormedEntry(const PolicyText& text) {
  const std::size_t units = unitsBeforeZero(text.text);
  return text.flag <= kHighestTextFlag && units < std::size(text.text) && text.length == units + 1 &&
         isZeroFilled(text.reserved0) && isZeroFilled(text.reserved1);
}

bool isWellFormedEntry(const PolicyAction& action) {
  return isZeroFilled(action.reserved0) && isZeroFilled(action.reserved1);
}

/// Whether the entries in use are well formed and all others are zero.
template <class Entry>
bool areWellFormed(std::span<const Entry> entries, std::uint32_t count) {
  return count <= entries.size() &&
         std::ranges::all_of(entries.first(count), [](const Entry& entry) { return isWellFormedEntry(entry); }) &&
         isZero(std::as_bytes(entries.subspan(count)));
}

}  // namespace

bool isWellFormed(const PackedPolicy& policy) {
  return unitsBeforeZero(policy.name) < std::size(policy.name) && isZeroFilled(policy.reserved0) &&
         isZeroFilled(policy.reserved1) &&
         areWellFormed(std::span<const PolicyCondition>{policy.conditions}, policy.conditionCount) &&
         areWellFormed(std::span<const PolicyText>{policy.texts}, policy.textCount) &&
         areWellFormed(std::span<const PolicyAction>{policy.actions}, policy.actionCount);
}

}  // namespace simulator
