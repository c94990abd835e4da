// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/tool/run_tool.h"

namespace test {
namespace {

TEST(BatteryLog, that_lacks_the_battery) {
  const Tool tool;
  EXPECT_EQ(tool.run({"battery"}, withDriverOptions("log=empty")),
            failed("vqs: the driver's log does not hold key BatteryChargeLevel (28)\n"));
  EXPECT_EQ(tool.run({"battery"}, withDriverOptions("log=repeated-key")),
            failed("vqs: the driver's log cannot be read to its end: key DesignedBatteryCapacity (25) is in it more "
                   "than once\n"));
  EXPECT_EQ(
      tool.run({"battery"}, withDriverOptions("log=version")),
      withoutDriver("vqs: the driver's log cannot be started: the driver answers with a data version that this library "
                    "does not know\n"));
}

}  // namespace
}  // namespace test
