// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

namespace vqs {

/// A text that leaves no room for its NUL does not compile: the write past the field's end is no constant expression.
template <std::size_t N>
constexpr void copyText(char (&field)[N], std::string_view text) {
  for (std::size_t i = 0; i < text.size(); ++i) field[i] = text[i];
  field[text.size()] = '\0';
}

/// Every row's record, made while compiling.
template <class Record, class Row, std::size_t N>
consteval std::array<Record, N> records(const Row (&rows)[N], Record (*make)(const Row&)) {
  std::array<Record, N> made{};
  std::ranges::transform(rows, made.begin(), make);
  return made;
}

}  // namespace vqs
