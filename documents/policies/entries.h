// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <compare>

#include <vqs/policy_records.h>

namespace documents {

/// An order by all fields; what lies between the fields of an action's record is not looked at.
std::strong_ordering orderOf(const VqsPolicyCondition& a, const VqsPolicyCondition& b);
std::strong_ordering orderOf(const VqsPolicyAction& a, const VqsPolicyAction& b);

/// Equal in all fields.
template <class Entry>
bool isSame(const Entry& a, const Entry& b) {
  return orderOf(a, b) == 0;
}

}  // namespace documents
