// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "documents/editing/explanation.h"
#include "documents/findings/finding.h"

namespace documents {

/// Text that could stand at a place.
struct Proposal {
  enum class Kind : std::uint8_t {
    kCondition,
    kAction,
    kOption,
    kMember,
    kNumber,
    /// a whole list or object
    kPiece
  };
  Kind kind;
  /// as it is listed, and what somebody types to find it
  std::string label;
  Explanation explanation;
  /// what to write in place of Completion::span
  std::string text;
  /// The same with stops for the cursor, as editors have them: `${1:0}`, `${1|a,b|}`, `$0`. Every "$", "}" and "\" in
  /// it that is none has a "\" before it.
  std::string snippet;
  /// hardly ever what is meant
  bool isRare = false;
};

/// What could stand at a place. In a string the span begins behind the first quote and ends before the second one, or
/// behind it when the texts have one themselves.
struct Completion {
  Span span;
  std::vector<Proposal> proposals;
};

/// Proposals for a place in a text, in bytes from its start, which need not be a complete document.
Completion completionAt(std::string_view text, std::size_t offset);

}  // namespace documents
