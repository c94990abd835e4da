// SPDX-License-Identifier: Apache-2.0
#include "tool/policies/finding_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>

#include "tool/terminal/excerpt.h"
#include "tool/terminal/text.h"

namespace tool {
namespace {

using documents::Finding;
using documents::LineTable;
using documents::Severity;

std::string counted(std::size_t count, const char* noun) {
  return fmt::format("{} {}{}", count, noun, count == 1 ? "" : "s");
}

/// "quiet.json:14:22", "laptop.bin: policies[2]".
std::string placeOf(const FindingSource& source, const std::optional<LineTable>& lines, const Finding& finding) {
  if (!lines || !hasPlace(source, finding))
    return printable(source.name) + (finding.path.empty() ? "" : ": " + printable(finding.path));
  const auto position = lines->positionOf(finding.span.offset);
  return fmt::format("{}:{}:{}", printable(source.name), position.line, position.column);
}

std::string excerptOf(const LineTable& lines, std::string_view text, const documents::Span& span) {
  const auto number = lines.positionOf(span.offset).line;
  const auto line = lines.line(number);
  const auto start =
      std::min(span.offset - std::min(span.offset, static_cast<std::size_t>(line.data() - text.data())), line.size());
  return renderExcerpt(number, line, start, std::min(start + span.length, line.size()));
}

std::string renderFinding(const FindingSource& source, const std::optional<LineTable>& lines, const Finding& finding) {
  std::string text = fmt::format("{}: {} {}: {}\n", placeOf(source, lines, finding), nameOf(finding.severity),
                                 codeOf(finding.rule), printable(finding.sentence));
  if (lines && hasPlace(source, finding)) text += excerptOf(*lines, source.text, finding.span);
  for (const auto& suggestion : finding.suggestions)
    text += fmt::format("      help: {}\n", printable(suggestion.sentence));
  return text;
}

}  // namespace

FindingCount countFindings(const documents::Findings& findings) {
  const auto errors = static_cast<std::size_t>(std::ranges::count(findings, Severity::kError, &Finding::severity));
  return {.errors = errors, .warnings = findings.size() - errors};
}

std::string describe(const FindingCount& count) {
  if (count.errors == 0 && count.warnings == 0) return "no findings";
  if (count.warnings == 0) return counted(count.errors, "error");
  if (count.errors == 0) return counted(count.warnings, "warning");
  return counted(count.errors, "error") + ", " + counted(count.warnings, "warning");
}

bool hasPlace(const FindingSource& source, const Finding& finding) {
  return source.hasLines && (finding.span != documents::Span{} || finding.path.empty());
}

std::string renderFindings(const FindingSource& source, const documents::Findings& findings) {
  const auto lines = source.hasLines ? std::optional<LineTable>{source.text} : std::nullopt;
  std::string text;
  for (const auto& finding : findings) text += renderFinding(source, lines, finding);
  return text;
}

}  // namespace tool
