// SPDX-License-Identifier: Apache-2.0
#include "documents/print/print.h"
#include "documents/print/values.h"
#include "documents/text/utf.h"

namespace documents {
namespace {

/// "Foreground, Full Screen", "4600 centi-C".
std::string valueInWords(const Word* word, std::uint32_t value) {
  const auto words = word != nullptr ? wordsFor(*word, value) : std::vector<std::string_view>{};
  std::string text;
  for (const auto option : words) text.append(text.empty() ? "" : ", ").append(option);
  if (!words.empty()) return text;
  text = numberFor(word, value);
  if (word != nullptr && !word->units.empty()) text.append(" ").append(word->units);
  return text;
}

/// Fields that are hardly ever used, in brackets: " (value2 7, option1 1)".
class Remarks {
 public:
  void add(std::string_view name, std::uint32_t value) {
    if (value == 0) return;
    text_.append(text_.empty() ? " (" : ", ").append(name).append(" ").append(std::to_string(value));
  }

  [[nodiscard]] std::string text() const { return text_.empty() ? text_ : text_ + ")"; }

 private:
  std::string text_;
};

constexpr char32_t kReplacement = 0xFFFD;

/// Replaces what is no UTF-8; `unit` bytes of it are one character.
std::string replaced(std::string_view utf8, std::size_t unit) {
  std::string text;
  while (!utf8.empty()) {
    const std::size_t valid = validUtf8(utf8);
    text += utf8.substr(0, valid);
    utf8.remove_prefix(valid);
    if (utf8.empty()) break;
    appendUtf8(text, kReplacement);
    utf8.remove_prefix(unit);
  }
  return text;
}

}  // namespace

std::string inWords(const VqsPolicyCondition& condition) {
  const Word* word = wordOf(WordKind::kCondition, condition.conditionId);
  const bool isUsual = word != nullptr && word->onlyOperator() == condition.op;
  Remarks remarks;
  remarks.add("value2", condition.value2);
  return nameOf(word, condition.conditionId) + (isUsual ? " is " : " op " + std::to_string(condition.op) + ": ") +
         valueInWords(word, condition.value) + remarks.text();
}

std::string inWords(const VqsPolicyAction& action) {
  const Word* word = wordOf(WordKind::kAction, action.actionId);
  Remarks remarks;
  remarks.add("value2", action.value2);
  remarks.add("value3", action.value3);
  remarks.add("value4", action.value4);
  remarks.add("option1", action.option1);
  remarks.add("option2", action.option2);
  remarks.add("option3", action.option3);
  return nameOf(word, action.actionId) + " " + valueInWords(word, action.value) + remarks.text();
}

std::string readable(const std::u16string& text) {
  constexpr std::size_t kBytesOfSurrogate = 3;
  return replaced(toUtf8(text), kBytesOfSurrogate);
}

std::string readable(std::string_view description) { return replaced(description, 1); }

}  // namespace documents
