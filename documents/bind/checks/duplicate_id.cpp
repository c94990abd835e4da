// SPDX-License-Identifier: Apache-2.0
#include "documents/bind/checks/checks.h"
#include "documents/bind/checks/duplicates.h"

namespace documents {

/// The id is what a store finds a policy by.
void checkDuplicateId(Context& context, const BoundSet& bound) {
  std::vector<std::size_t> known;
  for (std::size_t i = 0; i < bound.places.size(); ++i)
    if (bound.places[i].id.length != 0) known.push_back(i);
  const auto idOf = [&bound](std::size_t index) { return bound.set.policies[index].id; };
  for (const auto& [first, again] : duplicates(std::move(known), idOf)) {
    context.say(Rule::kDuplicateId, bound.places[again].id, policyPath(again).member("id"), [&] {
      return Words{std::to_string(idOf(again)) + " is the id of " + policyPath(first).text() +
                   " already: one that no other policy has is expected"};
    });
  }
}

}  // namespace documents
