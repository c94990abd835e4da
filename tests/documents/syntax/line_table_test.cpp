// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "documents/findings/finding.h"

namespace documents {

// Found by the name lookup of the assertions.
bool operator==(const Position& a, const Position& b) {
  return a.line == b.line && a.column == b.column && a.unit == b.unit;
}
void PrintTo(const Position& place, std::ostream* stream) {
  *stream << place.line << ':' << place.column << " unit " << place.unit;
}

namespace {

constexpr Position at(std::size_t line, std::size_t column, std::size_t unit) {
  return {.line = line, .column = column, .unit = unit};
}

TEST(LineTable, counts_from_one) {
  const LineTable table{"ab\nc"};
  EXPECT_EQ(table.count(), 2U);
  EXPECT_EQ(table.positionOf(0), at(1, 1, 0));
  EXPECT_EQ(table.positionOf(2), at(1, 3, 2));
  EXPECT_EQ(table.positionOf(3), at(2, 1, 0));
  EXPECT_EQ(table.positionOf(4), at(2, 2, 1));
  EXPECT_EQ(table.positionOf(400), at(2, 2, 1));
}

TEST(LineTable, an_empty_text_has_one_line) {
  const LineTable table{""};
  EXPECT_EQ(table.count(), 1U);
  EXPECT_EQ(table.positionOf(0), at(1, 1, 0));
  EXPECT_EQ(table.line(1), "");
  EXPECT_EQ(table.offsetOf(1, 3), 0U);
}

TEST(LineTable, counts_characters_and_units) {
  const LineTable table{"\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80x"};
  EXPECT_EQ(table.positionOf(2), at(1, 2, 1));
  EXPECT_EQ(table.positionOf(5), at(1, 3, 2));
  EXPECT_EQ(table.positionOf(9), at(1, 4, 4));
  EXPECT_EQ(table.positionOf(7), at(1, 3, 2)) << "inside of a character";
}

TEST(LineTable, a_broken_byte_is_a_character) {
  const LineTable table{"\xFF\xFE\x80x"};
  EXPECT_EQ(table.positionOf(3), at(1, 4, 3));
}

TEST(LineTable, knows_three_line_ends) {
  const LineTable table{"a\nb\r\nc\rd\n\r\n"};
  EXPECT_EQ(table.count(), 6U);
  const std::string_view lines[] = {"a", "b", "c", "d", "", ""};
  for (std::size_t i = 0; i < 6; ++i) EXPECT_EQ(table.line(i + 1), lines[i]) << i;
  EXPECT_EQ(table.positionOf(5), at(3, 1, 0));
  EXPECT_EQ(table.line(0), "");
  EXPECT_EQ(table.line(7), "");
}

TEST(LineTable, a_byte_order_mark_is_no_part_of_the_first_line) {
  const LineTable table{"\xEF\xBB\xBF{\n}"};
  EXPECT_EQ(table.positionOf(0), at(1, 1, 0));
  EXPECT_EQ(table.positionOf(3), at(1, 1, 0));
  EXPECT_EQ(table.positionOf(4), at(1, 2, 1));
  EXPECT_EQ(table.line(1), "{");
  EXPECT_EQ(table.offsetOf(1, 1), 4U);
}

TEST(LineTable, finds_the_place_of_a_unit) {
  const LineTable table{"ab\r\n\xF0\x9F\x98\x80x\n"};
  EXPECT_EQ(table.offsetOf(1, 0), 0U);
  EXPECT_EQ(table.offsetOf(1, 2), 2U);
  EXPECT_EQ(table.offsetOf(1, 9), 2U) << "behind the line's end";
  EXPECT_EQ(table.offsetOf(2, 0), 4U);
  EXPECT_EQ(table.offsetOf(2, 1), 4U) << "inside of a character";
  EXPECT_EQ(table.offsetOf(2, 2), 8U);
  EXPECT_EQ(table.offsetOf(2, 3), 9U);
  EXPECT_EQ(table.offsetOf(3, 0), 10U);
  EXPECT_EQ(table.offsetOf(9, 0), 10U) << "no such line";
}

TEST(LineTable, places_in_long_lines_go_there_and_back) {
  std::string text;
  for (int i = 0; i < 900; ++i) text += i % 300 == 299 ? "\n" : "a\xC3\xA4\xF0\x9F\x98\x80";
  const LineTable table{text};
  ASSERT_EQ(table.count(), 4U);
  // Three characters and four units in seven bytes each.
  EXPECT_EQ(table.positionOf(7 * 298), at(1, 3 * 298 + 1, 4 * 298));
  EXPECT_EQ(table.positionOf(7 * 299 + 1 + 7 * 250 + 1), at(2, 3 * 250 + 2, 4 * 250 + 1));
  EXPECT_EQ(table.offsetOf(2, 4 * 250 + 1), 7U * 299 + 1 + 7 * 250 + 1);
  EXPECT_EQ(table.offsetOf(1, 4 * 299), 7U * 299);
  EXPECT_EQ(table.offsetOf(1, 4 * 299 + 1), 7U * 299);
}

}  // namespace
}  // namespace documents
