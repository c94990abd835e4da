// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/simulator/model/client.h"

namespace test {
namespace {

TEST(SimulatorRead, count_of_a_fresh_driver_is_0) {
  ModelClient client;
  for (const std::uint32_t code : kReadCodes) {
    const auto reply = client.same(code, countQuery());
    EXPECT_EQ(reply.outcome, Outcome::kSuccess);
    EXPECT_EQ(reply.answer, countQuery().bytes());
  }
}

TEST(SimulatorRead, count_leaves_index_and_policies_as_sent) {
  ModelClient client;
  for (const std::uint32_t id : {1U, 2U, 3U}) ASSERT_EQ(client.add(kModifyAsm, simplePolicy(id)), 0);
  const auto reply = client.same(0x80222050, Record{19872, 0xCC}.u32(0, 1));
  ASSERT_EQ(reply.outcome, Outcome::kSuccess);
  EXPECT_EQ(difference(reply.answer, Record{19872, 0xCC}.u32(0, 1).u32(4, 3).bytes()), "");
}

TEST(SimulatorRead, twelve_policies_come_in_chunks_of_5_5_and_2) {
  ModelClient client;
  for (std::uint32_t id = 0; id < 12; ++id) ASSERT_EQ(client.add(kModifyPb, simplePolicy(0xA0 + id)), 0);
  for (std::uint32_t chunk = 0; chunk < 4; ++chunk) {
    Record expected = Record{19872}.u32(4, 12).u32(8, chunk);
    for (std::uint32_t i = 5 * chunk; i < std::min(12U, 5 * chunk + 5); ++i)
      expected.put(12 + 3972 * std::size_t{i % 5}, simplePolicy(0xA0 + i).bytes());
    const auto reply = client.same(0x80222064, chunkQuery(chunk));
    ASSERT_EQ(reply.outcome, Outcome::kSuccess);
    EXPECT_EQ(difference(reply.answer, expected.bytes()), "") << "chunk " << chunk;
  }
}

TEST(SimulatorRead, chunk_overwrites_whatever_the_buffer_held) {
  ModelClient client;
  ASSERT_EQ(client.add(kModifyBalanceProfile, simplePolicy(7)), 0);
  const auto reply = client.same(0x802220A8, Record{19872, 0xCC}.u32(0, 0).u32(8, 0));
  ASSERT_EQ(reply.outcome, Outcome::kSuccess);
  EXPECT_EQ(difference(reply.answer, Record{19872}.u32(4, 1).put(12, simplePolicy(7).bytes()).bytes()), "");
}

TEST(SimulatorRead, places_of_removed_policies_read_as_zero) {
  ModelClient client;
  for (const std::uint32_t id : {1U, 2U}) ASSERT_EQ(client.add(kModifyPb, simplePolicy(id)), 0);
  ASSERT_EQ(client.remove(kModifyPb, 1), 0);
  EXPECT_EQ(difference(client.same(kReadPb, chunkQuery(0)).answer,
                       Record{19872}.u32(4, 1).put(12, simplePolicy(2).bytes()).bytes()),
            "");
  ASSERT_EQ(client.same(kModifyPb, modifyRequest(3)).outcome, Outcome::kSuccess);
  EXPECT_EQ(difference(client.same(kReadPb, chunkQuery(0)).answer, Bytes(19872)), "");
}

}  // namespace
}  // namespace test
