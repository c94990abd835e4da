// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/format/policy/conversions.h"
#include "tests/support/locale.h"
#include "tests/support/policy_model.h"

namespace test {
namespace {

using ::testing::TestWithParam;
using ::testing::Values;

class PackLimits : public TestWithParam<std::uint32_t> {
 protected:
  static std::uint32_t version() { return GetParam(); }
  static const Layout& layout() { return layoutOf(GetParam()); }

  /// Packs a full policy whose count says otherwise. The count travels as it is, and `content` tells which entries do.
  void expectCount(std::size_t callerOffset, std::size_t packedOffset, std::uint32_t count) {
    auto body = policyBody(version(), full, 0xEE);
    body.u32(callerOffset, count);
    auto expected = packedPolicy(content);
    expected.u32(packedOffset, count);
    vqs::PackedPolicy packed{};
    EXPECT_EQ(pack(version(), body, packed), 0);
    EXPECT_EQ(difference(bytesOf(packed), expected.bytes()), "") << count;
  }
  int packBody(const Bytes& body) {
    vqs::PackedPolicy packed{};
    return pack(version(), body, packed);
  }

  const Policy full = fullPolicy(GetParam());
  Policy content = full;
};

TEST_P(PackLimits, conditions_beyond_15_are_counted_and_not_carried) {
  for (const std::uint32_t count : {0U, 1U, 14U, 15U, 16U, 20U, 0x80000000U, 0xFFFFFFFFU}) {
    content.conditions = full.conditions;
    content.conditions.resize(std::min(count, 15U));
    expectCount(layout().conditionCount, 184, count);
  }
}

TEST_P(PackLimits, texts_beyond_5_are_counted_and_not_carried) {
  for (const std::uint32_t count : {0U, 1U, 4U, 5U, 6U, 0x80000000U, 0xFFFFFFFFU}) {
    content.texts = full.texts;
    content.texts.resize(std::min(count, 5U));
    expectCount(layout().textCount, 192, count);
  }
}

TEST_P(PackLimits, actions_beyond_32_are_counted_and_not_carried) {
  for (const std::uint32_t count : {0U, 1U, 31U, 32U, 33U, 0x80000000U, 0xFFFFFFFFU}) {
    content.actions = full.actions;
    content.actions.resize(std::min(count, 32U));
    expectCount(layout().actionCount, 188, count);
  }
}

TEST_P(PackLimits, comparisons_go_up_to_4) {
  for (const std::size_t at : {0U, 7U, 14U}) {
    auto body = policyBody(version(), full);
    const std::size_t op = layout().conditions + 16 * at + 4;
    for (const std::uint32_t good : {0U, 1U, 2U, 3U, 4U}) EXPECT_EQ(packBody(body.u32(op, good)), 0) << good;
    for (const std::uint32_t bad : {5U, 6U, 0x104U, 0x80000000U, 0xFFFFFFFFU})
      EXPECT_EQ(packBody(body.u32(op, bad)), 1) << bad;
  }
}

TEST_P(PackLimits, text_flags_go_up_to_1) {
  for (const std::size_t at : {0U, 2U, 4U}) {
    auto body = policyBody(version(), full);
    const std::size_t flag = layout().texts + layout().textSize * at + layout().textFlag;
    for (const std::uint8_t good : {std::uint8_t{0}, std::uint8_t{1}}) EXPECT_EQ(packBody(body.u8(flag, good)), 0);
    for (const std::uint8_t bad : {std::uint8_t{2}, std::uint8_t{0x80}, std::uint8_t{0xFF}})
      EXPECT_EQ(packBody(body.u8(flag, bad)), 1);
  }
}

TEST_P(PackLimits, a_failure_at_a_condition_leaves_the_scalars_and_the_conditions_before_it) {
  auto body = policyBody(version(), full);
  body.u32(layout().conditions + 16 * 2 + 4, 5);
  content.conditions.resize(2);
  content.texts.clear();
  content.actions.clear();
  auto expected = packedPolicy(content);
  expected.u32(184, 15).u32(188, 32).u32(192, 5);
  vqs::PackedPolicy packed{};
  EXPECT_EQ(pack(version(), body, packed), 1);
  EXPECT_EQ(difference(bytesOf(packed), expected.bytes()), "");
}

TEST_P(PackLimits, a_failure_at_a_text_leaves_the_actions_out) {
  auto body = policyBody(version(), full);
  body.u8(layout().texts + layout().textFlag, 2);
  content.texts.clear();
  content.actions.clear();
  auto expected = packedPolicy(content);
  expected.u32(188, 32).u32(192, 5);
  vqs::PackedPolicy packed{};
  EXPECT_EQ(pack(version(), body, packed), 1);
  EXPECT_EQ(difference(bytesOf(packed), expected.bytes()), "");
}

TEST_P(PackLimits, a_text_is_judged_after_every_condition) {
  if (version() == 2) {
    auto body = policyBody(2, full);
    body.u32(layout().conditions + 16 * 14 + 4, 5).fill(layout().texts, 512, 0x21);
    EXPECT_EQ(packBody(body), 1);
    return;
  }
  const Locale utf8{"C.UTF-8"};
  auto body = policyBody(version(), full);
  body.fill(layout().texts, 32, 0xFF);
  EXPECT_EQ(packBody(body), -1);
  EXPECT_EQ(packBody(body.u32(layout().conditions + 16 * 14 + 4, 5)), 1);
}

INSTANTIATE_TEST_SUITE_P(From, PackLimits, Values(0U, 1U, 2U), versionName);

class PackOrder : public TestWithParam<std::uint32_t> {};

TEST_P(PackOrder, a_name_is_judged_before_anything_is_copied) {
  const auto& layout = layoutOf(GetParam());
  auto body = policyBody(GetParam(), fullPolicy(GetParam()));
  body.fill(layout.name, 64, 'n').u32(layout.conditions + 4, 5);
  vqs::PackedPolicy packed{};
  EXPECT_EQ(pack(GetParam(), body, packed), -1);
  EXPECT_EQ(difference(bytesOf(packed), Record{3972}.bytes()), "");
}

TEST_P(PackOrder, a_flag_is_judged_before_the_text_it_stands_by) {
  const Locale utf8{"C.UTF-8"};
  const auto& layout = layoutOf(GetParam());
  auto body = policyBody(GetParam(), fullPolicy(GetParam()));
  body.fill(layout.texts, 32, 0xFF);
  vqs::PackedPolicy packed{};
  EXPECT_EQ(pack(GetParam(), body, packed), -1);
  packed = {};
  EXPECT_EQ(pack(GetParam(), body.u8(layout.texts + layout.textFlag, 2), packed), 1);
}

INSTANTIATE_TEST_SUITE_P(From, PackOrder, Values(0U, 1U), versionName);

}  // namespace
}  // namespace test
