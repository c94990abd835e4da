// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/simulator/model/client.h"

namespace test {
namespace {

TEST(SimulatorStores, add_answers_with_the_request_and_result_0) {
  ModelClient client;
  const auto reply = client.same(0x80222034, addRequest(simplePolicy(0x11223344)));
  ASSERT_EQ(reply.outcome, Outcome::kSuccess);
  ASSERT_EQ(reply.answer.size(), 4000U);
  EXPECT_EQ(part(reply.answer, 0, 6), hex("01 00 00 00  70 00"));
  EXPECT_EQ(part(reply.answer, 168, 4), hex("44 33 22 11"));
  EXPECT_EQ(part(reply.answer, 3976, 24), Bytes(24));
}

TEST(SimulatorStores, second_policy_of_an_id_is_refused_with_result_2) {
  ModelClient client;
  ASSERT_EQ(client.add(kModifyPb, simplePolicy(7)), 0);
  const auto reply = client.same(kModifyPb, addRequest(simplePolicy(7).u32(168, 99)));
  ASSERT_EQ(reply.outcome, Outcome::kSuccess);
  EXPECT_EQ(part(reply.answer, 3980, 4), hex("02 00 00 00"));
  EXPECT_EQ(client.policies(kReadPb), std::vector<Bytes>{simplePolicy(7)});
}

TEST(SimulatorStores, any_id_will_do) {
  ModelClient client;
  for (const std::uint32_t id : {0U, 1U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU})
    EXPECT_EQ(client.add(kModifyAsm, simplePolicy(id)), 0);
  EXPECT_EQ(client.ids(kReadAsm), (Ids{0, 1, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF}));
  EXPECT_EQ(client.add(kModifyAsm, simplePolicy(0)), 2);
}

TEST(SimulatorStores, policies_stay_in_order_of_arrival) {
  ModelClient client;
  for (const std::uint32_t id : {5U, 1U, 9U, 3U, 7U, 2U}) ASSERT_EQ(client.add(kModifyPb, simplePolicy(id)), 0);
  EXPECT_EQ(client.ids(kReadPb), (Ids{5, 1, 9, 3, 7, 2}));
  ASSERT_EQ(client.remove(kModifyPb, 9), 0);
  ASSERT_EQ(client.remove(kModifyPb, 5), 0);
  EXPECT_EQ(client.ids(kReadPb), (Ids{1, 3, 7, 2}));
  ASSERT_EQ(client.add(kModifyPb, simplePolicy(5)), 0);
  ASSERT_EQ(client.remove(kModifyPb, 5), 0);
  ASSERT_EQ(client.add(kModifyPb, simplePolicy(9)), 0);
  EXPECT_EQ(client.ids(kReadPb), (Ids{1, 3, 7, 2, 9}));
}

TEST(SimulatorStores, stores_share_nothing) {
  ModelClient client;
  for (std::uint32_t i = 0; i < 3; ++i) ASSERT_EQ(client.add(kModifyCodes[i], simplePolicy(7).u32(168, 100 + i)), 0);
  for (std::uint32_t i = 0; i < 3; ++i)
    EXPECT_EQ(client.policies(kReadCodes[i]), std::vector<Bytes>{simplePolicy(7).u32(168, 100 + i)});
  ASSERT_EQ(client.remove(kModifyAsm, 7), 0);
  EXPECT_EQ(client.ids(kReadPb), Ids{7});
  EXPECT_EQ(client.ids(kReadAsm), Ids{});
  EXPECT_EQ(client.ids(kReadBalanceProfile), Ids{7});
}

TEST(SimulatorStores, delete_answers_with_its_result_alone) {
  ModelClient client;
  ASSERT_EQ(client.add(kModifyPb, simplePolicy(7)), 0);
  const auto done = client.send(0x80222034, deleteRequest(7), 4);
  EXPECT_EQ(done.outcome, Outcome::kSuccess);
  EXPECT_EQ(done.answer, hex("00 00 00 00"));
  EXPECT_EQ(client.count(kReadPb), 0);
}

TEST(SimulatorStores, delete_of_an_absent_id_answers_4) {
  ModelClient client;
  ASSERT_EQ(client.add(kModifyPb, simplePolicy(7)), 0);
  for (const std::uint32_t id : {0U, 6U, 8U, 0x70000U}) {
    const auto reply = client.send(kModifyPb, deleteRequest(id), 4);
    EXPECT_EQ(reply.outcome, Outcome::kSuccess);
    EXPECT_EQ(reply.answer, hex("04 00 00 00"));
  }
  EXPECT_EQ(client.send(kModifyAsm, deleteRequest(7), 4).answer, hex("04 00 00 00"));
  EXPECT_EQ(client.ids(kReadPb), Ids{7});
}

TEST(SimulatorStores, reset_empties_one_store) {
  for (std::size_t reset = 0; reset < 3; ++reset) {
    ModelClient client;
    for (const std::uint32_t code : kModifyCodes) {
      ASSERT_EQ(client.add(code, simplePolicy(7)), 0);
      ASSERT_EQ(client.add(code, simplePolicy(8)), 0);
    }
    const auto reply = client.same(kModifyCodes[reset], modifyRequest(3));
    EXPECT_EQ(reply.outcome, Outcome::kSuccess);
    EXPECT_EQ(reply.answer, modifyRequest(3).bytes());
    for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(client.ids(kReadCodes[i]), i == reset ? Ids{} : (Ids{7, 8}));
    EXPECT_EQ(client.add(kModifyCodes[reset], simplePolicy(8)), 0);
    EXPECT_EQ(client.ids(kReadCodes[reset]), Ids{8});
  }
}

TEST(SimulatorStores, reset_of_an_empty_store_succeeds) {
  ModelClient client;
  EXPECT_EQ(client.same(kModifyPb, modifyRequest(3)).outcome, Outcome::kSuccess);
}

TEST(SimulatorLookup, finds_the_policy_of_a_key) {
  ModelClient client;
  ASSERT_EQ(client.add(kModifyAsm, simplePolicy(6)), 0);
  ASSERT_EQ(client.add(kModifyAsm, simplePolicy(7).u32(168, 0xABCD)), 0);
  ASSERT_EQ(client.add(kModifyPb, simplePolicy(7).u32(168, 0x1234)), 0);
  const auto reply = client.send(0x80222040, Record{3984}.u32(4, 7).u32(3980, 1), 3972);
  ASSERT_EQ(reply.outcome, Outcome::kSuccess);
  EXPECT_EQ(difference(reply.answer, simplePolicy(7).u32(168, 0xABCD).bytes()), "");
  EXPECT_EQ(client.ids(kReadAsm), (Ids{6, 7}));
}

TEST(SimulatorLookup, fails_without_a_match) {
  ModelClient client;
  ASSERT_EQ(client.add(kModifyPb, simplePolicy(7)), 0);
  for (const std::uint32_t key : {0U, 6U, 8U, 0x700U})
    EXPECT_EQ(client.send(kLookup, lookupRequest(0, key), 3972).outcome, Outcome::kRefused) << key;
  EXPECT_EQ(client.send(kLookup, lookupRequest(1, 7), 3972).outcome, Outcome::kRefused);
  EXPECT_EQ(client.send(kLookup, lookupRequest(2, 7), 3972).outcome, Outcome::kRefused);
}

TEST(SimulatorLookup, forgets_what_was_removed) {
  ModelClient client;
  ASSERT_EQ(client.add(kModifyPb, simplePolicy(7)), 0);
  ASSERT_EQ(client.remove(kModifyPb, 7), 0);
  EXPECT_EQ(client.send(kLookup, lookupRequest(0, 7), 3972).outcome, Outcome::kRefused);
}

}  // namespace
}  // namespace test
