// SPDX-License-Identifier: Apache-2.0
#include "documents/bind/checks/checks.h"

namespace documents {
namespace {

/// Where a policy's conditions should be; of length 0 where it has some, or has what cannot be read.
Span missingAt(const Context& context, const PolicyPlace& place) {
  const Node& self = context.node(place.self);
  if (self.kind != NodeKind::kObject || (place.when == kNoNode && context.isIncomplete(place.self))) return {};
  if (place.when == kNoNode) return {.offset = self.span.offset, .length = 1};
  const Node& when = context.node(place.when);
  const bool isEmpty = when.kind == NodeKind::kArray && when.count == 0 && !context.isIncomplete(place.when);
  return isEmpty ? when.span : Span{};
}

}  // namespace

/// A policy binary with a policy without conditions is refused as a whole.
void checkNoConditions(Context& context, const BoundSet& bound) {
  for (std::size_t i = 0; i < bound.places.size(); ++i) {
    const Span span = missingAt(context, bound.places[i]);
    if (span.length == 0) continue;
    context.say(Rule::kNoConditions, span, policyPath(i).member("when"),
                [] { return Words{"the policy has no conditions: 1 to 15 are expected"}; });
  }
}

}  // namespace documents
