// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "documents/vocabulary/distance.h"

namespace documents {
namespace {

TEST(EditDistance, counts_what_is_added_dropped_changed_or_swapped) {
  EXPECT_EQ(editDistance("lid", "lid"), 0U);
  EXPECT_EQ(editDistance("ld", "lid"), 1U);
  EXPECT_EQ(editDistance("liid", "lid"), 1U);
  EXPECT_EQ(editDistance("lad", "lid"), 1U);
  EXPECT_EQ(editDistance("ild", "lid"), 1U);
  EXPECT_EQ(editDistance("kitten", "sitting"), 3U);
}

TEST(EditDistance, of_nothing_is_what_the_other_has) {
  EXPECT_EQ(editDistance("", ""), 0U);
  EXPECT_EQ(editDistance("", "lid"), 3U);
  EXPECT_EQ(editDistance("lid", ""), 3U);
}

TEST(EditDistance, goes_over_more_than_one_swap) {
  EXPECT_EQ(editDistance("abcd", "badc"), 2U);
  EXPECT_EQ(editDistance("stirng lits", "string list"), 2U);
}

TEST(MostChanges, are_a_third_of_a_name_and_at_least_one) {
  EXPECT_EQ(mostChanges(""), 1U);
  EXPECT_EQ(mostChanges("SPL"), 1U);
  EXPECT_EQ(mostChanges("SPPTs"), 1U);
  EXPECT_EQ(mostChanges("Lid St"), 2U);
  EXPECT_EQ(mostChanges("Power Source"), 4U);
}

}  // namespace
}  // namespace documents
