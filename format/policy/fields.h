// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>

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

/// An action's bytes without what lies between its fields, as offset and size of each run of them.
template <class Visitor>
constexpr void forEachActionRun(Visitor visit) {
  constexpr std::size_t kFirst = offsetof(VqsPolicyAction, option2) + sizeof(VqsPolicyAction::option2);
  constexpr std::size_t kSecond = offsetof(VqsPolicyAction, value3);
  visit(std::size_t{0}, kFirst);
  visit(kSecond, offsetof(VqsPolicyAction, option3) + sizeof(VqsPolicyAction::option3) - kSecond);
  visit(offsetof(VqsPolicyAction, value4), sizeof(VqsPolicyAction::value4));
}

/// All fields, and nothing of what lies between them.
inline void copyAction(const VqsPolicyAction& source, VqsPolicyAction& destination) {
  const auto* const from = reinterpret_cast<const std::byte*>(&source);
  auto* const to = reinterpret_cast<std::byte*>(&destination);
  forEachActionRun([&](std::size_t offset, std::size_t size) { copyBytes(to + offset, from + offset, size); });
}

}  // namespace vqs
