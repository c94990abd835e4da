// SPDX-License-Identifier: Apache-2.0
#include "tests/documents/findings/said.h"

namespace documents {
namespace {

std::string placeOf(const LineTable& lines, Span span) {
  const Position start = lines.positionOf(span.offset);
  const Position end = lines.positionOf(span.end());
  std::string place = std::to_string(start.line) + ':' + std::to_string(start.column) + '-';
  if (end.line != start.line) place += std::to_string(end.line) + ':';
  return place + std::to_string(end.column);
}

std::string lineOf(const LineTable& lines, const Finding& finding) {
  std::string line = codeOf(finding.rule) + (finding.severity == Severity::kError ? " error " : " warning ");
  line += placeOf(lines, finding.span) + ' ';
  if (!finding.path.empty()) line += finding.path + ": ";
  line += finding.sentence + '\n';
  for (const Suggestion& suggestion : finding.suggestions)
    line += (suggestion.isCertain ? "  certain: " : "  maybe: ") + suggestion.sentence + '\n';
  return line;
}

}  // namespace

std::string said(std::string_view document, const ReadOptions& options) {
  const LineTable lines{document};
  std::string all;
  for (const Finding& finding : readDocument(document, options).findings) all += lineOf(lines, finding);
  return all;
}

std::string withCondition(std::string_view condition) {
  return R"({"policies": [{"id": 1, "when": [)" + std::string(condition) + "]}]}";
}

std::string withAction(std::string_view action) {
  return R"({"policies": [{"id": 1, "when": [{"Lid State": "Open"}], "do": [)" + std::string(action) + "]}]}";
}

std::string withMembers(std::string_view members) {
  return R"({"policies": [{"id": 1, "when": [{"Lid State": "Open"}], )" + std::string(members) + "}]}";
}

}  // namespace documents
