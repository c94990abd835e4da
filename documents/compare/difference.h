// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "documents/policies/policy_set.h"

namespace documents {

/// A field that differs: `when Skin Temperature op 4`, with both values in words.
struct FieldDifference {
  enum class Kind : std::uint8_t { kChanged, kAdded, kRemoved, kMoved } kind = Kind::kChanged;
  /// "name", "description", "when", "do", "texts", "flag0"
  std::string field;
  /// where in a list, from 0 on, in the first and in the second set
  std::size_t firstIndex = 0;
  std::size_t secondIndex = 0;
  /// what it is in each, in words; empty where it is not there
  std::string first;
  std::string second;
};

/// What became of a policy. Policies are told apart by their ids; those of one id twice by their order.
struct PolicyDifference {
  enum class Kind : std::uint8_t { kChanged, kOnlyInFirst, kOnlyInSecond, kRenamed } kind = Kind::kChanged;
  std::uint32_t id = 0;
  /// as in the set that has it; in the first for both
  std::string name;
  /// indexes in the sets' lists; where it is in one only, the other is meaningless
  std::size_t firstIndex = 0;
  std::size_t secondIndex = 0;
  std::vector<FieldDifference> fields;
};

/// A policy whose place among the policies that both sets have differs.
struct MovedPolicy {
  std::uint32_t id = 0;
  std::string name;
  std::size_t firstIndex = 0;
  std::size_t secondIndex = 0;
};

struct Difference {
  bool versionDiffers = false;
  /// in the order of the first set, those that only the second has behind them
  std::vector<PolicyDifference> policies;
  /// the fewest policies that have to move to get from the first order to the second
  std::vector<MovedPolicy> moved;

  [[nodiscard]] bool isEmpty() const { return !versionDiffers && policies.empty() && moved.empty(); }
};

Difference compare(const PolicySet& first, const PolicySet& second);

/// What happened, as programs read it: "changed", "added", "removed", "moved"; "onlyInFirst", "onlyInSecond",
/// "renamed".
std::string_view changeOf(FieldDifference::Kind kind);
std::string_view changeOf(PolicyDifference::Kind kind);

}  // namespace documents
