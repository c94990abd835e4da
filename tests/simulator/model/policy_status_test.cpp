// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/simulator/model/client.h"

namespace test {
namespace {

TEST(SimulatorStatus, count_is_the_number_of_policies) {
  ModelClient client;
  const Record request = modifyRequest(4).u8(3984, 1);
  for (std::uint32_t id = 0; id < 3; ++id) {
    const auto reply = client.same(kModifyAsm, request);
    ASSERT_EQ(reply.outcome, Outcome::kSuccess);
    EXPECT_EQ(difference(reply.answer, modifyRequest(4).u32(3976, id).u8(3984, 1).bytes()), "");
    ASSERT_EQ(client.add(kModifyAsm, simplePolicy(id)), 0);
  }
}

TEST(SimulatorStatus, entries_describe_the_policies_in_order) {
  ModelClient client;
  ASSERT_EQ(client.add(kModifyPb, simplePolicy(0x0A0B0C0D).u8(160, 0xF1).text16(0, u"Fan")), 0);
  ASSERT_EQ(client.add(kModifyPb, simplePolicy(2).text16(0, u"\u00e9\u00ff\u0100\u3042")), 0);
  const auto reply = client.same(kModifyPb, Record{4280}.u32(0, 4).u32(3976, 2));
  ASSERT_EQ(reply.outcome, Outcome::kSuccess);
  Record expected = Record{4280}.u32(0, 4).u32(3976, 2);
  expected.put(3996, hex("0d 0c 0b 0a  f1 00 00 00  00 00 00 00  46 61 6e 00"));
  expected.put(4136, hex("02 00 00 00  00 00 00 00  01 00 00 00  e9 ff 3f 3f 00"));
  EXPECT_EQ(difference(reply.answer, expected.bytes()), "");
}

TEST(SimulatorStatus, longest_name_has_63_bytes_and_what_follows_a_shorter_one_is_not_told) {
  ModelClient client;
  ASSERT_EQ(client.add(kModifyPb, simplePolicy(1).fill(0, 126, 0x41).u16(126, 0)), 0);
  ASSERT_EQ(client.add(kModifyPb, simplePolicy(2).fill(0, 128, 0x41).u16(4, 0)), 0);
  const auto reply = client.same(kModifyPb, Record{4280}.u32(0, 4).u32(3976, 2));
  ASSERT_EQ(reply.outcome, Outcome::kSuccess);
  EXPECT_EQ(part(reply.answer, 3996 + 12, 128), Record{128}.fill(0, 63, '?').bytes());
  EXPECT_EQ(part(reply.answer, 4136 + 12, 128), Record{128}.fill(0, 2, '?').bytes());
}

TEST(SimulatorStatus, positions_follow_a_delete) {
  ModelClient client;
  for (const std::uint32_t id : {7U, 8U}) ASSERT_EQ(client.add(kModifyPb, simplePolicy(id)), 0);
  ASSERT_EQ(client.remove(kModifyPb, 7), 0);
  const auto reply = client.same(kModifyPb, Record{4140}.u32(0, 4).u32(3976, 1));
  ASSERT_EQ(reply.outcome, Outcome::kSuccess);
  EXPECT_EQ(part(reply.answer, 3996, 12), hex("08 00 00 00  00 00 00 00  00 00 00 00"));
}

TEST(SimulatorStatus, entries_of_another_number_of_policies_fail) {
  ModelClient client;
  for (const std::uint32_t id : {7U, 8U}) ASSERT_EQ(client.add(kModifyPb, simplePolicy(id)), 0);
  for (const std::uint32_t count : {0U, 1U, 3U, 400U, 401U})
    EXPECT_EQ(client.same(kModifyPb, Record{4000 + 140 * std::size_t{count}}.u32(0, 4).u32(3976, count)).outcome,
              Outcome::kRefused)
        << count;
}

TEST(SimulatorStatus, length_has_to_fit_the_count) {
  ModelClient client;
  for (const std::uint32_t id : {7U, 8U}) ASSERT_EQ(client.add(kModifyPb, simplePolicy(id)), 0);
  // 140 times the last count is 0 in 32 bits.
  for (const std::uint32_t count : {0U, 1U, 3U, 0xFFFFFFFFU, 0x40000000U})
    EXPECT_EQ(client.same(kModifyPb, Record{4280}.u32(0, 4).u32(3976, count)).outcome, Outcome::kWrongLength) << count;
  EXPECT_EQ(client.same(kModifyPb, Record{4000}.u32(0, 4).u32(3976, 0x40000000)).outcome, Outcome::kWrongLength);
}

TEST(SimulatorStatus, entries_of_an_empty_store_are_none) {
  ModelClient client;
  const auto reply = client.same(kModifyPb, modifyRequest(4));
  EXPECT_EQ(reply.outcome, Outcome::kSuccess);
  EXPECT_EQ(reply.answer, modifyRequest(4).bytes());
}

}  // namespace
}  // namespace test
