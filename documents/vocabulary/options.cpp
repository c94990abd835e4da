// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "documents/vocabulary/fold.h"
#include "documents/vocabulary/vocabulary.h"

namespace documents {
namespace {

const QtfOptionInfo* findOption(const Word& word, const auto& isMeant) {
  const auto found = std::ranges::find_if(word.options, isMeant);
  return found == word.options.end() ? nullptr : &*found;
}

}  // namespace

std::string_view textOf(const QtfOptionInfo& option) { return option.Text; }

std::optional<std::string_view> optionText(const Word& word, std::uint32_t value) {
  const auto* option = findOption(
      word, [value](const QtfOptionInfo& known) { return static_cast<std::uint32_t>(known.Value) == value; });
  if (option == nullptr) return std::nullopt;
  return textOf(*option);
}

std::optional<std::uint32_t> optionValue(const Word& word, std::string_view text) {
  const auto* option = findOption(word, [text](const QtfOptionInfo& known) { return textOf(known) == text; });
  if (option == nullptr) return std::nullopt;
  return static_cast<std::uint32_t>(option->Value);
}

const QtfOptionInfo* foldedOption(const Word& word, std::string_view text) {
  return findOption(word, [text](const QtfOptionInfo& known) { return compareFolded(textOf(known), text) == 0; });
}

}  // namespace documents
