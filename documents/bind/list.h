// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

#include "documents/bind/number.h"

namespace documents {

/// How many elements a list may have, and what is said of one that is beyond: the rule, `conditions`, `a policy`.
struct ListLimit {
  std::size_t most;
  Rule rule;
  std::string_view what;
  std::string_view owner;
  /// no record can hold more; otherwise no file
  bool isOfRecord = true;
};

/// Binds each element of a list; `bind` takes its node and path. Elements beyond the limit are bound too, so that all
/// is said about them.
template <class Bind>
void bindList(Context& context, NodeId list, const Path& path, const ListLimit& limit, const Bind& bind) {
  const Node& node = context.node(list);
  if (node.isBroken || node.kind != NodeKind::kArray)
    return refuseKind(context, list, path, '"' + std::string(path.name()) + '"', "a list");
  std::size_t index = 0;
  for (NodeId id = node.firstChild; id != kNoNode; id = context.node(id).next, ++index) {
    const Path place = path.element(index);
    if (index == limit.most) {
      const auto words = [&] {
        return Words{std::to_string(node.count) + ' ' + std::string(limit.what) + ": " + std::string(limit.owner) +
                     " has " + std::to_string(limit.most) + " at most"};
      };
      if (limit.isOfRecord)
        context.refuse(limit.rule, context.node(id).span, place, words);
      else
        context.say(limit.rule, context.node(id).span, place, words);
    }
    bind(id, place);
  }
}

}  // namespace documents
