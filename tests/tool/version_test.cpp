// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tool/run_tool.h"

namespace test {
namespace {

TEST(Version, of_the_tool_the_library_and_the_simulated_driver) {
  const Tool tool;
  EXPECT_EQ(tool.run({"version"}),
            done("tool     " VQS_VERSION "\nlibrary  " VQS_VERSION ".0\ndriver   " VQS_VERSION ".0\n"));
  EXPECT_TRUE(tool.files().empty());
}

}  // namespace
}  // namespace test
