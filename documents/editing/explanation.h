// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "documents/editing/cursor.h"
#include "documents/findings/rules.h"
#include "documents/vocabulary/vocabulary.h"

namespace documents {

/// What something in a document means, without any markup.
struct Explanation {
  /// "Power Source", "P0012"
  std::string title;
  /// what kind of thing it is, in one line: "condition 0, one of 2 options"
  std::string detail;
  std::vector<std::string> paragraphs;
  /// a line each: `"AC Power" (0)`
  std::vector<std::string> items;
};

/// A member of one of the objects that documents are made of.
struct MemberRow {
  Scope scope;
  std::string_view name;
  /// what it takes: "a number from 0 to 255"
  std::string_view detail;
  std::string_view explanation;
  /// what stands there at first, and the same with a stop for the cursor
  std::string_view value;
  std::string_view snippet;
  /// of kFields, whose fields it is one of
  bool isOfConditions = true;
  bool isOfActions = true;
};

std::span<const MemberRow> allMembers();
/// Nothing when there is no such member.
const MemberRow* memberOf(Scope scope, WordKind kind, std::string_view name);

/// "condition 3, a number from 0 to 255, in %"
std::string detailOf(const Word& word);

Explanation explain(const Word& word);
Explanation explain(const Word& word, const QtfOptionInfo& option);
Explanation explain(const MemberRow& member);
Explanation explain(Rule rule);

}  // namespace documents
