// SPDX-License-Identifier: Apache-2.0
#include <optional>

#include "documents/print/json_text.h"
#include "documents/print/print.h"
#include "documents/print/values.h"

namespace documents {
namespace {

/// The members of an entry that is spelled out.
class Members {
 public:
  void add(std::string_view name, const std::string& value) {
    text_ += text_.empty() ? "{ \"" : ", \"";
    text_.append(name).append("\": ").append(value);
  }
  void addUnlessZero(std::string_view name, std::uint32_t value) {
    if (value != 0) add(name, std::to_string(value));
  }

  [[nodiscard]] std::string text() const { return text_ + " }"; }

 private:
  std::string text_;
};

std::string quotedText(std::string_view text) {
  std::string result;
  appendQuoted(result, text);
  return result;
}

/// The text of an option, a list of them, or a number.
std::string valueText(const Word* word, std::uint32_t value) {
  const auto words = word != nullptr ? wordsFor(*word, value) : std::vector<std::string_view>{};
  if (words.empty()) return numberFor(word, value);
  if (word->form != ValueForm::kBits) return quotedText(words.front());
  std::string list;
  for (const auto text : words) list += (list.empty() ? "[" : ", ") + quotedText(text);
  return list + "]";
}

std::string entry(const std::string& name, const std::string& value) {
  return "{ " + quotedText(name) + ": " + value + " }";
}

bool hasValueOnly(const VqsPolicyAction& action) {
  return action.value2 == 0 && action.value3 == 0 && action.value4 == 0 && action.option1 == 0 && action.option2 == 0 &&
         action.option3 == 0;
}

}  // namespace

std::string documentEntry(const VqsPolicyCondition& condition) {
  const Word* word = wordOf(WordKind::kCondition, condition.conditionId);
  const std::string value = valueText(word, condition.value);
  const bool needsOperator = word == nullptr || word->onlyOperator() != condition.op;
  if (!needsOperator && condition.value2 == 0) return entry(nameOf(word, condition.conditionId), value);
  Members members;
  if (needsOperator) members.add("op", std::to_string(condition.op));
  members.add("value", value);
  members.addUnlessZero("value2", condition.value2);
  return entry(nameOf(word, condition.conditionId), members.text());
}

std::string documentEntry(const VqsPolicyAction& action) {
  const Word* word = wordOf(WordKind::kAction, action.actionId);
  const std::string value = valueText(word, action.value);
  if (hasValueOnly(action)) return entry(nameOf(word, action.actionId), value);
  Members members;
  members.add("value", value);
  members.addUnlessZero("value2", action.value2);
  members.addUnlessZero("value3", action.value3);
  members.addUnlessZero("value4", action.value4);
  members.addUnlessZero("option1", action.option1);
  members.addUnlessZero("option2", action.option2);
  members.addUnlessZero("option3", action.option3);
  return entry(nameOf(word, action.actionId), members.text());
}

}  // namespace documents
