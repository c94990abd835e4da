// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "documents/policies/policy_set.h"

namespace documents {

/// A policy in words to read, in pieces. They are UTF-8 and may hold control characters: a terminal must not get them
/// as they are.
struct ListedPolicy {
  std::uint32_t id = 0;
  std::string name;
  std::string description;
  /// "Power Source is DC Power"
  std::vector<std::string> conditions;
  /// "SPL 15000 mW"
  std::vector<std::string> actions;
  std::vector<std::string> texts;
  /// of the texts, in the same order
  std::vector<std::uint8_t> textFlags;
  /// the other fields that are not zero: "flag0 1"
  std::vector<std::string> others;
};

ListedPolicy listed(const Policy& policy);

}  // namespace documents
