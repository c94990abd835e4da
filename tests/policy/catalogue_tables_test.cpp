// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <span>
#include <string>
#include <vector>

#include <vqs/catalogue.h>
#include "src/channel/session_record.h"
#include "tests/support/listings.h"
#include "tests/support/results.h"
#include "tests/support/session_test.h"

namespace test {
namespace {

std::vector<ListingRow> readRows(const std::string& file, std::size_t columns) {
  auto rows = readListing(file);
  for (const auto& row : rows) EXPECT_EQ(row.columns(), columns) << row.text(1);
  return rows;
}

Bytes optionRecord(const ListedOption& option) {
  return Record(36).text(0, option.first).u32(32, static_cast<std::uint32_t>(option.second));
}

void expectOptions(const QtfOptionInfo* actual, std::uint32_t count, const std::vector<ListedOption>& expected) {
  ASSERT_EQ(count, expected.size());
  ASSERT_EQ(actual == nullptr, expected.empty());
  for (std::size_t i = 0; i < expected.size(); ++i)
    EXPECT_EQ(bytesOf(actual[i]), optionRecord(expected[i])) << expected[i].first;
}

/// A record's bytes without those of its pointer to the options.
template <class Info>
Bytes withoutPointer(const Info& info) {
  return Record(sizeof(Info)).put(0, bytesOf(info)).fill(104, 8, 0);
}

Bytes conditionRecord(const ListingRow& row) {
  return Record(312)
      .u32(0, row.word(0))
      .u32(4, row.word(7))
      .u32(8, row.word(2))
      .u32(12, row.word(3))
      .u32(16, row.word(4))
      .u32(20, row.word(5))
      .text(24, row.text(6))
      .text(36, row.text(1))
      .u32(100, static_cast<std::uint32_t>(row.options(13).size()))
      .u32(112, row.word(8))
      .u32(116, row.word(9))
      .u32(120, row.word(10))
      .u32(124, row.word(11))
      .u32(128, row.word(12));
}

Bytes actionRecord(const ListingRow& row) {
  return Record(304)
      .u32(0, row.word(0))
      .u32(4, row.word(6))
      .u32(8, row.word(2))
      .u32(12, row.word(3))
      .u32(16, row.word(4))
      .text(20, row.text(5))
      .text(32, row.text(1))
      .u32(96, static_cast<std::uint32_t>(row.options(9).size()))
      .u32(112, row.word(7))
      .u32(116, row.word(8));
}

/// The tables as a driver leaves them that does not know the support requests.
class CatalogueTables : public SessionTest {
 protected:
  std::span<const QtfConditionInfo> conditions() {
    driver.expectSame(0x80222044).request(Record(16).u32(0, 1)).fails();
    const QtfConditionInfo* table = nullptr;
    std::uint32_t count = 0;
    EXPECT_EQ(vqsPbGetConditions(session, &table, &count), kDone);
    return {table, count};
  }
  std::span<const QtfActionInfo> actions() {
    driver.expectSame(0x80222044).request(Record(16).u32(0, 3)).fails();
    const QtfActionInfo* table = nullptr;
    std::uint32_t count = 0;
    EXPECT_EQ(vqsPbGetActions(session, &table, &count), kDone);
    return {table, count};
  }
};

TEST_F(CatalogueTables, hold_every_condition_as_it_is_written_down) {
  const auto rows = readRows(kConditionListing, 14);
  const auto table = conditions();
  ASSERT_EQ(rows.size(), 73U);
  ASSERT_EQ(table.size(), rows.size());
  for (std::size_t i = 0; i < rows.size(); ++i) {
    SCOPED_TRACE(rows[i].text(1));
    EXPECT_EQ(difference(withoutPointer(table[i]), conditionRecord(rows[i])), "");
    expectOptions(table[i].Options, table[i].OptionCount, rows[i].options(13));
  }
}

TEST_F(CatalogueTables, hold_every_action_as_it_is_written_down) {
  const auto rows = readRows(kActionListing, 10);
  const auto table = actions();
  ASSERT_EQ(rows.size(), 168U);
  ASSERT_EQ(table.size(), rows.size());
  for (std::size_t i = 0; i < rows.size(); ++i) {
    SCOPED_TRACE(rows[i].text(1));
    EXPECT_EQ(difference(withoutPointer(table[i]), actionRecord(rows[i])), "");
    expectOptions(table[i].Options, table[i].OptionCount, rows[i].options(9));
  }
}

TEST_F(CatalogueTables, number_their_entries_from_0) {
  std::uint32_t id = 0;
  for (const auto& condition : conditions()) EXPECT_EQ(condition.Id, id++);
  id = 0;
  for (const auto& action : actions()) EXPECT_EQ(action.Id, id++);
}

TEST_F(CatalogueTables, give_three_taskbar_colours_one_value) {
  const auto& colour = actions()[53];
  EXPECT_STREQ(colour.Name, "Taskbar Icon Colour");
  EXPECT_EQ(colour.MaxValue, 5U);
  ASSERT_EQ(colour.OptionCount, 8U);
  EXPECT_STREQ(colour.Options[5].Text, "Blue");
  EXPECT_STREQ(colour.Options[6].Text, "Purple");
  EXPECT_STREQ(colour.Options[7].Text, "Pink");
  for (const int option : {5, 6, 7}) EXPECT_EQ(colour.Options[option].Value, 5);
}

TEST_F(CatalogueTables, have_signed_limits_and_option_values) {
  const auto table = conditions();
  const auto drain = std::ranges::find(table, std::string_view{"Battery Drain Rate"}, &QtfConditionInfo::Name);
  ASSERT_NE(drain, table.end());
  EXPECT_EQ(drain->Type, 3U);
  EXPECT_EQ(drain->MinValue, 0x80000000U);
  EXPECT_EQ(drain->MaxValue, 0x7FFFFFFFU);
  EXPECT_STREQ(table[45].Name, "Reg key");
  ASSERT_EQ(table[45].OptionCount, 1U);
  EXPECT_STREQ(table[45].Options[0].Text, "<regkey_name>==<value>");
  EXPECT_EQ(table[45].Options[0].Value, -1);
}

}  // namespace
}  // namespace test
