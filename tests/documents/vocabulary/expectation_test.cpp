// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "documents/vocabulary/vocabulary.h"

namespace documents {
namespace {

std::string ofCondition(const char* name) { return expectation(*wordOf(WordKind::kCondition, name)); }
std::string ofAction(const char* name) { return expectation(*wordOf(WordKind::kAction, name)); }

TEST(Expectation, names_the_options) {
  EXPECT_EQ(ofCondition("Power Source"), R"("AC Power" (0) or "DC Power" (1) is expected)");
  EXPECT_EQ(ofCondition("NPU Workload Type"), R"("Best Effort" (1) or "Real-time" (2) is expected)");
  EXPECT_EQ(ofAction("PPM SMTUNPARKPOLICY"),
            R"("Core" (0), "Core per thread" (1), "Round robin" (2) or "Sequential" (3) is expected)");
}

TEST(Expectation, names_nine_of_many_options) {
  EXPECT_EQ(ofCondition("Display Type"),
            R"("Uninit" (4294967294), "Other" (4294967295), "HD15" (0), "SVIDEO" (1), "Composite" (2), )"
            R"("Component" (3), "DVI" (4), "HDMI" (5), "LVDS" (6) or one of 10 others is expected)");
}

TEST(Expectation, names_ten_options_when_there_are_no_more) {
  EXPECT_EQ(ofCondition("Platform Type"),
            R"("Unknown" (0), "Lid Close" (1), "Clamshell" (2), "Flat" (3), "Tent" (4), "Stand" (5), "Tablet" (6), )"
            R"("Book" (7), "Presentation" (8) or "Pull Forward" (9) is expected)");
}

TEST(Expectation, of_a_bit_set_is_a_list) {
  EXPECT_EQ(ofCondition("App State"),
            R"(a list of "Foreground" (1), "Background" (2), "Full Screen" (4), "Windowed" (8), "Encode" (16) or )"
            R"("Decode" (32) is expected)");
}

TEST(Expectation, names_the_range_and_the_unit) {
  EXPECT_EQ(ofAction("Display Brightness"), "a number from 0 to 100, in %, is expected");
  EXPECT_EQ(ofAction("QTF SPPT TC"), "a number from 1 to 300, in 100ms, is expected");
  EXPECT_EQ(ofCondition("NPU Column"), "a number from 0 to 7 is expected");
  EXPECT_EQ(ofCondition("Skin Temperature"), "a number from 0 to 4294967295, in centi-C, is expected");
  EXPECT_EQ(ofCondition("Battery Drain Rate"), "a number from -2147483648 to 2147483647, in mW, is expected");
}

TEST(Expectation, of_one_value_is_that_value) {
  EXPECT_EQ(ofCondition("App Detection"), "0 is expected");
  EXPECT_EQ(ofAction("Custom Workload"), "0 is expected");
}

}  // namespace
}  // namespace documents
