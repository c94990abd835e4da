// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "documents/bind/checks/checks.h"
#include "documents/text/quote.h"
#include "documents/vocabulary/vocabulary.h"

namespace documents {
namespace {

std::string actionName(std::uint32_t id) {
  const Word* word = wordOf(WordKind::kAction, id);
  return quote(word == nullptr ? '#' + std::to_string(id) : word->name);
}

void checkPolicy(Context& context, const Policy& policy, const PolicyPlace& place, const Path& path) {
  const auto& actions = policy.actions;
  // Policies that have more have a finding, and this would take its time.
  const std::size_t count = std::min<std::size_t>(actions.size(), VQS_POLICY_MAX_ACTIONS);
  for (std::size_t i = 1; i < count; ++i) {
    const auto again = actions.begin() + static_cast<std::ptrdiff_t>(i);
    const auto first = std::find_if(
        actions.begin(), again, [again](const VqsPolicyAction& action) { return action.actionId == again->actionId; });
    if (first == again) continue;
    const EntryPlace& entry = place.actions[i];
    context.say(Rule::kActionTwice, entry.name, path.member("do").element(entry.index), [&] {
      const auto before = place.actions[static_cast<std::size_t>(first - actions.begin())].index;
      return Words{actionName(again->actionId) + " is set twice: by do[" + std::to_string(before) + "] already"};
    });
  }
}

}  // namespace

/// Of two values for one thing only one can hold.
void checkActionTwice(Context& context, const BoundSet& bound) {
  for (std::size_t i = 0; i < bound.places.size(); ++i)
    checkPolicy(context, bound.set.policies[i], bound.places[i], policyPath(i));
}

}  // namespace documents
