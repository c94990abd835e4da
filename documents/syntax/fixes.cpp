// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <vector>

#include "documents/documents.h"

namespace documents {
namespace {

bool overlap(const Span& a, const Span& b) {
  return a.offset == b.offset || (a.offset < b.end() && b.offset < a.end());
}

bool isInside(const Span& span, std::size_t size) { return span.offset <= size && span.length <= size - span.offset; }

/// True when nothing of a suggestion touches what is taken or another of its own edits.
bool canBeTaken(const Suggestion& suggestion, const std::vector<const Edit*>& taken, std::size_t size) {
  for (std::size_t i = 0; i < suggestion.edits.size(); ++i) {
    const Span& span = suggestion.edits[i].span;
    if (!isInside(span, size)) return false;
    if (std::ranges::any_of(taken, [&](const Edit* other) { return overlap(span, other->span); })) return false;
    for (std::size_t k = 0; k < i; ++k)
      if (overlap(span, suggestion.edits[k].span)) return false;
  }
  return true;
}

/// The edits to make, by their places.
std::vector<const Edit*> chooseEdits(const Findings& findings, std::size_t size) {
  std::vector<const Edit*> edits;
  for (const Finding& finding : findings) {
    const auto suggestion = std::ranges::find_if(finding.suggestions, &Suggestion::isCertain);
    if (suggestion == finding.suggestions.end() || !canBeTaken(*suggestion, edits, size)) continue;
    for (const Edit& edit : suggestion->edits) edits.push_back(&edit);
  }
  std::ranges::sort(edits, {}, [](const Edit* edit) { return edit->span.offset; });
  return edits;
}

}  // namespace

std::string applyCertainFixes(std::string_view text, const Findings& findings) {
  std::string fixed;
  fixed.reserve(text.size());
  std::size_t done = 0;
  for (const Edit* const edit : chooseEdits(findings, text.size())) {
    fixed += text.substr(done, edit->span.offset - done);
    fixed += edit->replacement;
    done = edit->span.end();
  }
  fixed += text.substr(done);
  return fixed;
}

}  // namespace documents
