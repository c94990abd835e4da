// SPDX-License-Identifier: Apache-2.0
#include "format/bytes.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace test {
namespace {

/// Text of `size` units without a zero, in which every byte is zero in turn, and its bytes.
template <class Unit>
struct Units {
  explicit Units(std::size_t size) : units(size) {
    for (std::size_t i = 0; i < size; ++i) units[i] = i % 2 == 0 || sizeof(Unit) == 1 ? Unit{1} : Unit(0x80 << 8);
  }
  [[nodiscard]] std::span<const Unit> span() const { return units; }
  [[nodiscard]] std::span<const std::byte> bytes() const { return std::as_bytes(span()); }

  std::vector<Unit> units;
};

template <class Unit>
class FormatBytes : public ::testing::Test {};

using UnitTypes = ::testing::Types<char, char16_t>;
TYPED_TEST_SUITE(FormatBytes, UnitTypes);

TYPED_TEST(FormatBytes, units_before_zero_are_found_in_every_length_at_every_place) {
  for (std::size_t size = 0; size < 150; ++size) {
    Units<TypeParam> text{size};
    EXPECT_EQ(vqs::unitsBeforeZero(text.span()), size);
    for (std::size_t zero = size; zero-- > 0;) {
      text.units[zero] = 0;
      EXPECT_EQ(vqs::unitsBeforeZero(text.span()), zero) << size;
    }
  }
}

TYPED_TEST(FormatBytes, a_line_is_searched_the_same_in_both_ways) {
  constexpr std::size_t kUnits = 64 / sizeof(TypeParam);
  for (std::size_t zero = 0; zero <= kUnits; ++zero) {
    Units<TypeParam> line{kUnits};
    if (zero < kUnits) line.units[zero] = 0;
    if (zero + 3 < kUnits) line.units[zero + 3] = 0;
    EXPECT_EQ(vqs::bytesBeforeZero<TypeParam>(line.bytes().data()), zero * sizeof(TypeParam));
    EXPECT_EQ(vqs::bytesBeforeZeroPortably<TypeParam>(line.bytes().data()), zero * sizeof(TypeParam));
  }
}

TYPED_TEST(FormatBytes, texts_are_searched_from_any_address) {
  for (std::size_t offset = 0; offset < sizeof(std::uint64_t); ++offset) {
    std::vector<std::byte> memory(offset + 100 * sizeof(TypeParam), std::byte{7});
    std::fill_n(memory.begin() + static_cast<std::ptrdiff_t>(offset + 90 * sizeof(TypeParam)), sizeof(TypeParam),
                std::byte{0});
    EXPECT_EQ(vqs::unitsBeforeZero<TypeParam>(std::span{memory}.subspan(offset)), 90U);
  }
}

TYPED_TEST(FormatBytes, a_text_is_copied_with_its_zero_and_nothing_behind_it) {
  for (std::size_t zero = 0; zero < 150; ++zero) {
    Units<TypeParam> text{160};
    text.units[zero] = 0;
    std::vector<std::byte> copy(400, std::byte{0xA5});
    const std::size_t size = (zero + 1) * sizeof(TypeParam);
    ASSERT_EQ(vqs::copyTerminated<TypeParam>(copy, text.bytes()), size);
    for (std::size_t i = 0; i < copy.size(); ++i)
      ASSERT_EQ(copy[i], i < size ? text.bytes()[i] : std::byte{0xA5}) << zero << ' ' << i;
  }
}

TYPED_TEST(FormatBytes, a_text_is_copied_only_when_it_ends_and_fits) {
  for (std::size_t size = 0; size < 150; ++size) {
    const Units<TypeParam> endless{size};
    std::vector<std::byte> copy(400);
    EXPECT_EQ(vqs::copyTerminated<TypeParam>(copy, endless.bytes()), 0U);

    Units<TypeParam> text{size + 1};
    text.units[size] = 0;
    const std::size_t whole = (size + 1) * sizeof(TypeParam);
    for (std::size_t room = 0; room <= whole; ++room)
      EXPECT_EQ(vqs::copyTerminated<TypeParam>(std::span{copy}.first(room), text.bytes()), room < whole ? 0U : whole);
  }
}

}  // namespace
}  // namespace test
