// SPDX-License-Identifier: Apache-2.0
#include "documents/c/json.h"

#include <utility>

#include "documents/schema/json_value.h"

namespace documents {
namespace {

JsonValue number(std::size_t value) { return JsonValue::number(static_cast<std::int64_t>(value)); }

JsonValue toValue(const Edit& edit) {
  return JsonValue::object({{"offset", number(edit.span.offset)},
                            {"length", number(edit.span.length)},
                            {"text", JsonValue::text(edit.replacement)}});
}

JsonValue toValue(const Suggestion& suggestion) {
  auto edits = JsonValue::list();
  for (const auto& edit : suggestion.edits) edits.add(toValue(edit));
  return JsonValue::object({{"message", JsonValue::text(suggestion.sentence)},
                            {"certain", JsonValue::boolean(suggestion.isCertain)},
                            {"edits", std::move(edits)}});
}

JsonValue toValue(const Finding& finding, const LineTable& lines) {
  const auto start = lines.positionOf(finding.span.offset);
  const auto end = lines.positionOf(finding.span.end());
  auto suggestions = JsonValue::list();
  for (const auto& suggestion : finding.suggestions) suggestions.add(toValue(suggestion));
  return JsonValue::object({{"code", JsonValue::text(codeOf(finding.rule))},
                            {"severity", JsonValue::text(finding.severity == Severity::kError ? "error" : "warning")},
                            {"line", number(start.line)},
                            {"column", number(start.column)},
                            {"endLine", number(end.line)},
                            {"endColumn", number(end.column)},
                            {"path", JsonValue::text(finding.path)},
                            {"message", JsonValue::text(finding.sentence)},
                            {"suggestions", std::move(suggestions)}});
}

std::string_view nameOf(FieldDifference::Kind kind) {
  switch (kind) {
    case FieldDifference::Kind::kAdded:
      return "added";
    case FieldDifference::Kind::kRemoved:
      return "removed";
    case FieldDifference::Kind::kMoved:
      return "moved";
    default:
      return "changed";
  }
}

std::string_view nameOf(PolicyDifference::Kind kind) {
  switch (kind) {
    case PolicyDifference::Kind::kOnlyInFirst:
      return "onlyInFirst";
    case PolicyDifference::Kind::kOnlyInSecond:
      return "onlyInSecond";
    case PolicyDifference::Kind::kRenamed:
      return "renamed";
    default:
      return "changed";
  }
}

}  // namespace
}  // namespace documents
