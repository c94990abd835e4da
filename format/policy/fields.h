// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vqs/policy_records.h>
#include "format/bytes.h"

// What all forms of a policy have alike, copied from any form to any other.

namespace vqs {

template <class From, class To>
void copyScalars(const From& source, To& destination) {
  copyBytes(destination.description, source.description, sizeof(destination.description));
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

/// All fields, run by run, and nothing of what lies between the runs.
inline void copyAction(const VqsPolicyAction& source, VqsPolicyAction& destination) {
  constexpr std::size_t kFirstRun = offsetof(VqsPolicyAction, option2) + sizeof(VqsPolicyAction::option2);
  constexpr std::size_t kSecondRun =
      offsetof(VqsPolicyAction, option3) + sizeof(VqsPolicyAction::option3) - offsetof(VqsPolicyAction, value3);
  copyBytes(&destination, &source, kFirstRun);
  copyBytes(&destination.value3, &source.value3, kSecondRun);
  destination.value4 = source.value4;
}

}  // namespace vqs
