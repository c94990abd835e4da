// SPDX-License-Identifier: Apache-2.0
#include "documents/bind/checks/checks.h"

namespace documents {

/// There is no policy binary of nothing.
void checkNoPolicies(Context& context, const BoundSet& bound) {
  if (bound.list == kNoNode) return;
  const Node& list = context.node(bound.list);
  if (list.kind != NodeKind::kArray || list.count != 0 || context.isIncomplete(bound.list)) return;
  context.say(Rule::kNoPolicies, list.span, Path{}.member("policies"),
              [] { return Words{"the document has no policies: 1 to 400 are expected"}; });
}

}  // namespace documents
