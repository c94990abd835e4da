// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tool/run_tool.h"

namespace test {
namespace {

TEST(DriverState, is_not_a_file_where_the_driver_is_not_simulated) {
  const Tool tool;
  EXPECT_EQ(tool.run({"store", "list", "asm", "--driver-state", "my.state"}),
            wrongUsage("vqs: --driver-state: the driver is not simulated on this system\n"));
  EXPECT_TRUE(tool.files().empty());
}

}  // namespace
}  // namespace test
