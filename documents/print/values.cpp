// SPDX-License-Identifier: Apache-2.0
#include "documents/print/values.h"

namespace documents {
namespace {

/// In the options' order; empty unless all bits are options'.
std::vector<std::string_view> wordsForBits(const Word& word, std::uint32_t value) {
  std::vector<std::string_view> words;
  std::uint32_t left = value;
  for (const auto& option : word.options) {
    const auto bits = static_cast<std::uint32_t>(option.Value);
    if (bits == 0 || (left & bits) != bits) continue;
    words.push_back(textOf(option));
    left &= ~bits;
  }
  if (left != 0) words.clear();
  return words;
}

}  // namespace

std::vector<std::string_view> wordsFor(const Word& word, std::uint32_t value) {
  if (word.form == ValueForm::kBits) return wordsForBits(word, value);
  if (const auto text = optionText(word, value)) return {*text};
  return {};
}

std::string numberFor(const Word* word, std::uint32_t value) {
  if (word != nullptr && word->form == ValueForm::kSigned) return std::to_string(static_cast<std::int32_t>(value));
  return std::to_string(value);
}

std::string nameOf(const Word* word, std::uint32_t id) {
  return word != nullptr ? std::string{word->name} : "#" + std::to_string(id);
}

}  // namespace documents
