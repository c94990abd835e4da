// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <iterator>

#include "documents/vocabulary/distance.h"
#include "documents/vocabulary/fold.h"
#include "documents/vocabulary/vocabulary.h"

namespace documents {
namespace {

constexpr std::size_t kMostNames = 3;
/// Fewer characters than these begin too many names to say anything.
constexpr std::size_t kLeastBeginning = 3;
/// Behind every name that is a slip away.
constexpr std::size_t kBeginning = VQS_CATALOGUE_NAME_SIZE;
constexpr std::size_t kFar = static_cast<std::size_t>(-1);

/// In lower case, with what people write between words as one character.
std::string comparable(std::string_view name) {
  std::string result;
  std::ranges::transform(name, std::back_inserter(result), [](char character) {
    return character == '_' || character == '-' ? ' ' : foldedCharacter(character);
  });
  return result;
}

/// How far a name is from what was written.
std::size_t distanceTo(std::string_view name, std::string_view written) {
  const std::string known = comparable(name);
  const std::size_t most = mostChanges(known);
  const std::size_t longer = std::max(known.size(), written.size());
  const bool canBeSlip = longer - std::min(known.size(), written.size()) <= most;
  const std::size_t distance = canBeSlip ? editDistance(written, known) : kFar;
  if (distance <= most) return distance;
  return written.size() >= kLeastBeginning && known.starts_with(written) ? kBeginning : kFar;
}

/// The nearest of a list's names.
template <class List, class Name>
std::vector<std::string_view> nearestOf(const List& list, std::string_view written, const Name& nameOf) {
  struct Candidate {
    std::size_t distance;
    std::string_view name;
  };
  // Longer than any name and the most changes to it: not to be looked at character by character.
  constexpr std::size_t kLongest = 2 * VQS_CATALOGUE_NAME_SIZE;
  if (written.empty() || written.size() > kLongest) return {};
  const std::string wanted = comparable(written);
  std::vector<Candidate> candidates;
  for (const auto& entry : list) {
    const std::string_view name = nameOf(entry);
    const std::size_t distance = distanceTo(name, wanted);
    if (distance != kFar) candidates.push_back({distance, name});
  }
  std::ranges::stable_sort(candidates, {}, &Candidate::distance);
  std::vector<std::string_view> names;
  for (const auto& [distance, name] : candidates) {
    // Who made one slip has hardly made three.
    const bool isFurther = distance < kBeginning && distance > 2 * candidates.front().distance;
    if (names.size() < kMostNames && !isFurther) names.push_back(name);
  }
  return names;
}

}  // namespace

std::vector<std::string_view> nearestWords(WordKind kind, std::string_view written) {
  return nearestOf(wordsOf(kind), written, [](const Word& word) { return word.name; });
}

std::vector<std::string_view> nearestOptions(const Word& word, std::string_view written) {
  return nearestOf(word.options, written, textOf);
}

}  // namespace documents
