// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/tool/run_tool.h"

namespace test {
namespace {

TEST(StoreList, reports_an_output_that_cannot_take_the_table) {
  EXPECT_EQ(Tool{}.run({"store", "list", "asm"}, {.environment = {}, .output = "/dev/full", .longestFile = {}}),
            failed("vqs: standard output cannot be written: No space left on device\n"));
}

}  // namespace
}  // namespace test
