// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/tool/run_tool.h"

namespace test {
namespace {

TEST(TelemetryKeys, needs_no_driver) {
  const Tool tool;
  tool.writeText("driver.state", "not the state of a driver");
  EXPECT_EQ(tool.run({"telemetry", "keys"}).exitCode, 0);
  EXPECT_EQ(tool.run({"telemetry", "show"}).exitCode, 3);
}

}  // namespace
}  // namespace test
