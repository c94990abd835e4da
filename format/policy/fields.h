// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>

#include <vqs/policy_records.h>

// What all forms of a policy have alike, copied from any form to any other.

namespace vqs {

template <class From, class To>
void copyScalars(const From& source, To& destination) {
  std::ranges::copy(source.description, destination.description);
  destination.flag0 = source.flag0;
  destination.id = source.id;
  destination.param0 = source.param0;
  destination.flag1 = source.flag1;
  destination.flag2 = source.flag2;
  destination.param1 = source.param1;
  destination.param2 = source.param2;
  destination.conditionCount = source.conditionCount;
  destination.actionCount = source.actionCount;
  destination.textCount = source.textCount;
}

/// False when there is no such comparison.
inline bool copyCondition(const VqsPolicyCondition& source, VqsPolicyCondition& destination) {
  if (source.op > VQS_POLICY_MAX_OPERATOR) return false;
  destination = source;
  return true;
}

/// The two fields that actions of version 0 have.
template <class From, class To>
void copyAction(const From& source, To& destination) {
  destination.actionId = source.actionId;
  destination.value = source.value;
}

/// All fields, and nothing of what lies between them.
inline void copyAction(const VqsPolicyAction& source, VqsPolicyAction& destination) {
  destination.actionId = source.actionId;
  destination.value = source.value;
  destination.value2 = source.value2;
  destination.option1 = source.option1;
  destination.option2 = source.option2;
  destination.value3 = source.value3;
  destination.option3 = source.option3;
  destination.value4 = source.value4;
}

}  // namespace vqs
