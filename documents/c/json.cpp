// SPDX-License-Identifier: Apache-2.0
#include "documents/c/json.h"

#include <utility>

#include "documents/text/json_value.h"

namespace documents {
namespace {

JsonValue number(std::size_t value) { return JsonValue::number(static_cast<std::int64_t>(value)); }

/// Lines and columns from 1 on, the end behind the last character.
void addPlace(JsonValue& object, const LineTable& lines, const Span& span) {
  const auto start = lines.positionOf(span.offset);
  const auto end = lines.positionOf(span.end());
  object.add("offset", number(span.offset)).add("length", number(span.length));
  object.add("line", number(start.line)).add("column", number(start.column));
  object.add("endLine", number(end.line)).add("endColumn", number(end.column));
}

JsonValue toValue(const Edit& edit, const LineTable& lines) {
  auto object = JsonValue::object();
  addPlace(object, lines, edit.span);
  object.add("replacement", JsonValue::text(edit.replacement));
  return object;
}

JsonValue toValue(const Suggestion& suggestion, const LineTable& lines) {
  auto edits = JsonValue::list();
  for (const auto& edit : suggestion.edits) edits.add(toValue(edit, lines));
  return JsonValue::object({{"message", JsonValue::text(suggestion.sentence)},
                            {"certain", JsonValue::boolean(suggestion.isCertain)},
                            {"edits", std::move(edits)}});
}

JsonValue toValue(const Finding& finding, const LineTable& lines) {
  auto suggestions = JsonValue::list();
  for (const auto& suggestion : finding.suggestions) suggestions.add(toValue(suggestion, lines));
  auto object = JsonValue::object({{"code", JsonValue::text(codeOf(finding.rule))},
                                   {"title", JsonValue::text(rowOf(finding.rule).title)},
                                   {"severity", JsonValue::text(nameOf(finding.severity))},
                                   {"message", JsonValue::text(finding.sentence)},
                                   {"path", JsonValue::text(finding.path)}});
  addPlace(object, lines, finding.span);
  object.add("suggestions", std::move(suggestions));
  return object;
}

JsonValue toValue(const FieldDifference& field) {
  const bool isInFirst = field.kind != FieldDifference::Kind::kAdded;
  const bool isInSecond = field.kind != FieldDifference::Kind::kRemoved;
  return JsonValue::object({{"change", JsonValue::text(changeOf(field.kind))},
                            {"field", JsonValue::text(field.field)},
                            {"first", isInFirst ? JsonValue::text(field.first) : JsonValue::null()},
                            {"second", isInSecond ? JsonValue::text(field.second) : JsonValue::null()},
                            {"firstIndex", isInFirst ? number(field.firstIndex) : JsonValue::null()},
                            {"secondIndex", isInSecond ? number(field.secondIndex) : JsonValue::null()}});
}

JsonValue toValue(const PolicyDifference& policy) {
  auto fields = JsonValue::list();
  for (const auto& field : policy.fields) fields.add(toValue(field));
  return JsonValue::object({{"change", JsonValue::text(changeOf(policy.kind))},
                            {"id", JsonValue::number(policy.id)},
                            {"name", JsonValue::text(policy.name)},
                            {"fields", std::move(fields)}});
}

JsonValue toValue(const MovedPolicy& policy) {
  return JsonValue::object({{"id", JsonValue::number(policy.id)},
                            {"name", JsonValue::text(policy.name)},
                            {"firstIndex", number(policy.firstIndex)},
                            {"secondIndex", number(policy.secondIndex)}});
}

}  // namespace

std::string toJson(const Findings& findings, std::string_view text) {
  const LineTable lines{text};
  auto list = JsonValue::list();
  for (const auto& finding : findings) list.add(toValue(finding, lines));
  return findings.empty() ? "[]" : list.laidOut();
}

std::string toJson(const Difference& difference) {
  auto policies = JsonValue::list();
  for (const auto& policy : difference.policies) policies.add(toValue(policy));
  auto moved = JsonValue::list();
  for (const auto& policy : difference.moved) moved.add(toValue(policy));
  return JsonValue::object({{"same", JsonValue::boolean(difference.isEmpty())},
                            {"versionDiffers", JsonValue::boolean(difference.versionDiffers)},
                            {"policies", std::move(policies)},
                            {"moved", std::move(moved)}})
      .laidOut();
}

}  // namespace documents
