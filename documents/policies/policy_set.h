// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <compare>
#include <cstdint>
#include <string>
#include <vector>

#include <vqs/policy_records.h>
#include "format/policy/packed_policy.h"

namespace documents {

/// A text of a policy: 16-bit units without the terminating zero, surrogates without a partner included.
struct PolicyText {
  std::u16string text;
  std::uint8_t flag = 0;

  auto operator<=>(const PolicyText&) const = default;
};

/// A policy as a value: what a record of any layout says, without what lies behind its texts' ends and between its
/// fields. The numbers have their records' names and units.
struct Policy {
  std::uint32_t id = 0;
  std::u16string name;
  /// bytes, as every record has them
  std::string description;
  std::vector<VqsPolicyCondition> conditions;
  std::vector<VqsPolicyAction> actions;
  std::vector<PolicyText> texts;
  std::uint8_t flag0 = 0;
  std::uint8_t flag1 = 0;
  std::uint8_t flag2 = 0;
  std::uint32_t param0 = 0;
  std::uint32_t param1 = 0;
  std::uint32_t param2 = 0;
};

/// Equal in every field that a document says; what lies between the fields of an action's record is not looked at.
bool operator==(const Policy& a, const Policy& b);

/// The policies of a file, a store or a document, in order.
struct PolicySet {
  /// the two numbers of "version": 3 and 41 of "3.41"
  std::uint16_t version1 = 0;
  std::uint16_t version2 = 0;
  std::vector<Policy> policies;

  bool operator==(const PolicySet&) const = default;
};

/// The value of a packed policy. Counts above their limits are cut to them.
Policy fromPacked(const vqs::PackedPolicy& packed);

/// The packed form. What does not fit is cut: check it first (findings of readDocument say so).
vqs::PackedPolicy toPacked(const Policy& policy);

/// The caller's records of structure version 2, as the driver's stores are read and written with, and back.
Policy fromRecord(const VqsPolicyV2& record);
VqsPolicyV2 toRecord(const Policy& policy);

}  // namespace documents
