// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "documents/bind/checks/checks.h"
#include "documents/text/quote.h"
#include "documents/vocabulary/vocabulary.h"

namespace documents {
namespace {

/// The comparison that all enumerations admit, and most of them alone.
constexpr std::uint32_t kSame = 2;

/// The type of a condition that asks for one option; null for others.
const Word* enumerationOf(const VqsPolicyCondition& condition) {
  const Word* word = condition.op == kSame ? wordOf(WordKind::kCondition, condition.conditionId) : nullptr;
  if (word == nullptr || word->form != ValueForm::kOption || !optionText(*word, condition.value)) return nullptr;
  return word;
}

std::string valueOf(const Word& word, std::uint32_t value) {
  return quote(optionText(word, value).value_or(std::string_view{}));
}

void checkPolicy(Context& context, const Policy& policy, const PolicyPlace& place, const Path& path) {
  const auto& conditions = policy.conditions;
  // Policies that have more have a finding, and this would take its time.
  const std::size_t count = std::min<std::size_t>(conditions.size(), VQS_POLICY_MAX_CONDITIONS);
  for (std::size_t i = 1; i < count; ++i) {
    const VqsPolicyCondition& second = conditions[i];
    const Word* word = enumerationOf(second);
    if (word == nullptr || !place.conditions[i].isWhole) continue;
    for (std::size_t j = 0; j < i; ++j) {
      const VqsPolicyCondition& first = conditions[j];
      if (enumerationOf(first) != word || !place.conditions[j].isWhole) continue;
      if (first.value == second.value) continue;
      const EntryPlace& entry = place.conditions[i];
      context.say(Rule::kContradiction, entry.name, path.member("when").element(entry.index), [&] {
        return Words{quote(word->name) + " cannot be " + valueOf(*word, first.value) + ", as in when[" +
                     std::to_string(place.conditions[j].index) + "], and " + valueOf(*word, second.value) + " at once"};
      });
      break;
    }
  }
}

}  // namespace

/// Two options of one enumeration never hold together, and so the policy never does.
void checkContradiction(Context& context, const BoundSet& bound) {
  for (std::size_t i = 0; i < bound.places.size(); ++i)
    checkPolicy(context, bound.set.policies[i], bound.places[i], policyPath(i));
}

}  // namespace documents
