// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "documents/bind/entries.h"
#include "documents/bind/entry.h"
#include "documents/bind/list.h"
#include "documents/bind/members.h"
#include "documents/bind/value.h"

namespace documents {
namespace {

constexpr ListLimit kLimit{VQS_POLICY_MAX_ACTIONS, Rule::kTooManyActions, "actions", "a policy"};

struct BoundAction : VqsPolicyAction {
  const Word* word = nullptr;
  bool isWhole = true;
};

void bindFirstValue(Context& context, NodeId id, const Path& path, BoundAction& action) {
  const auto value = bindValue(context, id, path, action.word);
  action.isWhole = value.has_value();
  action.value = value.value_or(0);
}

/// A field that the first layout does not have.
template <auto field>
void bindLaterField(Context& context, NodeId id, const Path& path, BoundAction& action) {
  bindField<field>(context, id, path, action);
  if (context.options().structureVersion != VQS_STRUCTURE_VERSION_0 || action.*field == 0) return;
  context.refuse(Rule::kFieldNotInLayout, context.node(id).span, path, [&] {
    return Words{"an action of structure version 0 has no \"" + std::string(path.name()) +
                 "\": 0 is expected, or nothing"};
  });
}

constexpr Member<BoundAction> kMembers[] = {
    {"value", bindFirstValue},
    {"value2", bindLaterField<&VqsPolicyAction::value2>},
    {"value3", bindLaterField<&VqsPolicyAction::value3>},
    {"value4", bindLaterField<&VqsPolicyAction::value4>},
    {"option1", bindLaterField<&VqsPolicyAction::option1>},
    {"option2", bindLaterField<&VqsPolicyAction::option2>},
    {"option3", bindLaterField<&VqsPolicyAction::option3>},
};
constexpr std::uint32_t kHasValue = 1U << 0;

BoundAction bindAction(Context& context, const Entry& entry, const Path& path) {
  BoundAction action{};
  action.actionId = entry.id;
  action.word = entry.word;
  const Node& node = context.node(entry.value);
  if (node.kind != NodeKind::kObject || node.isBroken) {
    bindFirstValue(context, entry.value, path.member("value"), action);
    return action;
  }
  const auto found = bindMembers(context, entry.value, path, "an action", kMembers, action);
  // What is left out is 0, which not everything can be.
  if ((found & kHasValue) == 0 && action.word != nullptr)
    checkValue(context, {.offset = node.span.offset, .length = 1}, path.member("value"), *action.word, 0);
  return action;
}

}  // namespace

void bindActions(Context& context, NodeId list, const Path& path, BoundPolicy& policy) {
  policy.actions.clear();
  policy.place.actions.clear();
  bindList(context, list, path, kLimit, [&](NodeId element, const Path& place) {
    for (const Entry& entry : bindEntries(context, element, place, WordKind::kAction)) {
      const BoundAction action = bindAction(context, entry, place);
      policy.actions.push_back(action);
      policy.place.actions.push_back({context.node(entry.value).name, place.index(), action.isWhole});
    }
  });
}

}  // namespace documents
