// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace documents {

/// A character in lower case. The vocabulary is ASCII: others are left alone.
constexpr char foldedCharacter(char character) {
  return character >= 'A' && character <= 'Z' ? static_cast<char>(character + ('a' - 'A')) : character;
}

/// Below zero, zero or above it, as the first is before, the same as or behind the second, whatever their case.
constexpr int compareFolded(std::string_view first, std::string_view second) {
  const std::size_t common = std::min(first.size(), second.size());
  for (std::size_t i = 0; i < common; ++i) {
    const int difference = foldedCharacter(first[i]) - foldedCharacter(second[i]);
    if (difference != 0) return difference;
  }
  return first.size() == second.size() ? 0 : first.size() < second.size() ? -1 : 1;
}

}  // namespace documents
