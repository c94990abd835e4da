// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/simulator/model/settings_view.h"

namespace test {
namespace {

/// True for a byte of a table's record that carries no field.
bool isReserved(std::uint32_t code, std::size_t offset) {
  if (code == 0x80222090) return offset >= 14;
  if (code != 0x8022201C || offset < 4) return false;
  if (offset < 52 || (offset >= 212 && offset < 260)) return true;
  const std::size_t inGroup = (offset - (offset < 212 ? 52 : 260)) % 40;
  return (inGroup >= 29 && inGroup < 32) || inGroup >= 36;
}

/// A set of a table whose every field has bytes of its own; `step` tells one table from another.
Record fullTable(const TableCode& which, std::uint8_t step) {
  Record record = Record{which.size}.u32(0, 1);
  for (std::size_t offset = 4; offset < which.size; ++offset)
    if (!isReserved(which.code, offset)) record.u8(offset, static_cast<std::uint8_t>((offset * step) | 1U));
  return record;
}

Bytes answerOf(Record set, std::uint32_t operation) { return set.u32(0, operation); }

TEST(SimulatorTable, records_have_as_many_reserved_bytes_as_told) {
  constexpr std::size_t kReserved[] = {0, 0, 0, 48 + 48 + 8 * 7, 2};
  for (std::size_t i = 0; i < 5; ++i) {
    std::size_t reserved = 0;
    for (std::size_t offset = 0; offset < kTables[i].size; ++offset)
      reserved += isReserved(kTables[i].code, offset) ? 1 : 0;
    EXPECT_EQ(reserved, kReserved[i]);
  }
}

TEST(SimulatorTable, is_zero_at_first) {
  ModelClient client;
  for (const auto& which : kTables)
    for (const std::uint32_t operation : {0U, 2U, 3U, 4U})
      EXPECT_EQ(table(client, which, operation), Record{which.size}.u32(0, operation).bytes());
}

TEST(SimulatorTable, set_is_read_back_by_0_and_4) {
  ModelClient client;
  for (const auto& which : kTables) {
    const Record set = fullTable(which, 3);
    const auto answer = client.same(which.code, set);
    ASSERT_EQ(answer.outcome, Outcome::kSuccess);
    EXPECT_EQ(word(answer.answer, 0), 1);
    EXPECT_EQ(difference(table(client, which, 0), answerOf(set, 0)), "");
    EXPECT_EQ(difference(table(client, which, 4), answerOf(set, 4)), "");
  }
}

TEST(SimulatorTable, built_in_table_is_zero_and_stays_so) {
  ModelClient client;
  for (const auto& which : kTables) {
    ASSERT_EQ(client.same(which.code, fullTable(which, 3)).outcome, Outcome::kSuccess);
    EXPECT_EQ(table(client, which, 2), Record{which.size}.u32(0, 2).bytes());
  }
}

TEST(SimulatorTable, previous_table_is_the_one_before_the_last_set) {
  ModelClient client;
  for (const auto& which : kTables) {
    const Record first = fullTable(which, 3);
    const Record second = fullTable(which, 5);
    ASSERT_EQ(client.same(which.code, first).outcome, Outcome::kSuccess);
    EXPECT_EQ(table(client, which, 3), Record{which.size}.u32(0, 3).bytes());
    ASSERT_EQ(client.same(which.code, second).outcome, Outcome::kSuccess);
    EXPECT_EQ(difference(table(client, which, 3), answerOf(first, 3)), "");
    EXPECT_EQ(difference(table(client, which, 0), answerOf(second, 0)), "");
    ASSERT_EQ(client.same(which.code, second).outcome, Outcome::kSuccess);
    EXPECT_EQ(difference(table(client, which, 3), answerOf(second, 3)), "");
  }
}

TEST(SimulatorTable, read_looks_at_its_operation_only) {
  ModelClient client;
  for (const auto& which : kTables) {
    const Record set = fullTable(which, 3);
    ASSERT_EQ(client.same(which.code, set).outcome, Outcome::kSuccess);
    for (const std::uint32_t operation : {0U, 4U})
      EXPECT_EQ(client.answer(which.code, Record{which.size, 0xEE}.u32(0, operation), which.size),
                answerOf(set, operation));
    for (const std::uint32_t operation : {2U, 3U})
      EXPECT_EQ(client.answer(which.code, Record{which.size, 0xEE}.u32(0, operation), which.size),
                Record{which.size}.u32(0, operation).bytes());
  }
}

TEST(SimulatorTable, tables_share_nothing) {
  ModelClient client;
  for (const auto& which : kTables) ASSERT_EQ(client.same(which.code, fullTable(which, 3)).outcome, Outcome::kSuccess);
  for (const auto& which : kTables) {
    ASSERT_EQ(client.same(which.code, Record{which.size}.u32(0, 1)).outcome, Outcome::kSuccess);
    for (const auto& other : kTables)
      if (other.feature > which.feature) {
        EXPECT_EQ(table(client, other, 0), answerOf(fullTable(other, 3), 0));
      }
  }
}

TEST(SimulatorTable, every_byte_of_a_field_is_kept) {
  ModelClient client;
  for (const auto& which : kTables)
    for (std::size_t offset = 4; offset < which.size; ++offset) {
      if (isReserved(which.code, offset)) continue;
      const Record set = Record{which.size}.u32(0, 1).u8(offset, 0xFF);
      ASSERT_EQ(client.same(which.code, set).outcome, Outcome::kSuccess) << std::hex << which.code << " " << offset;
      ASSERT_EQ(difference(table(client, which, 0), answerOf(set, 0)), "");
    }
}

TEST(SimulatorTable, every_byte_without_a_field_is_zero) {
  ModelClient client;
  for (const auto& which : kTables) ASSERT_EQ(client.same(which.code, fullTable(which, 3)).outcome, Outcome::kSuccess);
  const auto before = settingsOf(client);
  for (const auto& which : kTables)
    for (std::size_t offset = 4; offset < which.size; ++offset)
      if (isReserved(which.code, offset))
        expectOnlyZero(client, which.code, fullTable(which, 5), which.size, offset, offset + 1);
  EXPECT_EQ(settingsOf(client), before);
}

TEST(SimulatorTable, other_operations_are_unknown) {
  ModelClient client;
  const auto before = settingsOf(client);
  for (const auto& which : kTables)
    for (const std::uint32_t operation : {5U, 6U, 0x101U, 0x80000001U, 0xFFFFFFFFU})
      EXPECT_EQ(client.same(which.code, Record{which.size}.u32(0, operation)).outcome, Outcome::kUnknownRequest);
  EXPECT_EQ(settingsOf(client), before);
}

TEST(SimulatorTable, lengths_are_exact) {
  ModelClient client;
  const auto before = settingsOf(client);
  for (const auto& which : kTables)
    for (std::uint32_t operation = 0; operation < 5; ++operation)
      expectOnlyLengths(client, which.code, Record{which.size}.u32(0, operation), which.size);
  EXPECT_EQ(settingsOf(client), before);
}

}  // namespace
}  // namespace test
