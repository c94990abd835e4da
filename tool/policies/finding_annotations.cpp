// SPDX-License-Identifier: Apache-2.0
#include <fmt/format.h>

#include <algorithm>
#include <optional>

#include "tool/policies/finding_json.h"
#include "tool/terminal/text.h"

namespace tool {
namespace {

/// What a workflow command would take for its own is written as "%" and two digits.
std::string encoded(std::string_view text, std::string_view special) {
  std::string result;
  for (const char character : text) {
    if (special.find(character) == special.npos)
      result += character;
    else
      result += fmt::format("%{:02X}", static_cast<unsigned>(static_cast<unsigned char>(character)));
  }
  return result;
}

std::string asMessage(std::string_view text) { return encoded(text, "%\r\n"); }
std::string asProperty(std::string_view text) { return encoded(text, "%\r\n:,"); }

/// The columns may only be there when a stretch is in one line; the last one belongs to it.
std::string placeAsProperties(const documents::LineTable& lines, const documents::Span& span) {
  const auto start = lines.positionOf(span.offset);
  const auto end = lines.positionOf(span.end());
  if (start.line != end.line) return fmt::format(",line={},endLine={}", start.line, end.line);
  return fmt::format(",line={},col={},endColumn={}", start.line, start.column,
                     std::max(start.column, end.column - std::min<std::size_t>(end.column, 1)));
}

}  // namespace

std::string renderAnnotations(const FindingSource& source, const documents::Findings& findings) {
  const auto lines = source.hasLines ? std::optional<documents::LineTable>{source.text} : std::nullopt;
  std::string text;
  for (const auto& finding : findings) {
    const bool isPlaced = lines && hasPlace(source, finding);
    const std::string path = isPlaced || finding.path.empty() ? "" : finding.path + ": ";
    text += fmt::format("::{} file={}{},title={}::{}\n", nameOf(finding.severity), asProperty(source.name),
                        isPlaced ? placeAsProperties(*lines, finding.span) : "", codeOf(finding.rule),
                        asMessage(printable(path + finding.sentence)));
  }
  return text;
}

}  // namespace tool
