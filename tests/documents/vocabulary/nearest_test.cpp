// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "documents/vocabulary/vocabulary.h"

namespace documents {
namespace {

using Names = std::vector<std::string_view>;

TEST(NearestWords, are_those_with_the_fewest_changes) {
  EXPECT_EQ(nearestWords(WordKind::kCondition, "Power Sorce"), Names{"Power Source"});
  EXPECT_EQ(nearestWords(WordKind::kCondition, "Lid Sate"), Names{"Lid State"});
  EXPECT_EQ(nearestWords(WordKind::kAction, "Fan Mod"), Names{"Fan Mode"});
}

TEST(NearestWords, are_three_at_most_and_the_nearest_first) {
  EXPECT_EQ(nearestWords(WordKind::kCondition, "BIOS Input"), (Names{"BIOS Input 1", "BIOS Input 2", "BIOS Input 3"}));
  EXPECT_EQ(nearestWords(WordKind::kAction, "SPP"), (Names{"SPL", "SPPT", "SPPT APU Only"}));
}

TEST(NearestWords, take_any_case_and_anything_between_words) {
  EXPECT_EQ(nearestWords(WordKind::kCondition, "power_source"), Names{"Power Source"});
  EXPECT_EQ(nearestWords(WordKind::kCondition, "SKIN-TEMPERATUR"), Names{"Skin Temperature"});
}

TEST(NearestWords, are_those_that_begin_so) {
  EXPECT_EQ(nearestWords(WordKind::kCondition, "Skin"), Names{"Skin Temperature"});
  EXPECT_EQ(nearestWords(WordKind::kCondition, "Skin Temp"), Names{"Skin Temperature"});
}

TEST(NearestWords, are_none_where_none_is_near) {
  EXPECT_EQ(nearestWords(WordKind::kCondition, ""), Names{});
  EXPECT_EQ(nearestWords(WordKind::kCondition, "Weather"), Names{});
  std::string longest;
  longest.resize(10'000'000, 'P');
  EXPECT_EQ(nearestWords(WordKind::kCondition, longest), Names{});
}

TEST(NearestOptions, are_those_of_the_word) {
  const Word& word = *wordOf(WordKind::kCondition, "Power Mode");
  EXPECT_EQ(nearestOptions(word, "Ballanced"), Names{"Balanced"});
  EXPECT_EQ(nearestOptions(word, "Best"), (Names{"Best Power Efficiency", "Best Performance"}));
  EXPECT_EQ(nearestOptions(word, "Auto"), Names{});
}

}  // namespace
}  // namespace documents
