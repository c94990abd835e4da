// SPDX-License-Identifier: Apache-2.0
#include "documents/bind/entries.h"
#include "documents/bind/entry.h"
#include "documents/bind/list.h"
#include "documents/bind/members.h"
#include "documents/bind/value.h"
#include "documents/text/quote.h"

namespace documents {
namespace {

constexpr std::uint32_t kAllOperators = (1U << (VQS_POLICY_MAX_OPERATOR + 1)) - 1;
constexpr ListLimit kLimit{VQS_POLICY_MAX_CONDITIONS, Rule::kTooManyConditions, "conditions", "a policy"};

struct BoundCondition : VqsPolicyCondition {
  const Word* word = nullptr;
  bool isWhole = true;
};

std::uint32_t operatorsOf(const Word* word) { return word == nullptr ? kAllOperators : word->operators; }

/// `0, 1 or 2 is expected`
std::string expectedOperators(std::uint32_t operators) {
  std::string list;
  for (std::uint32_t op = 0; op <= VQS_POLICY_MAX_OPERATOR; ++op) {
    if ((operators >> op & 1) == 0) continue;
    if (!list.empty()) list += operators >> op == 1 ? " or " : ", ";
    list += std::to_string(op);
  }
  return list + " is expected";
}

std::string subjectOf(const BoundCondition& condition) {
  return condition.word == nullptr ? '#' + std::to_string(condition.conditionId) : std::string(condition.word->name);
}

void bindOperator(Context& context, NodeId id, const Path& path, BoundCondition& condition) {
  const auto op = bindNumber(context, id, path, {.name = "op"});
  const Span span = context.node(id).span;
  if (!op) {
    condition.isWhole = false;
    return;
  }
  condition.op = static_cast<std::uint32_t>(*op);
  if (condition.op > VQS_POLICY_MAX_OPERATOR) {
    return context.say(Rule::kUnknownComparison, span, path, [&] {
      return Words{std::to_string(condition.op) +
                   " is no comparison: " + expectedOperators(operatorsOf(condition.word))};
    });
  }
  if ((operatorsOf(condition.word) >> condition.op & 1) != 0) return;
  context.say(Rule::kComparisonNotAdmitted, span, path, [&] {
    Words words{quote(subjectOf(condition)) + " does not admit comparison " + std::to_string(condition.op) + ": " +
                expectedOperators(condition.word->operators)};
    if (const auto only = condition.word->onlyOperator())
      words.suggestions.push_back(rewrite(span, std::to_string(*only), false));
    return words;
  });
}

void bindFirstValue(Context& context, NodeId id, const Path& path, BoundCondition& condition) {
  const auto value = bindValue(context, id, path, condition.word);
  condition.isWhole = condition.isWhole && value;
  condition.value = value.value_or(0);
}

constexpr Member<BoundCondition> kMembers[] = {
    {"op", bindOperator},
    {"value", bindFirstValue},
    {"value2", bindField<&VqsPolicyCondition::value2, BoundCondition>},
};
constexpr std::uint32_t kHasOperator = 1U << 0;
constexpr std::uint32_t kHasValue = 1U << 1;

void bindOnlyOperator(Context& context, Span span, const Path& path, BoundCondition& condition) {
  if (condition.word != nullptr) {
    if (const auto only = condition.word->onlyOperator()) {
      condition.op = *only;
      return;
    }
  }
  condition.isWhole = false;
  context.refuse(Rule::kMissingComparison, span, path.member("op"), [&] {
    return Words{"the comparison of " + quote(subjectOf(condition)) + " is missing: \"op\" of " +
                 expectedOperators(operatorsOf(condition.word))};
  });
}

BoundCondition bindCondition(Context& context, const Entry& entry, const Path& path) {
  BoundCondition condition{};
  condition.conditionId = entry.id;
  condition.word = entry.word;
  const Node& node = context.node(entry.value);
  if (node.kind != NodeKind::kObject || node.isBroken) {
    bindFirstValue(context, entry.value, path.member("value"), condition);
    if (!node.isBroken) bindOnlyOperator(context, node.span, path, condition);
    return condition;
  }
  const Span brace{.offset = node.span.offset, .length = 1};
  const auto found = bindMembers(context, entry.value, path, "a condition", kMembers, condition);
  if ((found & kHasOperator) == 0) bindOnlyOperator(context, brace, path, condition);
  // What is left out is 0, which not everything can be.
  if ((found & kHasValue) == 0 && condition.word != nullptr)
    checkValue(context, brace, path.member("value"), *condition.word, 0);
  return condition;
}

}  // namespace

void bindConditions(Context& context, NodeId list, const Path& path, BoundPolicy& policy) {
  policy.place.when = list;
  policy.conditions.clear();
  policy.place.conditions.clear();
  bindList(context, list, path, kLimit, [&](NodeId element, const Path& place) {
    for (const Entry& entry : bindEntries(context, element, place, WordKind::kCondition)) {
      const BoundCondition condition = bindCondition(context, entry, place);
      policy.conditions.push_back(condition);
      policy.place.conditions.push_back({context.node(entry.value).name, place.index(), condition.isWhole});
    }
  });
}

}  // namespace documents
