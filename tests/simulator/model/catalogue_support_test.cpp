// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/simulator/model/settings_view.h"

namespace test {
namespace {

Record readRequest(std::uint32_t operation, std::uint64_t size) {
  return Record{16 + static_cast<std::size_t>(size)}.u32(0, operation).u64(8, size);
}

/// Three bytes for each entry: both flags, and zero.
Bytes support(std::size_t entries, std::initializer_list<std::size_t> unsupported) {
  Record all{3 * entries};
  for (std::size_t id = 0; id < entries; ++id) all.u8(3 * id, 1).u8(3 * id + 1, 1);
  for (const std::size_t id : unsupported) all.u8(3 * id, 0).u8(3 * id + 1, 0);
  return all;
}

TEST(SimulatorCatalogue, sizes_are_those_of_73_conditions_and_168_actions) {
  ModelClient client;
  EXPECT_EQ(client.answer(0x80222044, Record{16}.u32(0, 1), 16),
            hex("01 00 00 00  00 00 00 00  db 00 00 00 00 00 00 00"));
  EXPECT_EQ(client.answer(0x80222044, Record{16}.u32(0, 3), 16),
            hex("03 00 00 00  00 00 00 00  f8 01 00 00 00 00 00 00"));
}

TEST(SimulatorCatalogue, a_size_query_looks_at_its_operation_only) {
  ModelClient client;
  EXPECT_EQ(client.answer(kCatalogue, Record{16, 0xEE}.u32(0, 1), 16), Record(16, 0xEE).u32(0, 1).u64(8, 219).bytes());
  EXPECT_EQ(client.answer(kCatalogue, Record{16, 0xEE}.u32(0, 3), 16), Record(16, 0xEE).u32(0, 3).u64(8, 504).bytes());
}

TEST(SimulatorCatalogue, conditions_are_marked_in_order_of_their_ids) {
  ModelClient client;
  const auto answer = client.answer(kCatalogue, readRequest(0, 219), 235);
  EXPECT_EQ(part(answer, 0, 16), hex("00 00 00 00  00 00 00 00  db 00 00 00 00 00 00 00"));
  EXPECT_EQ(difference(part(answer, 16, 219), support(73, {9, 33, 34, 68, 69, 71})), "");
}

TEST(SimulatorCatalogue, actions_are_marked_in_order_of_their_ids) {
  ModelClient client;
  const auto answer = client.answer(kCatalogue, readRequest(2, 504), 520);
  EXPECT_EQ(part(answer, 0, 16), hex("02 00 00 00  00 00 00 00  f8 01 00 00 00 00 00 00"));
  EXPECT_EQ(difference(part(answer, 16, 504), support(168, {13, 20, 21, 22, 23, 24, 25, 26, 92, 93})), "");
}

TEST(SimulatorCatalogue, a_read_says_the_exact_size) {
  ModelClient client;
  for (const std::uint64_t size : std::initializer_list<std::uint64_t>{0, 1, 218, 220, 504, 0x1000000DB, ~0ULL})
    EXPECT_EQ(client.outcome(kCatalogue, readRequest(0, 219).u64(8, size), 235), Outcome::kMalformed) << size;
  for (const std::uint64_t size : std::initializer_list<std::uint64_t>{0, 1, 503, 505, 219, 0x1000001F8, ~0ULL})
    EXPECT_EQ(client.outcome(kCatalogue, readRequest(2, 504).u64(8, size), 520), Outcome::kMalformed) << size;
}

TEST(SimulatorCatalogue, other_operations_are_unknown) {
  ModelClient client;
  for (const std::uint32_t operation : {4U, 5U, 0x100U, 0x80000000U, 0xFFFFFFFFU})
    for (const std::size_t size : {16U, 235U, 520U})
      EXPECT_EQ(client.same(kCatalogue, Record{size}.u32(0, operation)).outcome, Outcome::kUnknownRequest) << operation;
}

TEST(SimulatorCatalogue, lengths_are_those_of_the_operation) {
  ModelClient client;
  expectOnlyLengths(client, kCatalogue, Record{16}.u32(0, 1), 16);
  expectOnlyLengths(client, kCatalogue, Record{16}.u32(0, 3), 16);
  expectOnlyLengths(client, kCatalogue, readRequest(0, 219), 235);
  expectOnlyLengths(client, kCatalogue, readRequest(2, 504), 520);
  EXPECT_EQ(client.same(kCatalogue, Record{520}.u64(8, 219)).outcome, Outcome::kWrongLength);
  EXPECT_EQ(client.same(kCatalogue, Record{235}.u32(0, 2).u64(8, 504)).outcome, Outcome::kWrongLength);
}

}  // namespace
}  // namespace test
