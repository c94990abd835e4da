// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/support/listings.h"
#include "tests/tool/run_tool.h"

namespace test {
namespace {

std::vector<std::string> watching(std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), {"telemetry", "watch"});
  return arguments;
}

ToolRun watchTelemetry(std::vector<std::string> arguments) {
  return Tool{}.run(watching(std::move(arguments)), withSteadyDriver());
}

TEST(TelemetryWatch, a_line_for_each_reading) {
  EXPECT_EQ(watchTelemetry({"PowerSource", "DesignedBatteryCapacity", "--every", "10", "--count", "3"}),
            done("PowerSource=DC DesignedBatteryCapacity=60000\n"
                 "PowerSource=DC DesignedBatteryCapacity=60000\n"
                 "PowerSource=DC DesignedBatteryCapacity=60000\n"));
}

TEST(TelemetryWatch, keys_in_the_order_asked_for_by_name_or_id_whatever_the_case) {
  EXPECT_EQ(watchTelemetry({"25", "powersource", "SENSORSTATUS", "24", "--count", "1"}),
            done("DesignedBatteryCapacity=60000 PowerSource=DC SensorStatus=1,1,1,0 PowerSource=DC\n"));
}

TEST(TelemetryWatch, values_with_spaces_stay_one_word) {
  EXPECT_EQ(watchTelemetry({"nvmeModel", "PolicyPriority", "--count", "1"}),
            done("nvmeModel=\"Simulated NVMe 512 GB\" PolicyPriority=100*-1\n"));
}

/// One line of ten values that begins like this, while the charge is dictated.
void expectTenValues(const std::string& start, const std::vector<std::string>& arguments) {
  const Tool tool;
  ASSERT_EQ(tool.run({"override", "BatteryChargeLevel", "64"}, withSteadyDriver()).exitCode, 0);
  const auto run = tool.run(watching(arguments), withSteadyDriver());
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_TRUE(run.out.starts_with(start)) << run.out;
  EXPECT_EQ(std::ranges::count(run.out, '='), 10) << run.out;
  EXPECT_EQ(std::ranges::count(run.out, '\n'), 1) << run.out;
}

TEST(TelemetryWatch, ten_keys_without_any_asked_for) {
  expectTenValues("PowerSource=DC BatteryChargeLevel=64 BatteryChargeRate=-", {"--count", "1"});
}

TEST(TelemetryWatch, ex_log) {
  EXPECT_EQ(watchTelemetry({"--ex", "PowerSource", "23", "--count", "1"}),
            done("PowerSource=1 DesignedBatCap=60000\n"));
  expectTenValues("PowerSource=1 BatChargeLevel=64 BatChargeRate=-", {"--ex", "--count", "1"});
}

TEST(TelemetryWatch, into_a_file) {
  const Tool tool;
  auto options = withSteadyDriver();
  options.output = "watched.txt";
  EXPECT_EQ(tool.run(watching({"PowerSource", "--every", "10", "--count", "2"}), options), done(""));
  EXPECT_EQ(tool.readText("watched.txt"), "PowerSource=DC\nPowerSource=DC\n");
}

TEST(TelemetryWatch, unknown_key) {
  EXPECT_EQ(watchTelemetry({"powersorce"}),
            wrongUsage("vqs: \"powersorce\" is not a key of the log; did you mean \"PowerSource\"?\n"));
  EXPECT_EQ(watchTelemetry({"PowerSource", "BatChargeRte", "--ex"}),
            wrongUsage("vqs: \"BatChargeRte\" is not a key of the log; did you mean \"BatChargeRate\"?\n"));
  EXPECT_EQ(watchTelemetry({"weather"}), wrongUsage("vqs: \"weather\" is not a key of the log\n"));
  const auto behindTheLast = std::to_string(listedIn(kKeyListing) + 1);
  EXPECT_EQ(watchTelemetry({behindTheLast}), wrongUsage("vqs: \"" + behindTheLast + "\" is not a key of the log\n"));
  EXPECT_EQ(watchTelemetry({"0"}), wrongUsage("vqs: \"0\" is not a key of the log\n"));
  EXPECT_EQ(watchTelemetry({"51", "--ex"}), wrongUsage("vqs: \"51\" is not a key of the log\n"));
  EXPECT_EQ(watchTelemetry({""}), wrongUsage("vqs: \"\" is not a key of the log\n"));
}

TEST(TelemetryWatch, numbers_out_of_range) {
  for (const std::string every : {"9", "3600001", "0", "-5", "1s", "", "99999999999"})
    EXPECT_EQ(watchTelemetry({"PowerSource", "--every", every}),
              wrongUsage("vqs: --every \"" + every + "\": a number of 10 to 3600000 is expected\n"));
  for (const std::string count : {"0", "-1", "many", "4294967296"})
    EXPECT_EQ(watchTelemetry({"PowerSource", "--count", count}),
              wrongUsage("vqs: --count \"" + count + "\": a number of 1 to 4294967295 is expected\n"));
}

}  // namespace
}  // namespace test
