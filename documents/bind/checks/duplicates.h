// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

namespace documents {

/// Each index whose key an earlier one of the indexes has, with the first that has it, in the order of the indexes. The
/// time grows with n log n.
template <class KeyOf>
std::vector<std::pair<std::size_t, std::size_t>> duplicates(std::vector<std::size_t> indexes, const KeyOf& keyOf) {
  std::ranges::stable_sort(indexes, {}, keyOf);
  std::vector<std::pair<std::size_t, std::size_t>> found;
  std::size_t first = 0;
  for (std::size_t i = 1; i < indexes.size(); ++i) {
    if (keyOf(indexes[i]) == keyOf(indexes[first]))
      found.emplace_back(indexes[first], indexes[i]);
    else
      first = i;
  }
  std::ranges::sort(found, {}, &std::pair<std::size_t, std::size_t>::second);
  return found;
}

}  // namespace documents
