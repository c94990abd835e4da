// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <regex>

#include "documents/schema/number_pattern.h"

namespace documents {
namespace {

std::regex whole(std::uint64_t least, std::uint64_t most) { return std::regex('(' + numberPattern(least, most) + ')'); }

TEST(NumberPattern, is_short_where_a_range_has_round_ends) {
  EXPECT_EQ(numberPattern(0, 9), "[0-9]");
  EXPECT_EQ(numberPattern(5, 5), "5");
  EXPECT_EQ(numberPattern(0, 9999), "[0-9]|[1-9][0-9]{1,2}|[1-9][0-9]{3}");
  EXPECT_EQ(numberPattern(0, 255), "[0-9]|[1-9][0-9]|1[0-9]{2}|2[0-4][0-9]|25[0-5]");
}

TEST(NumberPattern, takes_the_numbers_of_its_range_and_no_other) {
  // Ends that are round, that are not, and that have as many digits or more.
  const std::uint64_t ends[] = {0, 1, 7, 9, 10, 11, 19, 73, 90, 99, 100, 101, 168, 199, 255, 300, 999, 1000, 1234};
  std::size_t compared = 0;
  for (const std::uint64_t least : ends) {
    for (const std::uint64_t most : ends) {
      if (most < least) continue;
      const std::regex pattern = whole(least, most);
      for (std::uint64_t number = 0; number <= 1300; ++number) {
        const bool isInside = least <= number && number <= most;
        ASSERT_EQ(std::regex_match(std::to_string(number), pattern), isInside)
            << number << " in " << least << " to " << most << ": " << numberPattern(least, most);
        ++compared;
      }
    }
  }
  EXPECT_EQ(compared, 190U * 1301);
}

TEST(NumberPattern, ends_where_a_field_ends) {
  const std::regex pattern = whole(73, 4294967295);
  for (const char* number : {"73", "99", "100", "999999999", "1000000000", "4294967294", "4294967295"})
    EXPECT_TRUE(std::regex_match(number, pattern)) << number;
  for (const char* number : {"0", "9", "72", "4294967296", "4294967300", "5000000000", "42949672950", "073", "", "-73"})
    EXPECT_FALSE(std::regex_match(number, pattern)) << number;
}

}  // namespace
}  // namespace documents
