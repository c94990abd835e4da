// SPDX-License-Identifier: Apache-2.0
#include "documents/editing/explanation.h"

#include <algorithm>
#include <bit>
#include <iterator>

namespace documents {
namespace {

constexpr std::string_view kByte = "a number from 0 to 255";
constexpr std::string_view kNumber = "a number from 0 to 4294967295";
constexpr std::string_view kAsNamed = "The field of this name in the policy's record, 0 when left out.";

// clang-format off
constexpr MemberRow kMembers[] = {
    {Scope::kDocument, "$schema", "a text", "Where editors find the schema of policy documents. Nothing else looks at it.", "\"vexoqtf-policies.schema.json\"", "\"${1:vexoqtf-policies.schema.json}\""},
    {Scope::kDocument, "version", "two numbers, \"a.b\"", "The version of the policies, 0.0 when left out.", "\"1.0\"", "\"${1:1.0}\""},
    {Scope::kDocument, "policies", "a list", "The policies, in their order. It is required.", "[]", "[$1]"},

    {Scope::kPolicy, "id", kNumber, "What the policy is known by: no two policies have the same. It is required.", "1", "${1:1}"},
    {Scope::kPolicy, "name", "a text", "What people call the policy.", "\"\"", "\"$1\""},
    {Scope::kPolicy, "description", "a text of up to 31 bytes", "What the policy is for, in a few words.", "\"\"", "\"$1\""},
    {Scope::kPolicy, "when", "a list of conditions", "What has to be the case, all of it, for the policy to apply.", "[]", "[{ $1 \\}]"},
    {Scope::kPolicy, "do", "a list of actions", "What the policy sets.", "[]", "[{ $1 \\}]"},
    {Scope::kPolicy, "texts", "a list of texts", "Texts that the policy's conditions and actions refer to. They are never file names.", "[]", "[\"$1\"]"},
    {Scope::kPolicy, "flag0", kByte, kAsNamed, "0", "${1:0}"},
    {Scope::kPolicy, "flag1", kByte, kAsNamed, "0", "${1:0}"},
    {Scope::kPolicy, "flag2", kByte, kAsNamed, "0", "${1:0}"},
    {Scope::kPolicy, "param0", kNumber, kAsNamed, "0", "${1:0}"},
    {Scope::kPolicy, "param1", kNumber, kAsNamed, "0", "${1:0}"},
    {Scope::kPolicy, "param2", kNumber, kAsNamed, "0", "${1:0}"},

    {.scope = Scope::kFields, .name = "op", .detail = "a comparison from 0 to 4", .explanation = "How the driver compares. It may be left out where the condition admits one comparison only.", .value = "2", .snippet = "${1:2}", .isOfActions = false},
    {Scope::kFields, "value", "what the type takes", "A number, an option's text or a list of options, as the type takes it.", "0", "${1:0}"},
    {Scope::kFields, "value2", kNumber, kAsNamed, "0", "${1:0}"},
    {.scope = Scope::kFields, .name = "value3", .detail = kNumber, .explanation = kAsNamed, .value = "0", .snippet = "${1:0}", .isOfConditions = false},
    {.scope = Scope::kFields, .name = "value4", .detail = kNumber, .explanation = kAsNamed, .value = "0", .snippet = "${1:0}", .isOfConditions = false},
    {.scope = Scope::kFields, .name = "option1", .detail = kByte, .explanation = kAsNamed, .value = "0", .snippet = "${1:0}", .isOfConditions = false},
    {.scope = Scope::kFields, .name = "option2", .detail = kByte, .explanation = kAsNamed, .value = "0", .snippet = "${1:0}", .isOfConditions = false},
    {.scope = Scope::kFields, .name = "option3", .detail = kByte, .explanation = kAsNamed, .value = "0", .snippet = "${1:0}", .isOfConditions = false},

    {Scope::kText, "text", "a text", "The text itself. Without a flag, it may stand without the object.", "\"\"", "\"$1\""},
    {Scope::kText, "flag", "0 or 1", kAsNamed, "1", "${1:1}"},
};
// clang-format on

std::string kindOf(const Word& word) { return word.kind == WordKind::kCondition ? "condition" : "action"; }

std::string formOf(const Word& word) {
  const std::string count = std::to_string(word.options.size());
  switch (word.form) {
    case ValueForm::kOption:
      return word.options.size() == 1 ? "one option" : "one of " + count + " options";
    case ValueForm::kBits:
      return "any of " + count + " options";
    case ValueForm::kUnsigned:
    case ValueForm::kSigned:
      break;
  }
  std::string range = std::to_string(word.least);
  if (word.most != word.least) range += " to " + std::to_string(word.most);
  if (!word.units.empty()) range.append(", in ").append(word.units);
  return range;
}

/// "comparison 2", "comparison 0, 1, 2, 3 or 4"
std::string comparisonsOf(const Word& word) {
  std::string list;
  const std::uint32_t last = static_cast<std::uint32_t>(std::bit_width(word.operators)) - 1;
  for (std::uint32_t op = 0; op <= last; ++op) {
    if ((word.operators >> op & 1U) == 0) continue;
    if (!list.empty()) list += op == last ? " or " : ", ";
    list += std::to_string(op);
  }
  const std::string_view where = word.onlyOperator() ? "\"op\" may be left out" : "\"op\" is required";
  return "Comparison " + list + ": " + std::string(where) + '.';
}

std::string numberOf(const QtfOptionInfo& option) { return std::to_string(static_cast<std::uint32_t>(option.Value)); }

}  // namespace

std::span<const MemberRow> allMembers() { return kMembers; }

const MemberRow* memberOf(Scope scope, WordKind kind, std::string_view name) {
  const bool isCondition = kind == WordKind::kCondition;
  const auto* const row = std::ranges::find_if(kMembers, [&](const MemberRow& member) {
    const bool isOfKind = scope != Scope::kFields || (isCondition ? member.isOfConditions : member.isOfActions);
    return member.scope == scope && member.name == name && isOfKind;
  });
  return row == std::end(kMembers) ? nullptr : row;
}

std::string detailOf(const Word& word) { return kindOf(word) + ' ' + std::to_string(word.id) + ", " + formOf(word); }

Explanation explain(const Word& word) {
  Explanation explanation{.title = std::string{word.name}, .detail = detailOf(word), .paragraphs = {}, .items = {}};
  if (!word.isEnabled) explanation.paragraphs.emplace_back("It is not enabled in the catalogue.");
  if (word.operators != 0) explanation.paragraphs.push_back(comparisonsOf(word));
  for (const auto& option : word.options)
    explanation.items.push_back('"' + std::string{textOf(option)} + "\" (" + numberOf(option) + ')');
  return explanation;
}

Explanation explain(const Word& word, const QtfOptionInfo& option) {
  return {.title = std::string{textOf(option)},
          .detail = numberOf(option) + ", option of the " + kindOf(word) + " \"" + std::string{word.name} + '"',
          .paragraphs = {},
          .items = {}};
}

Explanation explain(const MemberRow& member) {
  return {.title = std::string{member.name},
          .detail = std::string{member.detail},
          .paragraphs = {std::string{member.explanation}},
          .items = {}};
}

Explanation explain(Rule rule) {
  const auto& row = rowOf(rule);
  return {.title = codeOf(rule),
          .detail = std::string{row.title},
          .paragraphs = {std::string{row.explanation}},
          .items = {}};
}

}  // namespace documents
