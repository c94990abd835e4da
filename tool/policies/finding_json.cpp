// SPDX-License-Identifier: Apache-2.0
#include "tool/policies/finding_json.h"

#include <optional>

namespace tool {
namespace {

using documents::LineTable;
using documents::Span;
using Json = nlohmann::ordered_json;
using Lines = std::optional<LineTable>;

/// Lines and columns from 1 on, the end behind the last character.
void addPlace(Json& object, const Lines& lines, const Span& span) {
  object["offset"] = span.offset;
  object["length"] = span.length;
  if (!lines) return;
  const auto start = lines->positionOf(span.offset);
  const auto end = lines->positionOf(span.end());
  object["line"] = start.line;
  object["column"] = start.column;
  object["endLine"] = end.line;
  object["endColumn"] = end.column;
}

Json suggestionAsJson(const Lines& lines, const documents::Suggestion& suggestion) {
  Json edits = Json::array();
  for (const auto& edit : suggestion.edits) {
    Json object;
    addPlace(object, lines, edit.span);
    object["replacement"] = edit.replacement;
    edits.push_back(std::move(object));
  }
  return {{"message", suggestion.sentence}, {"certain", suggestion.isCertain}, {"edits", std::move(edits)}};
}

Json findingAsJson(const FindingSource& source, const Lines& lines, const documents::Finding& finding) {
  Json object = {{"code", codeOf(finding.rule)},
                 {"title", documents::rowOf(finding.rule).title},
                 {"severity", nameOf(finding.severity)},
                 {"message", finding.sentence},
                 {"path", finding.path}};
  if (hasPlace(source, finding) || !source.hasLines) addPlace(object, lines, finding.span);
  object["suggestions"] = Json::array();
  for (const auto& suggestion : finding.suggestions)
    object["suggestions"].push_back(suggestionAsJson(lines, suggestion));
  return object;
}

}  // namespace

Json findingsAsJson(const FindingSource& source, const documents::Findings& findings) {
  const auto lines = source.hasLines ? Lines{source.text} : std::nullopt;
  Json array = Json::array();
  for (const auto& finding : findings) array.push_back(findingAsJson(source, lines, finding));
  return array;
}

}  // namespace tool
