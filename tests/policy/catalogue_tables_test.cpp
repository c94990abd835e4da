// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include <vqs/catalogue.h>
#include "src/channel/session_record.h"
#include "tests/support/scripted_driver.h"

namespace test {
namespace {

struct Option {
  std::string text;
  std::uint32_t value;
};

/// One line of a catalogue as it is written down, by column.
class Row {
 public:
  explicit Row(const std::string& line) {
    std::size_t begin = 0;
    for (std::size_t tab; (tab = line.find('\t', begin)) != std::string::npos; begin = tab + 1)
      columns_.push_back(line.substr(begin, tab - begin));
    columns_.push_back(line.substr(begin));
  }
  [[nodiscard]] std::size_t columns() const { return columns_.size(); }
  [[nodiscard]] const std::string& text(std::size_t column) const { return columns_.at(column); }
  /// Signed and unsigned numbers alike, as the 32 bits that a record holds.
  [[nodiscard]] std::uint32_t number(std::size_t column) const { return parse(text(column)); }
  /// "text"=value; "text"=value
  [[nodiscard]] std::vector<Option> options(std::size_t column) const {
    const std::string& all = text(column);
    std::vector<Option> found;
    for (std::size_t at = 0; at < all.size();) {
      const std::size_t close = all.find("\"=", at + 1);
      const std::size_t end = std::min(all.find("; \"", close), all.size());
      found.push_back({all.substr(at + 1, close - at - 1), parse(all.substr(close + 2, end - close - 2))});
      at = end == all.size() ? end : end + 2;
    }
    return found;
  }

 private:
  static std::uint32_t parse(const std::string& number) {
    std::size_t used = 0;
    const auto value = std::stoll(number, &used);
    EXPECT_EQ(used, number.size()) << number;
    return static_cast<std::uint32_t>(value);
  }

  std::vector<std::string> columns_;
};

std::vector<Row> readRows(const std::string& name, std::size_t columns) {
  std::ifstream file{std::string{VQS_TEST_DATA} + "/" + name};
  std::vector<Row> rows;
  std::string line;
  std::getline(file, line);
  while (std::getline(file, line)) {
    rows.emplace_back(line);
    EXPECT_EQ(rows.back().columns(), columns) << line;
  }
  return rows;
}

void expectOptions(const QtfOptionInfo* actual, std::uint32_t count, const std::vector<Option>& expected) {
  ASSERT_EQ(count, expected.size());
  ASSERT_EQ(actual == nullptr, expected.empty());
  for (std::size_t i = 0; i < expected.size(); ++i)
    EXPECT_EQ(bytesOf(actual[i]), Record(36).text(0, expected[i].text).u32(32, expected[i].value).bytes())
        << expected[i].text;
}

/// A record's bytes without those of its pointer to the options.
template <class Info>
Bytes withoutPointer(const Info& info) {
  return Record(sizeof(Info)).put(0, bytesOf(info)).fill(104, 8, 0);
}

Bytes conditionRecord(const Row& row) {
  return Record(312)
      .u32(0, row.number(0))
      .u32(4, row.number(7))
      .u32(8, row.number(2))
      .u32(12, row.number(3))
      .u32(16, row.number(4))
      .u32(20, row.number(5))
      .text(24, row.text(6))
      .text(36, row.text(1))
      .u32(100, static_cast<std::uint32_t>(row.options(13).size()))
      .u32(112, row.number(8))
      .u32(116, row.number(9))
      .u32(120, row.number(10))
      .u32(124, row.number(11))
      .u32(128, row.number(12));
}

Bytes actionRecord(const Row& row) {
  return Record(304)
      .u32(0, row.number(0))
      .u32(4, row.number(6))
      .u32(8, row.number(2))
      .u32(12, row.number(3))
      .u32(16, row.number(4))
      .text(20, row.text(5))
      .text(32, row.text(1))
      .u32(96, static_cast<std::uint32_t>(row.options(9).size()))
      .u32(112, row.number(7))
      .u32(116, row.number(8));
}

/// The tables as a driver leaves them that does not know the support requests.
class CatalogueTables : public ::testing::Test {
 protected:
  std::span<const QtfConditionInfo> conditions() {
    driver.expectSame(0x80222044).request(Record(16).u32(0, 1)).fails();
    const QtfConditionInfo* table = nullptr;
    std::uint32_t count = 0;
    EXPECT_EQ(vqsPbGetConditions(session, &table, &count), 0U);
    return {table, count};
  }
  std::span<const QtfActionInfo> actions() {
    driver.expectSame(0x80222044).request(Record(16).u32(0, 3)).fails();
    const QtfActionInfo* table = nullptr;
    std::uint32_t count = 0;
    EXPECT_EQ(vqsPbGetActions(session, &table, &count), 0U);
    return {table, count};
  }

  ScriptedDriver driver;
  OpenSession session{driver};
};

TEST_F(CatalogueTables, hold_every_condition_as_it_is_written_down) {
  const auto rows = readRows("conditions.tsv", 14);
  const auto table = conditions();
  ASSERT_EQ(rows.size(), 73U);
  ASSERT_EQ(table.size(), 73U);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    SCOPED_TRACE(rows[i].text(1));
    EXPECT_EQ(difference(withoutPointer(table[i]), conditionRecord(rows[i])), "");
    expectOptions(table[i].Options, table[i].OptionCount, rows[i].options(13));
  }
}

TEST_F(CatalogueTables, hold_every_action_as_it_is_written_down) {
  const auto rows = readRows("actions.tsv", 10);
  const auto table = actions();
  ASSERT_EQ(rows.size(), 168U);
  ASSERT_EQ(table.size(), 168U);
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
