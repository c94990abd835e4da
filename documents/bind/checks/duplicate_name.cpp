// SPDX-License-Identifier: Apache-2.0
#include "documents/bind/checks/checks.h"
#include "documents/bind/checks/duplicates.h"
#include "documents/text/quote.h"
#include "documents/text/utf.h"

namespace documents {

/// Names are for people, who cannot tell two of one name apart.
void checkDuplicateName(Context& context, const BoundSet& bound) {
  std::vector<std::size_t> named;
  for (std::size_t i = 0; i < bound.places.size(); ++i)
    if (!bound.set.policies[i].name.empty()) named.push_back(i);
  const auto nameOf = [&bound](std::size_t index) -> const std::u16string& { return bound.set.policies[index].name; };
  for (const auto& [first, again] : duplicates(std::move(named), nameOf)) {
    context.say(Rule::kDuplicateName, bound.places[again].name, policyPath(again).member("name"), [&] {
      return Words{quote(toUtf8(nameOf(again))) + " is the name of " + policyPath(first).text() + " already"};
    });
  }
}

}  // namespace documents
