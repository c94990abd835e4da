// SPDX-License-Identifier: Apache-2.0
#include "bench/harness/read_over.h"

#include <array>
#include <numeric>
#include <span>

namespace bench {

std::uint32_t sumOfWords(const void* memory, std::size_t size) {
  // A line of the cache at a time, so that no sum waits for the one before.
  using Line = std::array<std::uint32_t, 16>;
  Line sums{};
  for (const Line& line : std::span{static_cast<const Line*>(memory), size / sizeof(Line)})
    for (std::size_t i = 0; i < line.size(); ++i) sums[i] += line[i];
  return std::accumulate(sums.begin(), sums.end(), 0U);
}

}  // namespace bench
