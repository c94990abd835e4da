// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <vector>

namespace documents {

/// The most values, by their places, that grow from one to the next: a longest increasing subsequence, always the same
/// one.
std::vector<std::size_t> longestGrowing(const std::vector<std::size_t>& values);

/// A pair of places, in a first and a second list.
struct Place {
  std::size_t first;
  std::size_t second;

  bool operator==(const Place&) const = default;
};

/// The most pairs of equal entries that stand in the same order in both lists: a longest common subsequence. What both
/// begin and end with is paired as it stands. `isEqual` is asked with two places.
template <class IsEqual>
std::vector<Place> longestCommon(std::size_t firstSize, std::size_t secondSize, const IsEqual& isEqual) {
  std::vector<Place> pairs;
  std::size_t start = 0;
  while (start < firstSize && start < secondSize && isEqual(start, start)) {
    pairs.push_back({start, start});
    ++start;
  }
  std::size_t end = 0;
  while (firstSize - end > start && secondSize - end > start && isEqual(firstSize - end - 1, secondSize - end - 1))
    ++end;
  const std::size_t rows = firstSize - end - start;
  const std::size_t columns = secondSize - end - start;
  // lengths[i * (columns + 1) + j] is what the lists behind these places have in common.
  std::vector<std::size_t> lengths((rows + 1) * (columns + 1));
  const auto at = [&](std::size_t i, std::size_t j) -> std::size_t& { return lengths[i * (columns + 1) + j]; };
  for (std::size_t i = rows; i-- > 0;)
    for (std::size_t j = columns; j-- > 0;)
      at(i, j) = isEqual(start + i, start + j) ? at(i + 1, j + 1) + 1
                                               : (at(i + 1, j) > at(i, j + 1) ? at(i + 1, j) : at(i, j + 1));
  for (std::size_t i = 0, j = 0; i < rows && j < columns;) {
    if (isEqual(start + i, start + j))
      pairs.push_back({start + i++, start + j++});
    else if (at(i + 1, j) >= at(i, j + 1))
      ++i;
    else
      ++j;
  }
  for (; end > 0; --end) pairs.push_back({firstSize - end, secondSize - end});
  return pairs;
}

}  // namespace documents
