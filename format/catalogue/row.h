// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include <vqs/catalogue_records.h>

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

/// One row of a catalogue. The default values are the usual ones: a row names only what differs from them.
struct ConditionRow {
  std::uint32_t id;
  std::string_view name;
  std::uint32_t type = kUnsigned;
  std::uint32_t operators = kAllOperators;
  std::uint32_t min = 0;
  std::uint32_t max = kUnbounded;
  std::string_view units = {};
  std::uint32_t enabled = 1;
  std::uint32_t attr1 = 1;
  std::uint32_t driverFlag = 1;
  std::uint32_t attr2 = 2;
  std::uint32_t attr3 = 1;
  std::uint32_t attr4 = 0;
  std::span<const QtfOptionInfo> options = {};
};

struct ActionRow {
  std::uint32_t id;
  std::string_view name;
  std::uint32_t type = kUnsigned;
  std::uint32_t min = 0;
  std::uint32_t max = kUnbounded;
  std::string_view units = {};
  std::uint32_t enabled = 1;
  std::uint32_t driverFlag = 1;
  std::uint32_t attr1 = 1;
  std::span<const QtfOptionInfo> options = {};
};

template <class Row, std::size_t N>
constexpr bool idsAreIndexes(const Row (&rows)[N]) {
  for (std::size_t i = 0; i < N; ++i)
    if (rows[i].id != i) return false;
  return true;
}

}  // namespace vqs
