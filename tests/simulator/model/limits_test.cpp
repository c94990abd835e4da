// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/simulator/model/client.h"

namespace test {
namespace {

/// Ids 1000, 1001, ...
void fill(ModelClient& client, std::uint32_t code, std::uint32_t count) {
  for (std::uint32_t i = 0; i < count; ++i) ASSERT_EQ(client.add(code, simplePolicy(1000 + i)), 0) << i;
}

TEST(SimulatorLimits, each_store_holds_400_policies) {
  ModelClient client;
  for (std::size_t store = 0; store < 3; ++store) {
    fill(client, kModifyCodes[store], 399);
    EXPECT_EQ(client.count(kReadCodes[store]), 399);
    EXPECT_EQ(client.add(kModifyCodes[store], simplePolicy(5)), 0);
    EXPECT_EQ(client.count(kReadCodes[store]), 400);
    EXPECT_EQ(client.add(kModifyCodes[store], simplePolicy(6)), 3);
    EXPECT_EQ(client.count(kReadCodes[store]), 400);
  }
}

TEST(SimulatorLimits, full_store_is_readable_to_its_last_policy) {
  ModelClient client;
  fill(client, kModifyPb, 400);
  const auto ids = client.ids(kReadPb);
  ASSERT_EQ(ids.size(), 400U);
  for (std::uint32_t i = 0; i < 400; ++i) EXPECT_EQ(ids[i], 1000 + i);
}

TEST(SimulatorLimits, full_store_answers_2_to_an_id_that_it_holds) {
  ModelClient client;
  fill(client, kModifyPb, 400);
  EXPECT_EQ(client.add(kModifyPb, simplePolicy(1399)), 2);
  EXPECT_EQ(client.add(kModifyPb, simplePolicy(1400)), 3);
}

TEST(SimulatorLimits, malformed_policy_fails_in_a_full_store_too) {
  ModelClient client;
  fill(client, kModifyPb, 400);
  EXPECT_EQ(client.same(kModifyPb, addRequest(simplePolicy(5).u32(184, 16))).outcome, Outcome::kMalformed);
}

TEST(SimulatorLimits, delete_makes_room_for_one) {
  ModelClient client;
  fill(client, kModifyPb, 400);
  ASSERT_EQ(client.remove(kModifyPb, 1000), 0);
  EXPECT_EQ(client.add(kModifyPb, simplePolicy(5)), 0);
  EXPECT_EQ(client.add(kModifyPb, simplePolicy(6)), 3);
  const auto ids = client.ids(kReadPb);
  ASSERT_EQ(ids.size(), 400U);
  EXPECT_EQ(ids.front(), 1001);
  EXPECT_EQ(ids.back(), 5);
}

TEST(SimulatorLimits, last_policy_of_a_full_store_can_be_deleted) {
  ModelClient client;
  fill(client, kModifyPb, 400);
  ASSERT_EQ(client.remove(kModifyPb, 1399), 0);
  EXPECT_EQ(client.count(kReadPb), 399);
  EXPECT_EQ(client.ids(kReadPb).back(), 1398);
}

TEST(SimulatorLimits, status_of_a_full_store_has_400_entries) {
  ModelClient client;
  fill(client, kModifyPb, 400);
  const auto reply = client.same(kModifyPb, Record{4000 + 140 * 400}.u32(0, 4).u32(3976, 400));
  ASSERT_EQ(reply.outcome, Outcome::kSuccess);
  ASSERT_EQ(reply.answer.size(), 60000U);
  EXPECT_EQ(part(reply.answer, 3996 + 140 * 399, 14), hex("77 05 00 00  00 00 00 00  8f 01 00 00  70 00"));
  EXPECT_EQ(part(reply.answer, 59996, 4), hex("00 00 00 00"));
  EXPECT_EQ(client.same(kModifyPb, Record{4000 + 140 * 401}.u32(0, 4).u32(3976, 401)).outcome, Outcome::kRefused);
  EXPECT_EQ(client.same(kModifyPb, Record{4000 + 140 * 399}.u32(0, 4).u32(3976, 399)).outcome, Outcome::kRefused);
}

TEST(SimulatorLimits, every_chunk_after_the_last_is_empty) {
  ModelClient client;
  fill(client, kModifyPb, 400);
  EXPECT_EQ(word(client.same(kReadPb, chunkQuery(79)).answer, 12 + 3972 * 4 + 164), 1399);
  // 5 times these indexes is small again in 32 bits.
  for (const std::uint32_t chunk : {80U, 81U, 0x33333333U, 0x33333334U, 0x66666667U, 0xFFFFFFFFU}) {
    const auto reply = client.same(kReadPb, chunkQuery(chunk));
    ASSERT_EQ(reply.outcome, Outcome::kSuccess);
    EXPECT_EQ(part(reply.answer, 12, 19860), Bytes(19860)) << chunk;
  }
}

}  // namespace
}  // namespace test
