// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/tool/run_tool.h"

namespace test {
namespace {

TEST(OverrideKeys, of_a_fresh_driver) {
  const auto list = Tool{}.run({"override"}, withDriverOptions("time=0"));
  EXPECT_EQ(list.exitCode, 0);
  EXPECT_EQ(list.err, "");
  EXPECT_EQ(std::ranges::count(list.out, '\n'), 29);
  EXPECT_TRUE(
      list.out.starts_with("KEY  NAME                RANGE               VALUE  OVERRIDDEN\n"
                           "  2  LidClosed           0 to 1                  0  no\n"
                           "  4  UserEngaged         0 to 1                  1  no\n"
                           "  5  UserPresent         0 to 1                  1  no\n"
                           " 24  PowerSource         0 to 1                  1  no\n"
                           " 27  BatteryChargeRate   -100000 to 100000  -"))
      << list.out;
  for (const std::string line : {" 28  BatteryChargeLevel  0 to 100               80  no\n",
                                 " 31  AppInput1           0 to 4294967295         0  no\n",
                                 " 52  PowerMode           0 to 4                  2  no\n"})
    EXPECT_NE(list.out.find('\n' + line), std::string::npos) << line << list.out;
}

}  // namespace
}  // namespace test
