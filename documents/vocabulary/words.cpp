// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>

#include "documents/vocabulary/fold.h"
#include "documents/vocabulary/vocabulary.h"
#include "format/catalogue/actions.h"
#include "format/catalogue/conditions.h"

namespace documents {
namespace {

/// The options of these two kinds are templates of a policy's texts, no values.
constexpr bool hasTemplates(std::uint32_t type) { return type == VQS_VALUE_APPLICATION || type == VQS_VALUE_REGISTRY; }

template <class Row>
constexpr Word wordFrom(const Row& row, WordKind kind, std::uint32_t operators) {
  Word word{};
  word.kind = kind;
  word.id = row.id;
  word.name = row.name;
  word.units = row.units;
  word.isEnabled = row.enabled != 0;
  word.operators = operators;
  if (!hasTemplates(row.type)) word.options = row.options;
  word.form = row.type == vqs::kSigned ? ValueForm::kSigned : ValueForm::kUnsigned;
  if (!word.options.empty()) word.form = row.type == vqs::kBitSet ? ValueForm::kBits : ValueForm::kOption;
  const bool isSigned = word.form == ValueForm::kSigned;
  word.least = isSigned ? static_cast<std::int64_t>(static_cast<std::int32_t>(row.min)) : row.min;
  word.most = isSigned ? static_cast<std::int64_t>(static_cast<std::int32_t>(row.max)) : row.max;
  return word;
}

constexpr auto kConditions = [] {
  std::array<Word, std::size(vqs::kConditionRows)> words{};
  std::ranges::transform(vqs::kConditionRows, words.begin(), [](const vqs::ConditionRow& row) {
    return wordFrom(row, WordKind::kCondition, row.operators);
  });
  return words;
}();

constexpr auto kActions = [] {
  std::array<Word, std::size(vqs::kActionRows)> words{};
  std::ranges::transform(vqs::kActionRows, words.begin(),
                         [](const vqs::ActionRow& row) { return wordFrom(row, WordKind::kAction, 0); });
  return words;
}();

/// The places of words in the order of their names, whatever their case.
template <std::size_t N>
constexpr std::array<std::uint16_t, N> sortedByName(const std::array<Word, N>& words) {
  std::array<std::uint16_t, N> places{};
  for (std::size_t i = 0; i < N; ++i) places[i] = static_cast<std::uint16_t>(i);
  std::ranges::sort(places, [&words](std::uint16_t first, std::uint16_t second) {
    return compareFolded(words[first].name, words[second].name) < 0;
  });
  return places;
}

constexpr auto kConditionsByName = sortedByName(kConditions);
constexpr auto kActionsByName = sortedByName(kActions);

template <std::size_t N>
constexpr bool areNamesUnique(const std::array<Word, N>& words, const std::array<std::uint16_t, N>& places) {
  for (std::size_t i = 1; i < N; ++i)
    if (compareFolded(words[places[i - 1]].name, words[places[i]].name) == 0) return false;
  return true;
}
static_assert(areNamesUnique(kConditions, kConditionsByName), "any case of a name stands for one condition");
static_assert(areNamesUnique(kActions, kActionsByName), "any case of a name stands for one action");

std::span<const std::uint16_t> placesOf(WordKind kind) {
  if (kind == WordKind::kCondition) return kConditionsByName;
  return kActionsByName;
}

}  // namespace

std::optional<std::uint32_t> Word::onlyOperator() const {
  if (!std::has_single_bit(operators)) return std::nullopt;
  return static_cast<std::uint32_t>(std::countr_zero(operators));
}

std::uint32_t Word::allBits() const {
  std::uint32_t bits = 0;
  for (const auto& option : options) bits |= static_cast<std::uint32_t>(option.Value);
  return bits;
}

std::span<const Word> conditionWords() { return kConditions; }

std::span<const Word> actionWords() { return kActions; }

std::span<const Word> wordsOf(WordKind kind) { return kind == WordKind::kCondition ? conditionWords() : actionWords(); }

const Word* wordOf(WordKind kind, std::uint32_t id) {
  // Ids are indexes: the catalogues prove it where they are.
  const auto words = wordsOf(kind);
  return id < words.size() ? &words[id] : nullptr;
}

const Word* foldedWord(WordKind kind, std::string_view name) {
  const auto words = wordsOf(kind);
  const auto places = placesOf(kind);
  const auto isBefore = [&](std::uint16_t place) { return compareFolded(words[place].name, name) < 0; };
  const auto found = std::ranges::partition_point(places, isBefore);
  if (found == places.end() || compareFolded(words[*found].name, name) != 0) return nullptr;
  return &words[*found];
}

const Word* wordOf(WordKind kind, std::string_view name) {
  const Word* word = foldedWord(kind, name);
  return word != nullptr && word->name == name ? word : nullptr;
}

}  // namespace documents
