// SPDX-License-Identifier: Apache-2.0
#include "documents/bind/bind.h"

#include <utility>

#include <vqs/policy_binary_records.h>
#include "documents/bind/bound.h"
#include "documents/bind/checks/checks.h"
#include "documents/bind/list.h"
#include "documents/bind/members.h"
#include "documents/bind/policy.h"
#include "documents/bind/version.h"

namespace documents {
namespace {

constexpr ListLimit kLimit{VQS_POLICY_BINARY_MAX_POLICIES, Rule::kTooManyPolicies, "policies", "a policy binary",
                           false};

/// For editors: whatever it says.
void passOver(Context& /*context*/, NodeId /*id*/, const Path& /*path*/, BoundSet& /*bound*/) {}

void bindVersionOf(Context& context, NodeId id, const Path& path, BoundSet& bound) {
  bindVersion(context, id, path, bound.set);
}

void bindPolicies(Context& context, NodeId id, const Path& path, BoundSet& bound) {
  bound.list = id;
  bound.set.policies.clear();
  bound.places.clear();
  bindList(context, id, path, kLimit, [&](NodeId element, const Path& place) {
    BoundPolicy policy = bindPolicy(context, element, place);
    bound.places.push_back(std::move(policy.place));
    bound.set.policies.push_back(std::move(static_cast<Policy&>(policy)));
  });
}

constexpr Member<BoundSet> kMembers[] = {
    {"$schema", passOver},
    {"version", bindVersionOf},
    {"policies", bindPolicies},
};
constexpr std::uint32_t kHasPolicies = 1U << 2;

void bindDocument(Context& context, BoundSet& bound) {
  const Node& root = context.node(0);
  if (root.isBroken || root.kind != NodeKind::kObject)
    return refuseKind(context, 0, {}, "a document", "an object with \"policies\"");
  const auto found = bindMembers(context, 0, {}, "a document", kMembers, bound);
  if ((found & kHasPolicies) != 0) return;
  if (context.isIncomplete(0)) return context.refuseBroken();
  context.refuse(Rule::kMissingMember, {.offset = root.span.offset, .length = 1}, {},
                 [] { return Words{"the document has no \"policies\": a list is expected"}; });
}

}  // namespace

std::optional<PolicySet> bind(const Tree& tree, const ReadOptions& options, Findings& findings) {
  if (tree.nodes.empty()) return std::nullopt;
  Context context{tree, options, findings};
  BoundSet bound;
  bindDocument(context, bound);
  runChecks(context, bound);
  if (!context.isHoldable()) return std::nullopt;
  return std::move(bound.set);
}

}  // namespace documents
