// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/tool/run_tool.h"

namespace test {
namespace {

TEST(Version, of_the_tool_the_library_and_the_simulated_driver) {
  const Tool tool;
  EXPECT_EQ(tool.run({"version"}), done("tool     " VQS_VERSION "\nlibrary  " VQS_VERSION
                                        ".0 (simulated)\ndriver   " VQS_VERSION ".0 (simulated)\n"));
  EXPECT_TRUE(tool.files().empty());
}

TEST(Version, is_that_of_the_only_library_with_simulated) {
  const Tool tool;
  EXPECT_EQ(tool.run({"version", "--simulated"}), tool.run({"version"}));
}

TEST(Version, reports_an_output_that_cannot_take_it) {
  EXPECT_EQ(Tool{}.run({"version"}, {.environment = {}, .output = "-", .longestFile = {}}),
            failed("vqs: standard output cannot be written: Bad file descriptor\n"));
}

}  // namespace
}  // namespace test
