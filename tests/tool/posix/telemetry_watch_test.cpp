// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <csignal>
#include <fstream>
#include <thread>

#include "tests/tool/run_tool.h"

namespace test {
namespace {

std::vector<std::string> watching(std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), {"telemetry", "watch"});
  return arguments;
}

ToolRun watchTelemetry(std::vector<std::string> arguments, const std::string& driverOptions = "time=0") {
  return Tool{}.run(watching(std::move(arguments)), withDriverOptions(driverOptions));
}

TEST(TelemetryWatch, sees_what_the_driver_refreshes) {
  // The clock runs here, and the driver counts its seconds.
  const auto run = Tool{}.run(watching({"DebugOutput", "--every", "2500", "--count", "2"}));
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_TRUE(run.out.starts_with("DebugOutput=0\nDebugOutput=")) << run.out;
  EXPECT_FALSE(run.out.ends_with("\nDebugOutput=0\n")) << run.out;
}

TEST(TelemetryWatch, writes_each_line_at_once_and_ends_with_an_interruption) {
  auto options = withDriverOptions("time=0");
  for (const int signal : {SIGINT, SIGTERM}) {
    options.signal = signal;
    EXPECT_EQ(Tool{}.run(watching({"PowerSource", "--every", "3600000"}), options), done("PowerSource=DC\n"));
  }
}

TEST(TelemetryWatch, leaves_a_driver_that_the_next_command_can_use) {
  const Tool tool;
  auto options = withDriverOptions("time=0");
  options.signal = SIGINT;
  ASSERT_EQ(tool.run(watching({"PowerSource", "--every", "3600000"}), options).exitCode, 0);
  EXPECT_EQ(tool.run({"telemetry", "show"}, withDriverOptions("time=0")).exitCode, 0);
}

TEST(TelemetryWatch, changes_values_in_place_on_a_terminal) {
  const Terminal terminal{.lines = 24, .columns = 80, .awaited = "\x1b[J", .times = 2, .keys = "\x03"};
  const auto run =
      Tool{}.runOn(terminal, watching({"PowerSource", "nvmeModel", "--every", "500"}), withDriverOptions("time=0"));
  const std::string block =
      "NAME         VALUE\x1b[K\r\n"
      "PowerSource  DC\x1b[K\r\n"
      "nvmeModel    Simulated NVMe 512 GB\x1b[K\r\n\x1b[J";
  EXPECT_EQ(run, done(block + "\r\x1b[3A" + block + "^C\r\n"));
}

TEST(TelemetryWatch, fits_its_values_into_a_small_terminal) {
  const Terminal terminal{.lines = 3, .columns = 20, .awaited = "", .times = 1, .keys = ""};
  const auto run = Tool{}.runOn(terminal, watching({"nvmeModel", "PowerSource", "LidClosed", "--count", "1"}),
                                withDriverOptions("time=0"));
  EXPECT_EQ(run, done("NAME         VALUE\x1b[K\r\n... 3 more need a t\x1b[K\r\n\x1b[J"));
}

TEST(TelemetryWatch, writes_lines_to_a_terminal_without_escape_sequences) {
  const Terminal terminal{.lines = 24, .columns = 80, .awaited = "", .times = 1, .keys = ""};
  auto options = withDriverOptions("time=0");
  options.environment["TERM"] = "dumb";
  EXPECT_EQ(Tool{}.runOn(terminal, watching({"PowerSource", "--every", "10", "--count", "2"}), options),
            done("PowerSource=DC\r\nPowerSource=DC\r\n"));
}

TEST(TelemetryWatch, damaged_log_ends_it) {
  const ToolRun expected{.exitCode = 2,
                         .out = "DesignedBatteryCapacity=60000 PowerSource=-\n",
                         .err =
                             "vqs: the driver's log cannot be read to its end: key DesignedBatteryCapacity (25) is "
                             "in it more than once\n"};
  EXPECT_EQ(watchTelemetry({"25", "24"}, "log=repeated-key"), expected);
}

TEST(TelemetryWatch, key_that_the_log_does_not_hold) {
  EXPECT_EQ(watchTelemetry({"PowerSource", "--count", "2", "--every", "10"}, "log=empty"),
            done("PowerSource=-\nPowerSource=-\n"));
}

TEST(TelemetryWatch, output_that_cannot_take_more) {
  auto options = withDriverOptions("time=0");
  options.output = "/dev/full";
  EXPECT_EQ(Tool{}.run(watching({"--every", "10"}), options),
            failed("vqs: standard output cannot be written: No space left on device\n"));
}

TEST(TelemetryWatch, reader_that_goes_away) {
  const Tool tool;
  ASSERT_EQ(mkfifo(tool.path("pipe").c_str(), 0600), 0);
  auto options = withDriverOptions("time=0");
  options.output = "pipe";
  std::thread reader{[&] {
    std::string line;
    std::getline(std::ifstream{tool.path("pipe")}, line);
    EXPECT_EQ(line, "PowerSource=DC");
  }};
  EXPECT_EQ(tool.run(watching({"PowerSource", "--every", "10"}), options),
            failed("vqs: standard output cannot be written: Broken pipe\n"));
  reader.join();
}

}  // namespace
}  // namespace test
