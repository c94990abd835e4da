// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/tool/run_tool.h"

namespace test {
namespace {

TEST(Usage, help_that_cannot_be_written) {
  EXPECT_EQ(Tool{}.run({"--help"}, {.environment = {}, .output = "/dev/full", .longestFile = {}}),
            failed("vqs: standard output cannot be written: No space left on device\n"));
}

TEST(Usage, unknown_store_of_any_bytes) {
  EXPECT_EQ(Tool{}.run({"store", "list", "a\x1b\n\xff"}),
            wrongUsage("vqs: \"a\\u001b\\n\\xff\" is not a store, the stores are pb, asm or balance-profile\n"));
}

}  // namespace
}  // namespace test
