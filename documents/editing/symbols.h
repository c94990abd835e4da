// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "documents/findings/finding.h"
#include "documents/syntax/tree.h"

namespace documents {

/// A condition, an action or a text of a policy.
struct EntrySymbol {
  enum class Kind : std::uint8_t { kCondition, kAction, kText };
  Kind kind;
  std::string name;
  /// its value as the document has it, on one line; empty for a text
  std::string value;
  /// all of it, and what it is known by in it
  Span span;
  Span nameSpan;
};

/// A policy, as far as a document has it.
struct PolicySymbol {
  std::optional<std::uint32_t> id;
  std::string name;
  std::string description;
  /// all of it, and the values of its id and its name, of length 0 where it has none
  Span span;
  Span idSpan;
  Span nameSpan;
  std::vector<EntrySymbol> entries;
};

/// The policies that a tree has, in their order.
std::vector<PolicySymbol> symbolsOf(const Tree& tree);

/// The first policy that has an id; nothing when none has.
const PolicySymbol* policyOf(const std::vector<PolicySymbol>& policies, std::uint32_t id);

/// The id that a place speaks of: that of a policy, a number in a comment, in a policy's name or description, or the
/// value of an "Indirect Policy".
std::optional<std::uint32_t> idAt(const Tree& tree, std::size_t offset);

/// What else a finding is about: the first of two of which there should be one.
struct RelatedPlace {
  Span span;
  std::string sentence;
};
/// One for each finding, where there is one.
std::vector<std::optional<RelatedPlace>> relatedPlaces(const Tree& tree, const Findings& findings);

}  // namespace documents
