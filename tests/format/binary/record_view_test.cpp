// SPDX-License-Identifier: Apache-2.0
#include "format/binary/record_view.h"

#include <gtest/gtest.h>

#include "format/bytes.h"
#include "tests/support/bytes.h"
#include "tests/support/packed.h"

namespace test {
namespace {

Bytes copied(std::span<const std::byte> bytes) {
  Bytes result;
  for (const std::byte byte : bytes) result.push_back(static_cast<std::uint8_t>(byte));
  return result;
}

/// A text up to its zero unit, and this too; nothing when it has none.
template <class Unit>
Bytes terminated(std::span<const std::byte> text) {
  const std::size_t size = (vqs::unitsBeforeZero<Unit>(text) + 1) * sizeof(Unit);
  return size <= text.size() ? copied(text.first(size)) : Bytes{};
}

TEST(PackedPolicyView, gives_texts_with_their_terminator) {
  const auto policy = packedRecord(
      Record{3972}.text16(0, u"ab").text(128, "cde").text16(436 + 14, u"f").text16(436 + 2 * 528 + 14, u"gh"));
  const vqs::PackedPolicyView view{policy};
  EXPECT_EQ(terminated<char16_t>(view.name()), hex("61 00 62 00 00 00"));
  EXPECT_EQ(terminated<char>(view.description()), hex("63 64 65 00"));
  EXPECT_EQ(terminated<char16_t>(view.text(0)), hex("66 00 00 00"));
  EXPECT_EQ(terminated<char16_t>(view.text(1)), hex("00 00"));
  EXPECT_EQ(terminated<char16_t>(view.text(2)), hex("67 00 68 00 00 00"));
}

TEST(PackedPolicyView, finds_no_text_without_a_zero_up_to_the_end) {
  const auto policy = packedRecord(Record{3972, 1});
  const vqs::PackedPolicyView view{policy};
  EXPECT_EQ(terminated<char16_t>(view.name()), Bytes{});
  EXPECT_EQ(terminated<char>(view.description()), Bytes{});
  EXPECT_EQ(terminated<char16_t>(view.text(0)), Bytes{});
  EXPECT_EQ(terminated<char16_t>(view.text(4)), Bytes{});
}

}  // namespace
}  // namespace test
