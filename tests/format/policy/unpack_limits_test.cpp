// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/format/policy/conversions.h"
#include "tests/support/policy_model.h"

namespace test {
namespace {

using ::testing::Test;
using ::testing::TestWithParam;
using ::testing::Values;

class UnpackLimits : public TestWithParam<std::uint32_t> {
 protected:
  static std::uint32_t version() { return GetParam(); }
  static const Layout& layout() { return layoutOf(GetParam()); }

  int unpackPacked(const Bytes& packed) {
    body.assign(layout().size, kPoison);
    return unpack(version(), packed, body);
  }
  /// The result at and below a limit, and above it.
  void expectLimit(std::size_t countOffset, std::uint32_t limit) {
    auto packed = packedPolicy(full);
    for (const std::uint32_t count : {0U, 1U, limit - 1, limit})
      EXPECT_EQ(unpackPacked(packed.u32(countOffset, count)), 0);
    for (const std::uint32_t count : {limit + 1, 0x80000000U, 0xFFFFFFFFU})
      EXPECT_EQ(unpackPacked(packed.u32(countOffset, count)), 1) << count;
  }
  /// The body after a failure: scalars and counts of the packed record, and the entries of `content`.
  void expectPartly(const Bytes& packed, std::uint32_t conditions, std::uint32_t texts, std::uint32_t actions) {
    EXPECT_EQ(unpackPacked(packed), 1);
    auto expected = policyBody(version(), content, kPoison);
    expected.u32(layout().conditionCount, conditions).u32(layout().textCount, texts);
    expected.u32(layout().actionCount, actions);
    EXPECT_EQ(difference(body, expected.bytes()), "");
  }

  const Policy full = fullPolicy(GetParam());
  Policy content = full;
  Bytes body;
};

TEST_P(UnpackLimits, conditions_stop_at_15) { expectLimit(184, 15); }
TEST_P(UnpackLimits, actions_stop_at_32) { expectLimit(188, 32); }
TEST_P(UnpackLimits, texts_stop_at_5) { expectLimit(192, 5); }

TEST_P(UnpackLimits, comparisons_go_up_to_4) {
  for (const std::size_t at : {0U, 7U, 14U}) {
    auto packed = packedPolicy(full);
    const std::size_t op = 196 + 16 * at + 4;
    for (const std::uint32_t good : {0U, 1U, 2U, 3U, 4U}) EXPECT_EQ(unpackPacked(packed.u32(op, good)), 0) << good;
    for (const std::uint32_t bad : {5U, 6U, 0x104U, 0x80000000U, 0xFFFFFFFFU})
      EXPECT_EQ(unpackPacked(packed.u32(op, bad)), 1) << bad;
  }
}

TEST_P(UnpackLimits, text_flags_go_up_to_1) {
  for (const std::size_t at : {0U, 2U, 4U}) {
    auto packed = packedPolicy(full);
    const std::size_t flag = 436 + 528 * at;
    for (const std::uint8_t good : {std::uint8_t{0}, std::uint8_t{1}})
      EXPECT_EQ(unpackPacked(packed.u8(flag, good)), 0);
    for (const std::uint8_t bad : {std::uint8_t{2}, std::uint8_t{0x80}, std::uint8_t{0xFF}})
      EXPECT_EQ(unpackPacked(packed.u8(flag, bad)), 1);
  }
}

TEST_P(UnpackLimits, too_many_conditions_show_after_the_scalars) {
  content.conditions.clear();
  content.texts.clear();
  content.actions.clear();
  auto packed = packedPolicy(full);
  expectPartly(packed.u32(184, 16), 16, 5, 32);
}

TEST_P(UnpackLimits, a_comparison_shows_after_the_conditions_before_it) {
  content.conditions.resize(3);
  content.texts.clear();
  content.actions.clear();
  auto packed = packedPolicy(full);
  expectPartly(packed.u32(196 + 16 * 3 + 4, 5), 15, 5, 32);
}

TEST_P(UnpackLimits, too_many_texts_show_after_the_conditions) {
  content.texts.clear();
  content.actions.clear();
  auto packed = packedPolicy(full);
  expectPartly(packed.u32(192, 6), 15, 6, 32);
}

TEST_P(UnpackLimits, a_text_flag_shows_before_its_text) {
  content.texts.clear();
  content.actions.clear();
  auto packed = packedPolicy(full);
  expectPartly(packed.u8(436, 2), 15, 5, 32);
}

TEST_P(UnpackLimits, too_many_actions_show_after_the_texts) {
  content.actions.clear();
  auto packed = packedPolicy(full);
  expectPartly(packed.u32(188, 33), 15, 5, 33);
}

INSTANTIATE_TEST_SUITE_P(To, UnpackLimits, Values(0U, 1U, 2U), versionName);

class UnpackOption1 : public Test {
 protected:
  UnpackOption1() {
    content.actions.resize(4);
    content.actions[2].option1 = 1;
  }

  Policy content = fullPolicy(0);
};

TEST_F(UnpackOption1, must_be_zero_in_version_0) {
  auto packed = packedPolicy(content);
  for (const std::uint8_t bad : {std::uint8_t{1}, std::uint8_t{0x80}, std::uint8_t{0xFF}}) {
    Bytes body(804, kPoison);
    EXPECT_EQ(unpack(0, packed.u8(3076 + 28 * 2 + 12, bad), body), 1);
    auto expected = content;
    expected.actions.resize(2);
    EXPECT_EQ(difference(body, policyBody(0, expected, kPoison).u32(800, 4).bytes()), "");
  }
  Bytes body(804, kPoison);
  EXPECT_EQ(unpack(0, packed.u8(3076 + 28 * 2 + 12, 0), body), 0);
}

TEST_F(UnpackOption1, is_carried_in_versions_1_and_2) {
  for (const std::uint32_t version : {1U, 2U}) {
    Bytes body(layoutOf(version).size, kPoison);
    EXPECT_EQ(unpack(version, packedPolicy(content), body), 0);
    EXPECT_EQ(difference(body, policyBody(version, content, kPoison).bytes()), "");
  }
}

TEST_F(UnpackOption1, is_the_only_field_that_version_0_minds) {
  auto full = fullPolicy(1);
  for (auto& action : full.actions) action.option1 = 0;
  Bytes body(804, kPoison);
  EXPECT_EQ(unpack(0, packedPolicy(full), body), 0);
  EXPECT_EQ(difference(body, policyBody(0, fullPolicy(0), kPoison).bytes()), "");
}

TEST_F(UnpackOption1, beyond_the_count_does_not_matter) {
  Bytes body(804, kPoison);
  auto packed = packedPolicy(content);
  EXPECT_EQ(unpack(0, packed.u32(188, 2), body), 0);
}

TEST(PackedCount, above_its_limit_packs_and_does_not_come_back) {
  auto body = policyBody(0, fullPolicy(0));
  vqs::PackedPolicy packed{};
  EXPECT_EQ(pack(0, body.u32(120, 20), packed), 0);
  EXPECT_EQ(packed.conditionCount, 20U);
  Bytes back(804, kPoison);
  EXPECT_EQ(unpack(0, bytesOf(packed), back), 1);
}

TEST(ShortActions, come_back_with_their_other_fields_zero) {
  const auto content = fullPolicy(0);
  vqs::PackedPolicy packed{};
  EXPECT_EQ(pack(0, policyBody(0, content, 0xEE), packed), 0);
  for (const std::uint32_t version : {1U, 2U}) {
    Bytes body(layoutOf(version).size, kPoison);
    EXPECT_EQ(unpack(version, bytesOf(packed), body), 0);
    EXPECT_EQ(difference(body, policyBody(version, content, kPoison).bytes()), "");
  }
}

}  // namespace
}  // namespace test
