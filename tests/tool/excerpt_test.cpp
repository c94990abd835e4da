// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tool/terminal/excerpt.h"

namespace test {
namespace {

using tool::renderExcerpt;

TEST(Excerpt, marks_a_stretch_of_a_line) {
  EXPECT_EQ(renderExcerpt(14, R"(        { "Power Source": 77 },)", 26, 28),
            "   14 |         { \"Power Source\": 77 },\n"
            "      |                           ^^\n");
}

TEST(Excerpt, marks_one_character_at_least) {
  EXPECT_EQ(renderExcerpt(1, "abc", 1, 1),
            "    1 | abc\n"
            "      |  ^\n");
  EXPECT_EQ(renderExcerpt(1, "abc", 3, 3),
            "    1 | abc\n"
            "      |    ^\n");
  EXPECT_EQ(renderExcerpt(1, "", 0, 0),
            "    1 |\n"
            "      | ^\n");
}

TEST(Excerpt, puts_its_marks_below_the_characters_behind_tabs) {
  EXPECT_EQ(renderExcerpt(2, "\t\"a\"\t: 7", 7, 8),
            "    2 |     \"a\" : 7\n"
            "      |           ^\n");
}

TEST(Excerpt, puts_its_marks_below_wide_characters_and_those_without_a_width) {
  // Two kana of two columns each, an e with an accent of its own, and a battery.
  EXPECT_EQ(renderExcerpt(3, "\"バッ\": é🔋", 0, 8),
            "    3 | \"バッ\": é🔋\n"
            "      | ^^^^^^\n");
  EXPECT_EQ(renderExcerpt(3, "バe\xCC\x81🔋x", 6, 10),
            "    3 | バe\xCC\x81🔋x\n"
            "      |    ^^\n");
}

TEST(Excerpt, escapes_what_could_drive_a_terminal) {
  EXPECT_EQ(renderExcerpt(4, "a\x1b[1mb\xFF", 6, 7),
            "    4 | a\\u001b[1mb\\xff\n"
            "      |            ^^^^\n");
}

TEST(Excerpt, shows_the_surroundings_of_the_marks_in_a_long_line) {
  const std::string line = std::string(300, 'a') + "XY" + std::string(300, 'b');
  EXPECT_EQ(renderExcerpt(5, line, 300, 302), "    5 | ..." + std::string(40, 'a') + "XY" + std::string(58, 'b') +
                                                  "...\n      | " + std::string(43, ' ') + "^^\n");
  EXPECT_EQ(renderExcerpt(5, line, 0, 2), "    5 | " + std::string(100, 'a') + "...\n      | ^^\n");
  EXPECT_EQ(renderExcerpt(5, line, 602, 602),
            "    5 | ..." + std::string(40, 'b') + "\n      | " + std::string(43, ' ') + "^\n");
}

TEST(Excerpt, of_a_line_of_megabytes_is_as_short) {
  const std::string line = std::string(5000000, 'a') + "XY" + std::string(5000000, 'b');
  EXPECT_EQ(renderExcerpt(123456, line, 5000000, 5000002), "123456 | ..." + std::string(40, 'a') + "XY" +
                                                               std::string(58, 'b') + "...\n       | " +
                                                               std::string(43, ' ') + "^^\n");
  EXPECT_EQ(renderExcerpt(7, line, 0, 10000002),
            "    7 | " + std::string(100, 'a') + "...\n      | " + std::string(100, '^') + "\n");
}

TEST(Excerpt, of_a_character_that_is_cut) {
  EXPECT_EQ(renderExcerpt(8, "\"\xE3\x83\"", 1, 3),
            "    8 | \"\\xe3\\x83\"\n"
            "      |  ^^^^^^^^\n");
}

}  // namespace
}  // namespace test
