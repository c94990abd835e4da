// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>

#include <nlohmann/json.hpp>

#include "tests/support/listings.h"
#include "tests/tool/run_tool.h"

namespace test {
namespace {

using Json = nlohmann::ordered_json;

ToolRun showTelemetry(const Tool& tool, const std::string& driverOptions, std::vector<std::string> further = {}) {
  further.insert(further.begin(), {"telemetry", "show"});
  return tool.run(further, withDriverOptions(driverOptions));
}

TEST(TelemetryShow, of_a_fresh_driver) {
  const auto values = Json::parse(showTelemetry(Tool{}, "time=0", {"--json"}).out).at("values");
  EXPECT_EQ(values.at("BatteryChargeLevel"), 80);
  const auto exValues = Json::parse(showTelemetry(Tool{}, "time=0", {"--ex", "--json"}).out).at("values");
  EXPECT_EQ(exValues.at("BatChargeLevel"), 80);
  const auto table = showTelemetry(Tool{}, "time=0").out;
  EXPECT_NE(table.find("\n120  batteryChargeLevels_A            20*0\n"), std::string::npos) << table;
}

TEST(TelemetryShow, is_the_same_for_the_same_seed_and_time) {
  const auto first = showTelemetry(Tool{}, "seed=7,time=0");
  EXPECT_EQ(showTelemetry(Tool{}, "time=0,seed=7"), first);
  EXPECT_NE(showTelemetry(Tool{}, "seed=8,time=0"), first);
}

TEST(TelemetryShow, goes_on_with_the_clock_from_run_to_run) {
  const Tool tool;
  const auto debugOutputAt = [&](const std::string& time) {
    return Json::parse(showTelemetry(tool, "time=" + time, {"--json"}).out).at("values").at("DebugOutput");
  };
  EXPECT_EQ(debugOutputAt("5000"), 0);
  EXPECT_EQ(debugOutputAt("65000"), 60);
  EXPECT_EQ(debugOutputAt("185000"), 180);
}

/// What is shown of a log that goes wrong, and why it is not all.
struct DamagedLog {
  std::string fault;
  std::vector<std::string> generation;
  std::string out;
  std::string err;
};

TEST(TelemetryShow, damaged_log_is_shown_as_far_as_it_goes) {
  const std::string unread = "vqs: the driver's log cannot be read to its end: ";
  const std::vector<DamagedLog> cases = {{"unknown-key", {}, "", "its first record has an unknown key id\n"},
                                         {"unknown-key", {"--ex"}, "", "its first record has an unknown key id\n"},
                                         {"negative-key", {}, "", "its first record has an unknown key id\n"},
                                         {"negative-key", {"--ex"}, "", "its first record has an unknown key id\n"},
                                         {"repeated-key",
                                          {},
                                          "ID  NAME                     VALUE\n25  DesignedBatteryCapacity  60000\n",
                                          "key DesignedBatteryCapacity (25) is in it more than once\n"},
                                         {"repeated-key",
                                          {"--ex"},
                                          "ID  NAME         VALUE\n 1  DeviceState  0\n",
                                          "key DeviceState (1) is in it more than once\n"}};
  for (const auto& [fault, generation, out, err] : cases) {
    const ToolRun expected{.exitCode = 2, .out = out, .err = unread + err};
    EXPECT_EQ(showTelemetry(Tool{}, "time=0,log=" + fault, generation), expected) << fault;
  }
}

TEST(TelemetryShow, log_without_an_end_is_shown_once) {
  const auto run = showTelemetry(Tool{}, "time=0,log=no-end");
  EXPECT_EQ(run.exitCode, 2);
  EXPECT_EQ(run.err, "vqs: the driver's log cannot be read to its end: it does not end behind all of its " +
                         std::to_string(listedIn(kKeyListing)) + " keys\n");
  EXPECT_EQ(run.out, showTelemetry(Tool{}, "time=0").out);
  const auto exRun = showTelemetry(Tool{}, "time=0,log=no-end", {"--ex"});
  EXPECT_EQ(exRun.exitCode, 2);
  EXPECT_EQ(exRun.err, "vqs: the driver's log cannot be read to its end: it does not end behind all of its 50 keys\n");
  EXPECT_EQ(std::ranges::count(exRun.out, '\n'), 51);
}

TEST(TelemetryShow, damaged_log_as_json) {
  const ToolRun expected{.exitCode = 2,
                         .out = "{\n  \"values\": {\n    \"DesignedBatteryCapacity\": 60000\n  }\n}\n",
                         .err =
                             "vqs: the driver's log cannot be read to its end: key DesignedBatteryCapacity (25) is "
                             "in it more than once\n"};
  EXPECT_EQ(showTelemetry(Tool{}, "log=repeated-key", {"--json"}), expected);
}

TEST(TelemetryShow, log_without_keys) {
  EXPECT_EQ(showTelemetry(Tool{}, "log=empty"), done("The driver's log holds no keys.\n"));
  EXPECT_EQ(showTelemetry(Tool{}, "log=empty", {"--ex"}), done("The driver's log holds no keys.\n"));
  EXPECT_EQ(showTelemetry(Tool{}, "log=empty", {"--json"}), done("{\n  \"values\": {}\n}\n"));
}

TEST(TelemetryShow, log_of_another_version) {
  const auto expected = withoutDriver(
      "vqs: the driver's log cannot be started: the driver answers with a data version that this library does not "
      "know\n");
  EXPECT_EQ(showTelemetry(Tool{}, "log=version"), expected);
  EXPECT_EQ(showTelemetry(Tool{}, "log=version", {"--ex"}), expected);
}

TEST(TelemetryShow, driver_option_that_does_not_exist) {
  EXPECT_EQ(showTelemetry(Tool{}, "x=1"),
            withoutDriver("vqs: the driver's device cannot be found or opened: vexoqtf simulator: "
                          "VEXOQTF_SIMULATOR_OPTIONS: \"x=1\" is not understood\n"));
}

TEST(TelemetryShow, reports_an_output_that_cannot_take_it) {
  RunOptions options;
  options.output = "/dev/full";
  EXPECT_EQ(Tool{}.run({"telemetry", "show"}, options),
            failed("vqs: standard output cannot be written: No space left on device\n"));
}

}  // namespace
}  // namespace test
