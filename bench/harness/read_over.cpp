// SPDX-License-Identifier: Apache-2.0
#include "bench/harness/read_over.h"

#include <numeric>
#include <span>

namespace bench {

std::uint32_t sumOfWords(const void* memory, std::size_t size) {
  const std::span words{static_cast<const std::uint32_t*>(memory), size / sizeof(std::uint32_t)};
  return std::accumulate(words.begin(), words.end(), 0U);
}

}  // namespace bench
