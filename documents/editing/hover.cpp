// SPDX-License-Identifier: Apache-2.0
#include "documents/editing/hover.h"

#include <algorithm>

#include "documents/bind/number.h"
#include "documents/editing/cursor.h"

namespace documents {
namespace {

const QtfOptionInfo* optionOf(const Word& word, std::string_view written) {
  const auto number = wholeNumber(written);
  if (!number) return foldedOption(word, written);
  const auto found = std::ranges::find_if(word.options, [&](const QtfOptionInfo& option) {
    return static_cast<std::uint32_t>(option.Value) == static_cast<std::uint32_t>(*number);
  });
  return found == word.options.end() ? nullptr : &*found;
}

std::optional<Explanation> explainName(const Cursor& cursor) {
  if (cursor.scope == Scope::kEntry) {
    const Word* const word = foldedWord(cursor.kind, cursor.member);
    if (word == nullptr) return std::nullopt;
    return explain(*word);
  }
  const auto* const member = memberOf(cursor.scope, cursor.kind, cursor.member);
  if (member == nullptr) return std::nullopt;
  return explain(*member);
}

/// An option, by its text or its number; of another value what its type takes.
std::optional<Explanation> explainValue(const Cursor& cursor, std::string_view written) {
  const bool isValue = cursor.scope == Scope::kEntry || cursor.scope == Scope::kOptions ||
                       (cursor.scope == Scope::kFields && cursor.member == "value");
  if (cursor.word == nullptr || !isValue) return std::nullopt;
  const auto* const option = optionOf(*cursor.word, written);
  return option == nullptr ? explain(*cursor.word) : explain(*cursor.word, *option);
}

std::optional<Explanation> explainPlace(const Cursor& cursor, std::string_view text) {
  if (cursor.span.length == 0) return std::nullopt;
  if (cursor.part == Cursor::Part::kName) return explainName(cursor);
  return explainValue(cursor, unquoted(text.substr(cursor.span.offset, cursor.span.length)));
}

bool isIn(Span span, std::size_t offset) { return span.offset <= offset && offset <= span.end(); }

}  // namespace

std::optional<Hover> hoverAt(std::string_view text, std::size_t offset, const Findings& findings) {
  const Cursor cursor = cursorAt(text, offset);
  Hover hover{.span = cursor.span, .explanations = {}};
  if (auto explanation = explainPlace(cursor, text)) hover.explanations.push_back(std::move(*explanation));
  for (const auto& finding : findings) {
    if (!isIn(finding.span, offset)) continue;
    if (hover.explanations.empty()) hover.span = finding.span;
    hover.explanations.push_back(explain(finding.rule));
  }
  if (hover.explanations.empty()) return std::nullopt;
  return hover;
}

}  // namespace documents
