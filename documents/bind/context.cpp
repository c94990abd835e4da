// SPDX-License-Identifier: Apache-2.0
#include "documents/bind/context.h"

#include "documents/text/quote.h"

namespace documents {

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
