// SPDX-License-Identifier: Apache-2.0
#include "documents/vocabulary/nearest.h"

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

struct Candidate {
  std::size_t distance;
  std::string_view name;
};

}  // namespace

std::vector<std::string_view> nearestOf(std::span<const std::string_view> names, std::string_view written) {
  // Longer than any name and the most changes to it: not to be looked at character by character.
  constexpr std::size_t kLongest = 2 * VQS_CATALOGUE_NAME_SIZE;
  if (written.empty() || written.size() > kLongest) return {};
  const std::string wanted = comparable(written);
  std::vector<Candidate> candidates;
  for (const std::string_view name : names) {
    const std::size_t distance = distanceTo(name, wanted);
    if (distance != kFar) candidates.push_back({distance, name});
  }
  std::ranges::stable_sort(candidates, {}, &Candidate::distance);
  std::vector<std::string_view> nearest;
  for (const auto& [distance, name] : candidates) {
    // Who made one slip has hardly made three.
    const bool isFurther = distance < kBeginning && distance > 2 * candidates.front().distance;
    if (nearest.size() < kMostNames && !isFurther) nearest.push_back(name);
  }
  return nearest;
}

std::vector<std::string_view> nearestWords(WordKind kind, std::string_view written) {
  std::vector<std::string_view> names;
  for (const Word& word : wordsOf(kind)) names.push_back(word.name);
  return nearestOf(names, written);
}

std::vector<std::string_view> nearestOptions(const Word& word, std::string_view written) {
  std::vector<std::string_view> texts;
  for (const auto& option : word.options) texts.push_back(textOf(option));
  return nearestOf(texts, written);
}

}  // namespace documents
