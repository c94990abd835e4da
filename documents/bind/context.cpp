// SPDX-License-Identifier: Apache-2.0
#include "documents/bind/context.h"

#include <algorithm>

#include "documents/text/quote.h"

namespace documents {

bool Context::isIncomplete(NodeId id) const {
  const Node& node = tree_.node(id);
  const char closing = node.kind == NodeKind::kObject ? '}' : ']';
  if (node.isBroken || tree_.slice(node.span).back() != closing) return true;
  const auto end = findings_.begin() + static_cast<std::ptrdiff_t>(syntaxFindings_);
  const auto offsetOf = [](const Finding& finding) { return finding.span.offset; };
  auto finding = std::ranges::lower_bound(findings_.begin(), end, node.span.offset, {}, offsetOf);
  NodeId child = node.firstChild;
  for (; finding != end && finding->span.offset < node.span.end(); ++finding) {
    while (child != kNoNode && tree_.node(child).span.end() <= finding->span.offset) child = tree_.node(child).next;
    if (child == kNoNode) return true;
    const Node& next = tree_.node(child);
    const std::size_t start = next.name.length == 0 ? next.span.offset : next.name.offset;
    if (finding->span.offset < start) return true;
  }
  return false;
}

void Context::add(Severity severity, Rule rule, Span span, const Path& path, Words words) {
  addFinding(findings_, {.rule = rule,
                         .severity = severity,
                         .span = span,
                         .path = path.text(),
                         .sentence = std::move(words.sentence),
                         .suggestions = std::move(words.suggestions)});
}

Suggestion rewrite(Span span, std::string replacement, bool isCertain) {
  return {.sentence = "write " + replacement,
          .edits = {{.span = span, .replacement = std::move(replacement)}},
          .isCertain = isCertain};
}

Suggestion rewriteName(Span span, std::string_view name, bool isCertain) {
  return rewrite(span, '"' + std::string(name) + '"', isCertain);
}

std::vector<Suggestion> rewrites(Span span, const std::vector<std::string_view>& names) {
  std::vector<Suggestion> suggestions;
  for (const std::string_view name : names) suggestions.push_back(rewriteName(span, name, false));
  return suggestions;
}

std::string alternatives(const std::vector<std::string_view>& names) {
  std::string list;
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (i != 0) list += i + 1 == names.size() ? " or " : ", ";
    list += quote(names[i]);
  }
  return list;
}

std::string perhaps(const std::vector<std::string_view>& names) {
  return names.empty() ? "" : ": perhaps " + alternatives(names) + " is meant";
}

}  // namespace documents
