// SPDX-License-Identifier: Apache-2.0
#include "documents/policies/entries.h"

#include <tuple>

namespace documents {
namespace {

auto fieldsOf(const VqsPolicyCondition& condition) {
  return std::tie(condition.conditionId, condition.op, condition.value, condition.value2);
}

auto fieldsOf(const VqsPolicyAction& action) {
  return std::tie(action.actionId, action.value, action.value2, action.option1, action.option2, action.value3,
                  action.option3, action.value4);
}

}  // namespace

std::strong_ordering orderOf(const VqsPolicyCondition& a, const VqsPolicyCondition& b) {
  return fieldsOf(a) <=> fieldsOf(b);
}
std::strong_ordering orderOf(const VqsPolicyAction& a, const VqsPolicyAction& b) { return fieldsOf(a) <=> fieldsOf(b); }

}  // namespace documents
