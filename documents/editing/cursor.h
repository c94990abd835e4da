// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "documents/findings/finding.h"
#include "documents/vocabulary/vocabulary.h"

namespace documents {

/// What the innermost list or object around a place is.
enum class Scope : std::uint8_t {
  kNone,
  /// the document's own object
  kDocument,
  /// the list of policies, and one of them
  kPolicies,
  kPolicy,
  /// the list "when" or "do", and a condition or action in it: the object of one member
  kEntries,
  kEntry,
  /// the object that spells the fields of a condition or action out
  kFields,
  /// a list of options
  kOptions,
  /// the list "texts", and a text that is an object
  kTexts,
  kText
};

/// What a place in a document, which need not be complete, is for.
struct Cursor {
  enum class Part : std::uint8_t { kNone, kName, kValue };

  Scope scope = Scope::kNone;
  Part part = Part::kNone;
  /// of entries and what is in them
  WordKind kind = WordKind::kCondition;
  /// the condition or action whose value, fields or options these are
  const Word* word = nullptr;
  /// the name that the place is in, or whose value it is in
  std::string member;
  /// the string or word at the place; of length 0 between them. A string without an end ends at the place.
  Span span;
  bool isString = false;
  /// a string with both of its quotes
  bool isClosed = false;
  /// a name behind which a colon stands
  bool hasColon = false;
  /// the other names of the object, the other strings of the list
  std::vector<std::string> others;
};

/// Looks at a place, in bytes from the start of the text. Places in comments are for nothing.
Cursor cursorAt(std::string_view text, std::size_t offset);

/// What stands between the quotes of a string as it is written, or without the second one; of a word, all of it.
std::string_view unquoted(std::string_view written);

}  // namespace documents
