// SPDX-License-Identifier: Apache-2.0
#include "documents/bind/policy.h"

#include "documents/bind/entries.h"
#include "documents/bind/members.h"
#include "documents/bind/texts.h"

namespace documents {
namespace {

constexpr TextLimit kNameLimit{Rule::kNameTooLong, VQS_POLICY_NAME_UNITS - 1, VQS_POLICY_NAME_UNITS - 1};

void bindId(Context& context, NodeId id, const Path& path, BoundPolicy& policy) {
  policy.place.id = {};
  const auto value = bindNumber(context, id, path, {.name = "id"});
  if (!value) return;
  policy.id = static_cast<std::uint32_t>(*value);
  policy.place.id = context.node(id).span;
}

void bindName(Context& context, NodeId id, const Path& path, BoundPolicy& policy) {
  policy.name = bindText(context, id, path, kNameLimit);
  policy.place.name = context.node(id).span;
}

void bindDescriptionOf(Context& context, NodeId id, const Path& path, BoundPolicy& policy) {
  policy.description = bindDescription(context, id, path);
}

constexpr Member<BoundPolicy> kMembers[] = {
    {"id", bindId},
    {"name", bindName},
    {"description", bindDescriptionOf},
    {"when", bindConditions},
    {"do", bindActions},
    {"texts", bindTexts},
    {"flag0", bindField<&Policy::flag0, BoundPolicy>},
    {"flag1", bindField<&Policy::flag1, BoundPolicy>},
    {"flag2", bindField<&Policy::flag2, BoundPolicy>},
    {"param0", bindField<&Policy::param0, BoundPolicy>},
    {"param1", bindField<&Policy::param1, BoundPolicy>},
    {"param2", bindField<&Policy::param2, BoundPolicy>},
};
constexpr std::uint32_t kHasId = 1U << 0;

}  // namespace

BoundPolicy bindPolicy(Context& context, NodeId id, const Path& path) {
  BoundPolicy policy;
  policy.place.self = id;
  const Node& node = context.node(id);
  if (node.isBroken || node.kind != NodeKind::kObject) {
    refuseKind(context, id, path, "a policy", "an object");
    return policy;
  }
  const auto found = bindMembers(context, id, path, "a policy", kMembers, policy);
  if ((found & kHasId) == 0 && context.isIncomplete(id)) {
    context.refuseBroken();
  } else if ((found & kHasId) == 0) {
    context.refuse(Rule::kMissingMember, {.offset = node.span.offset, .length = 1}, path,
                   [] { return Words{"the policy has no \"id\": a number from 0 to 4294967295 is expected"}; });
  }
  return policy;
}

}  // namespace documents
