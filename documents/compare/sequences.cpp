// SPDX-License-Identifier: Apache-2.0
#include "documents/compare/sequences.h"

#include <algorithm>

namespace documents {

std::vector<std::size_t> longestGrowing(const std::vector<std::size_t>& values) {
  // ends[n] is the place of the least value that ends a growing sequence of n + 1 values so far.
  std::vector<std::size_t> ends;
  std::vector<std::size_t> before(values.size());
  for (std::size_t place = 0; place < values.size(); ++place) {
    const auto end =
        std::ranges::lower_bound(ends, values[place], {}, [&](std::size_t other) { return values[other]; });
    if (end != ends.begin()) before[place] = *(end - 1);
    if (end == ends.end())
      ends.push_back(place);
    else
      *end = place;
  }
  std::vector<std::size_t> sequence(ends.size());
  for (std::size_t i = sequence.size(), place = ends.empty() ? 0 : ends.back(); i-- > 0; place = before[place])
    sequence[i] = place;
  return sequence;
}

}  // namespace documents
