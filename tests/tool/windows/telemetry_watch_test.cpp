// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <sstream>

#include "tests/tool/run_tool.h"

namespace test {
namespace {

TEST(TelemetryWatch, sees_the_seconds_of_a_driver_that_runs_on_its_own) {
  const auto run = Tool{}.run({"telemetry", "watch", "DebugOutput", "--every", "2500", "--count", "2"});
  ASSERT_EQ(run.exitCode, 0) << run;
  std::istringstream lines{run.out};
  std::string first;
  std::string second;
  std::getline(lines, first);
  std::getline(lines, second);
  EXPECT_TRUE(first.starts_with("DebugOutput=")) << run;
  EXPECT_TRUE(second.starts_with("DebugOutput=")) << run;
  EXPECT_NE(first, second);
}

}  // namespace
}  // namespace test
