// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <span>
#include <string_view>

#include "vqs/catalogue.h"

namespace vqs {

inline constexpr std::uint32_t kEnumeration = VQS_VALUE_ENUMERATION;
inline constexpr std::uint32_t kUnsigned = VQS_VALUE_UNSIGNED;
inline constexpr std::uint32_t kSigned = VQS_VALUE_SIGNED;
inline constexpr std::uint32_t kBitSet = VQS_VALUE_BIT_SET;

/// Comparisons that a condition type admits, bit n for op n.
inline constexpr std::uint32_t kSameOnly = 4;
inline constexpr std::uint32_t kSameOrNot = 12;
inline constexpr std::uint32_t kAllOperators = 31;

inline constexpr std::uint32_t kUnbounded = VQS_VALUE_UNBOUNDED;
inline constexpr std::uint32_t kLowestSigned = 0x80000000;

/// A row of a catalogue as it is written down; what is not named is zero or empty.
struct ConditionRow {
  std::uint32_t id = 0;
  std::string_view name;
  std::uint32_t type = 0;
  std::uint32_t operators = 0;
  std::uint32_t min = 0;
  std::uint32_t max = 0;
  std::string_view units = {};
  std::uint32_t enabled = 0;
  std::uint32_t attr1 = 0;
  std::uint32_t driverFlag = 0;
  std::uint32_t attr2 = 0;
  std::uint32_t attr3 = 0;
  std::uint32_t attr4 = 0;
  std::span<const QtfOptionInfo> options = {};
};

struct ActionRow {
  std::uint32_t id = 0;
  std::string_view name;
  std::uint32_t type = 0;
  std::uint32_t min = 0;
  std::uint32_t max = 0;
  std::string_view units = {};
  std::uint32_t enabled = 0;
  std::uint32_t driverFlag = 0;
  std::uint32_t attr1 = 0;
  std::span<const QtfOptionInfo> options = {};
};

template <class Row, std::size_t N>
constexpr bool idsAreIndexes(const Row (&rows)[N]) {
  for (std::size_t i = 0; i < N; ++i)
    if (rows[i].id != i) return false;
  return true;
}

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
