// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/simulator/model/client.h"

namespace test {
namespace {

/// A policy with every count at its limit and every field of the caller's in use.
Record fullPolicy() {
  Record policy{3972};
  policy.fill(0, 126, 0x41).fill(128, 32, 0xEE).u8(160, 0xFF).u32(164, 7).u32(168, 0xFFFFFFFF).u8(172, 0xFF);
  policy.u8(173, 0xFF).u32(176, 0xFFFFFFFF).u32(180, 0xFFFFFFFF).u32(184, 15).u32(188, 32).u32(192, 5);
  for (std::size_t i = 0; i < 15; ++i) policy.fill(196 + 16 * i, 16, 0xFF).u32(196 + 16 * i + 4, 4);
  for (std::size_t i = 0; i < 5; ++i) policy.u8(436 + 528 * i, 1).u16(436 + 528 * i + 12, 256);
  for (std::size_t i = 0; i < 5; ++i) policy.fill(436 + 528 * i + 14, 510, 0x42);
  for (std::size_t i = 0; i < 32; ++i) {
    const std::size_t action = 3076 + 28 * i;
    policy.fill(action, 28, 0xFF).fill(action + 14, 2, 0).fill(action + 21, 3, 0);
  }
  return policy;
}

constexpr std::uint32_t kAdded = 0;
constexpr std::uint32_t kRequestFailed = 1;

/// Adds to the empty store of a driver that all calls share: a fresh one for each would take most of the time.
std::uint32_t addToEmpty(const Bytes& policy) {
  static ModelClient client;
  EXPECT_EQ(client.same(kModifyPb, modifyRequest(3)).outcome, Outcome::kSuccess);
  const std::uint32_t result = client.add(kModifyPb, policy);
  EXPECT_EQ(client.count(kReadPb), result == kAdded ? 1 : 0);
  return result;
}

TEST(SimulatorPolicyCheck, policy_at_every_limit_is_kept_byte_for_byte) {
  ModelClient client;
  ASSERT_EQ(client.add(kModifyPb, fullPolicy()), kAdded);
  EXPECT_EQ(difference(client.policies(kReadPb).at(0), fullPolicy().bytes()), "");
}

TEST(SimulatorPolicyCheck, policy_of_zero_bytes_is_well_formed) { EXPECT_EQ(addToEmpty(Record{3972}), kAdded); }

TEST(SimulatorPolicyCheck, counts_stop_at_their_limits) {
  for (const std::uint32_t over : {16U, 0x10000U, 0xFFFFFFFFU})
    EXPECT_EQ(addToEmpty(fullPolicy().u32(184, over)), kRequestFailed) << over;
  for (const std::uint32_t over : {33U, 0x10000U, 0xFFFFFFFFU})
    EXPECT_EQ(addToEmpty(fullPolicy().u32(188, over)), kRequestFailed) << over;
  for (const std::uint32_t over : {6U, 0x10000U, 0xFFFFFFFFU})
    EXPECT_EQ(addToEmpty(fullPolicy().u32(192, over)), kRequestFailed) << over;
}

TEST(SimulatorPolicyCheck, entries_beyond_their_count_are_zero) {
  EXPECT_EQ(addToEmpty(fullPolicy().u32(184, 14)), kRequestFailed);
  EXPECT_EQ(addToEmpty(fullPolicy().u32(188, 31)), kRequestFailed);
  EXPECT_EQ(addToEmpty(fullPolicy().u32(192, 4)), kRequestFailed);
  EXPECT_EQ(addToEmpty(fullPolicy().u32(184, 14).fill(196 + 16 * 14, 16, 0)), kAdded);
  EXPECT_EQ(addToEmpty(fullPolicy().u32(188, 31).fill(3076 + 28 * 31, 28, 0)), kAdded);
  EXPECT_EQ(addToEmpty(fullPolicy().u32(192, 4).fill(436 + 528 * 4, 528, 0)), kAdded);
}

TEST(SimulatorPolicyCheck, every_byte_that_is_not_the_callers_is_zero) {
  for (std::size_t offset = 0; offset < 3972; ++offset) {
    const bool free = offset <= 160 || (offset >= 164 && offset < 174) || (offset >= 176 && offset < 184);
    EXPECT_EQ(addToEmpty(simplePolicy(7).u8(offset, 0xFF)), free ? kAdded : kRequestFailed) << offset;
  }
}

TEST(SimulatorPolicyCheck, comparisons_go_up_to_4) {
  for (std::size_t i = 0; i < 15; ++i) {
    const std::size_t op = 196 + 16 * i + 4;
    for (std::uint32_t value = 0; value <= 4; ++value) EXPECT_EQ(addToEmpty(fullPolicy().u32(op, value)), kAdded);
    for (const std::uint32_t value : {5U, 6U, 0x100U, 0xFFFFFFFFU})
      EXPECT_EQ(addToEmpty(fullPolicy().u32(op, value)), kRequestFailed) << i << " " << value;
  }
}

TEST(SimulatorPolicyCheck, text_flags_are_0_or_1) {
  for (std::size_t i = 0; i < 5; ++i) {
    const std::size_t flag = 436 + 528 * i;
    EXPECT_EQ(addToEmpty(fullPolicy().u8(flag, 0)), kAdded);
    EXPECT_EQ(addToEmpty(fullPolicy().u8(flag, 2)), kRequestFailed) << i;
    EXPECT_EQ(addToEmpty(fullPolicy().u8(flag, 0xFF)), kRequestFailed) << i;
  }
}

TEST(SimulatorPolicyCheck, text_length_counts_up_to_the_first_zero_unit) {
  for (std::size_t i = 0; i < 5; ++i) {
    const std::size_t length = 436 + 528 * i + 12;
    for (const std::uint16_t wrong : std::initializer_list<std::uint16_t>{0, 1, 255, 257, 512, 0xFFFF})
      EXPECT_EQ(addToEmpty(fullPolicy().u16(length, wrong)), kRequestFailed) << i << " " << wrong;
    // The first zero unit is now unit 3; what follows it is free.
    EXPECT_EQ(addToEmpty(fullPolicy().u16(length + 2 + 6, 0).u16(length, 4)), kAdded);
    EXPECT_EQ(addToEmpty(fullPolicy().u16(length + 2 + 6, 0).u16(length, 3)), kRequestFailed);
    EXPECT_EQ(addToEmpty(fullPolicy().u16(length + 2 + 6, 0).u16(length, 5)), kRequestFailed);
    EXPECT_EQ(addToEmpty(fullPolicy().u16(length + 2, 0).u16(length, 1)), kAdded);
  }
}

TEST(SimulatorPolicyCheck, text_without_zero_unit_is_malformed) {
  for (std::size_t i = 0; i < 5; ++i)
    for (const std::uint16_t length : std::initializer_list<std::uint16_t>{0, 1, 256, 257})
      EXPECT_EQ(addToEmpty(fullPolicy().u16(436 + 528 * i + 14 + 510, 0x42).u16(436 + 528 * i + 12, length)),
                kRequestFailed);
}

TEST(SimulatorPolicyCheck, reserved_bytes_of_texts_are_zero) {
  for (std::size_t i = 0; i < 5; ++i)
    for (const std::size_t offset : std::initializer_list<std::size_t>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 526, 527})
      EXPECT_EQ(addToEmpty(fullPolicy().u8(436 + 528 * i + offset, 1)), kRequestFailed) << i << " " << offset;
}

TEST(SimulatorPolicyCheck, padding_of_actions_is_zero) {
  for (std::size_t i = 0; i < 32; ++i)
    for (const std::size_t offset : std::initializer_list<std::size_t>{14, 15, 21, 22, 23})
      EXPECT_EQ(addToEmpty(fullPolicy().u8(3076 + 28 * i + offset, 1)), kRequestFailed) << i << " " << offset;
}

TEST(SimulatorPolicyCheck, padding_of_the_policy_is_zero) {
  for (const std::size_t offset : std::initializer_list<std::size_t>{161, 162, 163, 174, 175})
    EXPECT_EQ(addToEmpty(fullPolicy().u8(offset, 1)), kRequestFailed) << offset;
}

TEST(SimulatorPolicyCheck, name_needs_a_zero_unit_somewhere) {
  EXPECT_EQ(addToEmpty(fullPolicy().u16(126, 0x41)), kRequestFailed);
  EXPECT_EQ(addToEmpty(fullPolicy().u16(126, 0x4100)), kRequestFailed);
  EXPECT_EQ(addToEmpty(fullPolicy().u16(126, 0x41).u16(0, 0)), kAdded);
  // A zero byte alone is no zero unit.
  EXPECT_EQ(addToEmpty(fullPolicy().u16(126, 0x41).u16(2, 0x0041)), kRequestFailed);
}

}  // namespace
}  // namespace test
