// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "tests/tool/run_tool.h"

namespace test {
namespace {

/// A tool whose battery's moving values are dictated.
class Battery : public testing::Test {
 protected:
  void SetUp() override {
    for (const auto& [key, value] :
         {std::pair{"BatteryChargeRate", "-12500"}, {"BatteryChargeLevel", "64"}, {"batteryTemperature", "3105"}})
      ASSERT_EQ(tool.run({"override", key, value}).exitCode, 0);
  }

  Tool tool;
};

TEST_F(Battery, is_shown_as_text) {
  EXPECT_EQ(tool.run({"battery"}), done("charge level       64 %\n"
                                        "charge rate        -12500 mW\n"
                                        "full capacity      57000 mWh\n"
                                        "designed capacity  60000 mWh\n"
                                        "temperature        3105\n"
                                        "limits             20, 80, 0, 45\n"));
}

TEST_F(Battery, as_json) {
  const auto run = tool.run({"battery", "--json"});
  ASSERT_EQ(run.exitCode, 0) << run;
  EXPECT_EQ(nlohmann::json::parse(run.out), nlohmann::json::parse(R"({
      "temperature": 3105, "limits": [20, 80, 0, 45], "chargeLevel": 64, "chargeRate": -12500,
      "fullCapacity": 57000, "designedCapacity": 60000})"));
}

}  // namespace
}  // namespace test
