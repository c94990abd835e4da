// SPDX-License-Identifier: Apache-2.0
#include "binary/record_view.h"

#include <gtest/gtest.h>

#include "binary/packed.h"
#include "support/bytes.h"

namespace test {
namespace {

Bytes copied(std::span<const std::byte> bytes) {
  Bytes result;
  for (const std::byte byte : bytes) result.push_back(static_cast<std::uint8_t>(byte));
  return result;
}

TEST(PackedPolicyView, gives_texts_with_their_terminator) {
  const auto policy = packedRecord(
      Record{3972}.text16(0, u"ab").text(128, "cde").text16(436 + 14, u"f").text16(436 + 2 * 528 + 14, u"gh"));
  const vqs::PackedPolicyView view{policy};
  EXPECT_EQ(copied(view.name()), hex("61 00 62 00 00 00"));
  EXPECT_EQ(copied(view.description()), hex("63 64 65 00"));
  EXPECT_EQ(copied(view.text(0)), hex("66 00 00 00"));
  EXPECT_EQ(copied(view.text(1)), hex("00 00"));
  EXPECT_EQ(copied(view.text(2)), hex("67 00 68 00 00 00"));
}

TEST(PackedPolicyView, gives_each_text_its_flag) {
  const auto policy = packedRecord(Record{3972}.u8(436, 1).u8(436 + 4 * 528, 4).u8(436 + 5 * 528, 5));
  const vqs::PackedPolicyView view{policy};
  EXPECT_EQ(view.textFlag(0), std::byte{1});
  EXPECT_EQ(view.textFlag(3), std::byte{0});
  EXPECT_EQ(view.textFlag(4), std::byte{4});
  EXPECT_EQ(view.textFlag(5), std::byte{5});
}

TEST(PackedPolicyView, gives_runs_of_slots_that_lie_in_the_record) {
  const auto policy = packedRecord(Record{3972}.u32(196, 0x11).u32(212, 0x22).u32(3076, 0x33));
  const vqs::PackedPolicyView view{policy};
  EXPECT_TRUE(view.conditions(0).empty());
  EXPECT_EQ(copied(view.conditions(2)), Record(32).u32(0, 0x11).u32(16, 0x22).bytes());
  EXPECT_EQ(view.conditions(236).size(), 3776U);
  EXPECT_TRUE(view.conditions(237).empty());
  EXPECT_EQ(copied(view.actions(1)), Record(28).u32(0, 0x33).bytes());
  EXPECT_EQ(view.actions(32).size(), 896U);
  EXPECT_TRUE(view.actions(33).empty());
  EXPECT_TRUE(view.holdsTexts(6));
  EXPECT_FALSE(view.holdsTexts(7));
  EXPECT_FALSE(view.holdsTexts(0xFFFFFFFF));
}

TEST(PackedPolicyView, finds_no_text_without_a_zero_up_to_the_end) {
  const auto policy = packedRecord(Record{3972, 1});
  const vqs::PackedPolicyView view{policy};
  EXPECT_TRUE(view.name().empty());
  EXPECT_TRUE(view.description().empty());
  EXPECT_TRUE(view.text(0).empty());
  EXPECT_TRUE(view.text(5).empty());
}

}  // namespace
}  // namespace test
