// SPDX-License-Identifier: Apache-2.0
#include "documents/vocabulary/distance.h"

#include <algorithm>
#include <numeric>
#include <utility>
#include <vector>

namespace documents {

std::size_t editDistance(std::string_view from, std::string_view to) {
  std::vector<std::size_t> beforeLast(to.size() + 1);
  std::vector<std::size_t> last(to.size() + 1);
  std::vector<std::size_t> row(to.size() + 1);
  std::iota(last.begin(), last.end(), std::size_t{0});
  for (std::size_t i = 0; i < from.size(); ++i) {
    row[0] = i + 1;
    for (std::size_t j = 0; j < to.size(); ++j) {
      const std::size_t changed = last[j] + (from[i] == to[j] ? 0 : 1);
      row[j + 1] = std::min({row[j] + 1, last[j + 1] + 1, changed});
      const bool isSwapped = i > 0 && j > 0 && from[i] == to[j - 1] && from[i - 1] == to[j];
      if (isSwapped) row[j + 1] = std::min(row[j + 1], beforeLast[j - 1] + 1);
    }
    std::swap(beforeLast, last);
    std::swap(last, row);
  }
  return last.back();
}

}  // namespace documents
