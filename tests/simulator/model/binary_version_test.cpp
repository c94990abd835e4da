// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/simulator/model/client.h"

namespace test {
namespace {

TEST(SimulatorVersion, is_0_and_0_at_first) {
  ModelClient client;
  const auto reply = client.same(0x80222054, modifyRequest(7));
  EXPECT_EQ(reply.outcome, Outcome::kSuccess);
  EXPECT_EQ(reply.answer, modifyRequest(7).bytes());
}

TEST(SimulatorVersion, get_answers_what_set_set) {
  ModelClient client;
  const auto set = client.same(0x80222054, modifyRequest(6).u32(3988, 0x1234).u32(3992, 0xFFFF));
  EXPECT_EQ(set.outcome, Outcome::kSuccess);
  EXPECT_EQ(difference(set.answer, modifyRequest(6).u32(3988, 0x1234).u32(3992, 0xFFFF).bytes()), "");
  const auto get = client.same(0x80222054, modifyRequest(7));
  EXPECT_EQ(difference(get.answer, modifyRequest(7).u32(3988, 0x1234).u32(3992, 0xFFFF).bytes()), "");
}

TEST(SimulatorVersion, words_have_16_bits) {
  ModelClient client;
  ASSERT_EQ(client.same(kModifyAsm, modifyRequest(6).u32(3988, 0xFFFF).u32(3992, 0xFFFE)).outcome, Outcome::kSuccess);
  for (const std::uint32_t high : {0x10000U, 0x80000000U, 0xFFFFFFFFU}) {
    EXPECT_EQ(client.same(kModifyAsm, modifyRequest(6).u32(3988, high)).outcome, Outcome::kMalformed);
    EXPECT_EQ(client.same(kModifyAsm, modifyRequest(6).u32(3992, high)).outcome, Outcome::kMalformed);
  }
  EXPECT_EQ(part(client.same(kModifyAsm, modifyRequest(7)).answer, 3988, 8), hex("ff ff 00 00  fe ff 00 00"));
}

TEST(SimulatorVersion, belongs_to_the_asm_store_alone) {
  ModelClient client;
  for (const std::uint32_t code : {kModifyPb, kModifyBalanceProfile}) {
    EXPECT_EQ(client.same(code, modifyRequest(6).u32(3988, 1)).outcome, Outcome::kUnknownRequest);
    EXPECT_EQ(client.same(code, modifyRequest(7)).outcome, Outcome::kUnknownRequest);
  }
}

TEST(SimulatorVersion, outlives_a_reset) {
  ModelClient client;
  ASSERT_EQ(client.same(kModifyAsm, modifyRequest(6).u32(3988, 3).u32(3992, 5)).outcome, Outcome::kSuccess);
  for (const std::uint32_t code : kModifyCodes)
    ASSERT_EQ(client.same(code, modifyRequest(3)).outcome, Outcome::kSuccess);
  EXPECT_EQ(part(client.same(kModifyAsm, modifyRequest(7)).answer, 3988, 8), hex("03 00 00 00  05 00 00 00"));
}

}  // namespace
}  // namespace test
