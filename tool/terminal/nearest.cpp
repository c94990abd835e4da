// SPDX-License-Identifier: Apache-2.0
#include "tool/terminal/nearest.h"

#include <algorithm>
#include <iterator>
#include <numeric>
#include <utility>

namespace tool {
namespace {

char foldedCharacter(char character) {
  if (character == '_' || character == ' ') return '-';
  return character >= 'A' && character <= 'Z' ? static_cast<char>(character + ('a' - 'A')) : character;
}

/// How many characters of folded names have to be added, dropped, changed or swapped with their neighbour.
std::size_t editDistance(std::string_view from, std::string_view to) {
  std::vector<std::size_t> beforeLast;
  std::vector<std::size_t> last(to.size() + 1);
  std::iota(last.begin(), last.end(), std::size_t{0});
  for (std::size_t i = 0; i < from.size(); ++i) {
    std::vector<std::size_t> row(to.size() + 1, i + 1);
    for (std::size_t j = 0; j < to.size(); ++j) {
      const std::size_t changed = last[j] + (from[i] == to[j] ? 0 : 1);
      row[j + 1] = std::min({row[j] + 1, last[j + 1] + 1, changed});
      const bool swapped = i > 0 && j > 0 && from[i] == to[j - 1] && from[i - 1] == to[j];
      if (swapped) row[j + 1] = std::min(row[j + 1], beforeLast[j - 1] + 1);
    }
    beforeLast = std::exchange(last, std::move(row));
  }
  return last.back();
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
    const std::size_t distance = editDistance(wanted, folded(candidate));
    // A suggestion has to share more with what was typed than it changes.
    if (distance >= smallest || distance > std::max<std::size_t>(1, candidate.size() / 3)) continue;
    nearest = &candidate;
    smallest = distance;
  }
  return nearest == nullptr ? "" : "; did you mean \"" + *nearest + "\"?";
}

}  // namespace tool
