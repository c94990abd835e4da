// SPDX-License-Identifier: Apache-2.0
#include "documents/bind/checks/checks.h"

namespace documents {

/// A record that nobody gave an id has this one.
void checkIdZero(Context& context, const BoundSet& bound) {
  for (std::size_t i = 0; i < bound.places.size(); ++i) {
    if (bound.set.policies[i].id != 0 || bound.places[i].id.length == 0) continue;
    context.say(Rule::kIdZero, bound.places[i].id, policyPath(i).member("id"), [] {
      return Words{"the id 0 is that of records that were given none: a number from 1 to 4294967295 is expected"};
    });
  }
}

}  // namespace documents
