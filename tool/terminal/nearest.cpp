// SPDX-License-Identifier: Apache-2.0
#include "tool/terminal/nearest.h"

#include <algorithm>
#include <iterator>

#include "documents/vocabulary/distance.h"

namespace tool {
namespace {

char foldedCharacter(char character) {
  if (character == '_' || character == ' ') return '-';
  return character >= 'A' && character <= 'Z' ? static_cast<char>(character + ('a' - 'A')) : character;
}

}  // namespace

std::string folded(std::string_view name) {
  std::string result;
  std::ranges::transform(name, std::back_inserter(result), foldedCharacter);
  return result;
}

std::string didYouMean(std::string_view name, const std::vector<std::string>& known) {
  const std::string wanted = folded(name);
  const std::string* nearest = nullptr;
  std::size_t smallest = name.size() + 1;
  for (const auto& candidate : known) {
    const std::size_t distance = documents::editDistance(wanted, folded(candidate));
    if (distance >= smallest || distance > documents::mostChanges(candidate)) continue;
    nearest = &candidate;
    smallest = distance;
  }
  return nearest == nullptr ? "" : "; did you mean \"" + *nearest + "\"?";
}

}  // namespace tool
