// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "format/catalogue/row.h"

namespace documents {

enum class WordKind : std::uint8_t { kCondition, kAction };

/// How the value of a condition or an action is written.
enum class ValueForm : std::uint8_t {
  /// one of the options
  kOption,
  /// any of the options together
  kBits,
  /// a number in a range without a sign, or with one
  kUnsigned,
  kSigned
};

/// A condition or action type as documents speak of it: a row of the catalogue, and what follows from it.
struct Word {
  WordKind kind;
  std::uint32_t id;
  std::string_view name;
  /// "mW", "%", or empty
  std::string_view units;
  ValueForm form;
  std::int64_t least;
  std::int64_t most;
  bool isEnabled;
  /// comparisons admitted, bit n for op n; 0 for an action
  std::uint32_t operators;
  std::span<const QtfOptionInfo> options;

  /// The comparison that need not be written; nothing when there are several.
  [[nodiscard]] std::optional<std::uint32_t> onlyOperator() const;
  /// The options' bits together.
  [[nodiscard]] std::uint32_t allBits() const;
};

/// All of a kind, by id.
std::span<const Word> conditionWords();
std::span<const Word> actionWords();
std::span<const Word> wordsOf(WordKind kind);

/// Nothing when no catalogue has it. The name has to be exact; foldedWord takes any case.
const Word* wordOf(WordKind kind, std::uint32_t id);
const Word* wordOf(WordKind kind, std::string_view name);
const Word* foldedWord(WordKind kind, std::string_view name);

/// The text of an option, which its record ends in NUL.
std::string_view textOf(const QtfOptionInfo& option);
/// The text of a value of a word: the first option that has it; nothing when none has.
std::optional<std::string_view> optionText(const Word& word, std::uint32_t value);
/// The value of an option's text; nothing when there is no such option. foldedOption takes any case.
std::optional<std::uint32_t> optionValue(const Word& word, std::string_view text);
const QtfOptionInfo* foldedOption(const Word& word, std::string_view text);

/// The names of this kind that are nearest to what was written, nearest first; at most three, none when none is near.
std::vector<std::string_view> nearestWords(WordKind kind, std::string_view written);
std::vector<std::string_view> nearestOptions(const Word& word, std::string_view written);

/// What a value may be, as the end of a sentence: `"AC Power" (0) or "DC Power" (1) is expected`.
std::string expectation(const Word& word);

}  // namespace documents
