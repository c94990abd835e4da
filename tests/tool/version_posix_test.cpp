// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tool/run_tool.h"

namespace test {
namespace {

TEST(Version, reports_an_output_that_cannot_take_it) {
  EXPECT_EQ(Tool{}.run({"version"}, {.environment = {}, .output = "-", .longestFile = {}}),
            failed("vqs: standard output cannot be written: Bad file descriptor\n"));
}

}  // namespace
}  // namespace test
