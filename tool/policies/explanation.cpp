// SPDX-License-Identifier: Apache-2.0
#include "tool/policies/explanation.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <sstream>
#include <vector>

#include "documents/findings/rules.h"
#include "documents/print/print.h"
#include "documents/vocabulary/vocabulary.h"
#include "tool/policies/finding_text.h"
#include "tool/terminal/errors.h"
#include "tool/terminal/nearest.h"
#include "tool/terminal/numbers.h"
#include "tool/terminal/text.h"

namespace tool {
namespace {

using documents::ValueForm;
using documents::Word;
using documents::WordKind;

constexpr std::array<WordKind, 2> kWordKinds = {WordKind::kCondition, WordKind::kAction};

const char* nounOf(WordKind kind) { return kind == WordKind::kCondition ? "condition" : "action"; }

/// Lines of at most this many columns, behind an indent.
std::string wrapped(std::string_view text, std::size_t indent) {
  constexpr std::size_t kMostColumns = 100;
  const std::string start(indent, ' ');
  std::string result;
  std::string line = start;
  std::istringstream words{std::string{text}};
  for (std::string word; words >> word;) {
    if (line.size() > indent && displayWidth(line) + 1 + displayWidth(word) > kMostColumns) {
      result += line + '\n';
      line = start;
    }
    line += (line.size() > indent ? " " : "") + word;
  }
  return result + line + '\n';
}

std::string field(const char* name, const std::string& text) {
  constexpr std::size_t kNameWidth = 13;
  return "  " + padded(name, kNameWidth) + text + '\n';
}

std::string optionsOf(const Word& word) {
  const char* name = word.form == ValueForm::kBits ? "any of" : "one of";
  std::string text;
  for (const auto& option : word.options) {
    text += field(name, fmt::format("{} ({})", inQuotes(option.Text), static_cast<std::uint32_t>(option.Value)));
    name = "";
  }
  return text;
}

std::string valueOf(const Word& word) {
  if (!word.options.empty()) return optionsOf(word);
  const std::string units = word.units.empty() ? "" : fmt::format(" {}", word.units);
  return field("value", fmt::format("{} to {}{}", word.least, word.most, units));
}

std::string comparisonsOf(const Word& word) {
  if (const auto only = word.onlyOperator())
    return field("comparison", fmt::format("op {} alone, which can be left out", *only));
  std::vector<unsigned> operators;
  for (unsigned op = 0; op <= VQS_POLICY_MAX_OPERATOR; ++op)
    if ((word.operators >> op & 1U) != 0) operators.push_back(op);
  return field("comparison", fmt::format("op {}: one has to be there", fmt::join(operators, ", ")));
}

std::uint32_t sampleValueOf(const Word& word) {
  return word.options.empty() ? static_cast<std::uint32_t>(word.least)
                              : static_cast<std::uint32_t>(word.options.back().Value);
}

std::string exampleOf(const Word& word) {
  const auto value = sampleValueOf(word);
  if (word.kind == WordKind::kAction) {
    VqsPolicyAction action{};
    action.actionId = word.id;
    action.value = value;
    return documents::documentEntry(action);
  }
  std::uint32_t op = 0;
  while (op < VQS_POLICY_MAX_OPERATOR && (word.operators >> op & 1U) == 0) ++op;
  return documents::documentEntry(VqsPolicyCondition{.conditionId = word.id, .op = op, .value = value, .value2 = 0});
}

std::string explainWord(const Word& word) {
  return fmt::format("{} {}: {}\n", nounOf(word.kind), word.id, printable(word.name)) + valueOf(word) +
         (word.kind == WordKind::kCondition ? comparisonsOf(word) : "") +
         (word.isEnabled ? "" : field("", "It is not enabled in the catalogue.")) + field("example", exampleOf(word));
}

std::string explainRule(const documents::RuleRow& row) {
  const bool isError = row.severity == documents::Severity::kError;
  return fmt::format("{} {}: {}\n", isError ? "error" : "warning", codeOf(row.rule), printable(row.title)) +
         wrapped(row.explanation, 2) + "\n  instead of\n" + indented(row.example, 4) + "  write\n" +
         indented(row.mended, 4);
}

/// The texts with a place: "option "DC Power" (1) of the condition Power Source (0)".
std::string explainOptions(const std::string& text) {
  std::string lines;
  for (const auto kind : kWordKinds)
    for (const auto& word : documents::wordsOf(kind))
      if (const auto* option = documents::foldedOption(word, text); option != nullptr)
        lines += fmt::format("option {} ({}) of the {} {} ({})\n", inQuotes(option->Text),
                             static_cast<std::uint32_t>(option->Value), nounOf(kind), printable(word.name), word.id);
  return lines;
}

const documents::RuleRow* ruleNamed(const std::string& name) {
  const auto rules = documents::allRules();
  const auto found =
      std::ranges::find_if(rules, [&](const auto& row) { return folded(codeOf(row.rule)) == folded(name); });
  return found != rules.end() ? &*found : nullptr;
}

/// "#12" by number, anything else by name.
const Word* wordNamed(WordKind kind, const std::string& name) {
  if (!name.starts_with('#')) return documents::foldedWord(kind, name);
  const auto id = parseNumber<std::uint32_t>(std::string_view{name}.substr(1));
  return id ? documents::wordOf(kind, *id) : nullptr;
}

[[noreturn]] void failToExplain(const std::string& name) {
  std::vector<std::string> known;
  for (const auto kind : kWordKinds)
    for (const auto& word : documents::wordsOf(kind)) {
      known.emplace_back(word.name);
      for (const auto& option : word.options) known.emplace_back(option.Text);
    }
  for (const auto& row : documents::allRules()) known.push_back(codeOf(row.rule));
  throw Failure{
      fmt::format("{} is no condition, action, option or finding's code{}", inQuotes(name), didYouMean(name, known))};
}

}  // namespace

std::string explain(const std::string& name) {
  std::vector<std::string> parts;
  for (const auto kind : kWordKinds)
    if (const auto* word = wordNamed(kind, name); word != nullptr) parts.push_back(explainWord(*word));
  if (auto options = explainOptions(name); !options.empty()) parts.push_back(std::move(options));
  if (const auto* row = ruleNamed(name); row != nullptr) parts.push_back(explainRule(*row));
  if (parts.empty()) failToExplain(name);
  return fmt::format("{}", fmt::join(parts, "\n"));
}

}  // namespace tool
