// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/simulator/model/client.h"

namespace test {
namespace {

using Offsets = std::vector<std::pair<std::size_t, std::size_t>>;

bool within(std::size_t offset, const Offsets& ranges) {
  return std::ranges::any_of(ranges, [&](const auto& it) { return offset >= it.first && offset < it.second; });
}

/// Sets each byte from 4 on in turn: only those of the ranges are the caller's.
void expectZeroElsewhere(std::uint32_t code, const Bytes& valid, std::size_t outputLength, const Offsets& meaningful) {
  ModelClient client;
  for (const std::uint32_t store : kModifyCodes) ASSERT_EQ(client.add(store, simplePolicy(7)), 0);
  for (std::size_t offset = code == kLookup ? 0 : 4; offset < valid.size(); ++offset) {
    if (within(offset, meaningful)) continue;
    Bytes request = valid;
    request[offset] = 0xFF;
    ASSERT_EQ(client.send(code, request, outputLength).outcome, Outcome::kMalformed) << "byte " << offset;
  }
  for (const std::uint32_t store : kReadCodes) EXPECT_EQ(client.ids(store), Ids{7});
  EXPECT_EQ(client.same(kModifyAsm, modifyRequest(7)).answer, modifyRequest(7).bytes());
}

TEST(SimulatorMalformed, add_has_nothing_behind_its_policy) {
  expectZeroElsewhere(kModifyPb, addRequest(simplePolicy(8)), 4000, {{4, 3976}});
}

TEST(SimulatorMalformed, reset_has_nothing_but_its_operation) {
  expectZeroElsewhere(kModifyAsm, modifyRequest(3), 4000, {});
}

TEST(SimulatorMalformed, delete_has_nothing_but_the_id) {
  expectZeroElsewhere(kModifyBalanceProfile, deleteRequest(7), 4, {{168, 172}});
}

TEST(SimulatorMalformed, status_count_has_nothing_but_its_flag) {
  expectZeroElsewhere(kModifyPb, modifyRequest(4).u8(3984, 1), 4000, {});
}

TEST(SimulatorMalformed, set_version_has_nothing_but_two_words_of_16_bits) {
  expectZeroElsewhere(kModifyAsm, modifyRequest(6), 4000, {{3988, 3990}, {3992, 3994}});
}

TEST(SimulatorMalformed, get_version_has_nothing_but_its_operation) {
  expectZeroElsewhere(kModifyAsm, modifyRequest(7), 4000, {});
}

TEST(SimulatorMalformed, lookup_has_nothing_but_key_and_store) {
  expectZeroElsewhere(kLookup, lookupRequest(0, 7), 3972, {{4, 8}});
}

TEST(SimulatorMalformed, status_entries_have_nothing_but_the_count) {
  const Record valid = Record{4140}.u32(0, 4).u32(3976, 1);
  // Another count goes with another length, and another flag is another request: both are tests of their own.
  expectZeroElsewhere(kModifyPb, valid, 4140, {{3976, 3980}});
}

TEST(SimulatorMalformed, status_flag_is_0_or_1) {
  ModelClient client;
  for (unsigned flag = 2; flag < 256; ++flag)
    EXPECT_EQ(client.same(kModifyPb, modifyRequest(4).u8(3984, static_cast<std::uint8_t>(flag))).outcome,
              Outcome::kMalformed);
}

TEST(SimulatorMalformed, count_query_is_0_or_1) {
  ModelClient client;
  for (const std::uint32_t code : kReadCodes)
    for (unsigned query = 2; query < 256; ++query)
      EXPECT_EQ(client.same(code, Record{19872}.u8(0, static_cast<std::uint8_t>(query))).outcome, Outcome::kMalformed);
}

TEST(SimulatorMalformed, count_query_is_padded_with_zero) {
  ModelClient client;
  for (std::size_t offset = 1; offset < 4; ++offset) {
    EXPECT_EQ(client.same(kReadPb, countQuery().u8(offset, 1)).outcome, Outcome::kMalformed);
    EXPECT_EQ(client.same(kReadPb, chunkQuery(0).u8(offset, 1)).outcome, Outcome::kMalformed);
  }
}

TEST(SimulatorMalformed, there_are_three_stores_to_look_into) {
  ModelClient client;
  for (const std::uint32_t code : kModifyCodes) ASSERT_EQ(client.add(code, simplePolicy(7)), 0);
  for (const std::uint32_t store : {0U, 1U, 2U})
    EXPECT_EQ(client.send(kLookup, lookupRequest(store, 7), 3972).outcome, Outcome::kSuccess) << store;
  for (const std::uint32_t store : {3U, 4U, 0x100U, 0xFFFFFFFFU})
    EXPECT_EQ(client.send(kLookup, lookupRequest(store, 7), 3972).outcome, Outcome::kMalformed) << store;
}

}  // namespace
}  // namespace test
