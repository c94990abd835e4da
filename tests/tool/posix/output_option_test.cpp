// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <thread>

#include "tests/tool/run_tool.h"

namespace test {
namespace {

RunOptions onTheWayTo(const std::string& output) {
  auto options = withSteadyDriver();
  options.output = output;
  return options;
}

/// Ends the tool once a line is in the file that it is writing, whose name has the tool's process number in it.
void interruptWriterOf(const Tool& tool, const std::string& target) {
  std::string name;
  while (name.empty() || tool.readText(name).empty()) {
    usleep(10000);
    for (const auto& file : tool.files())
      if (file.starts_with(target + '.')) name = file;
  }
  EXPECT_EQ(kill(std::stoi(name.substr(target.size() + 1)), SIGINT), 0);
}

TEST(OutputOptionTarget, gets_what_an_interrupted_command_has_read) {
  const Tool tool;
  std::thread interrupter{[&] { interruptWriterOf(tool, "out.txt"); }};
  EXPECT_EQ(tool.run({"telemetry", "watch", "PowerSource", "--every", "3600000", "-o", "out.txt"}, withSteadyDriver()),
            done(""));
  interrupter.join();
  EXPECT_EQ(tool.readText("out.txt"), "PowerSource=DC\n");
  EXPECT_EQ(tool.files(), std::vector<std::string>{"out.txt"});
}

TEST(OutputOptionTarget, damaged_log_leaves_a_file_alone) {
  const Tool tool;
  tool.writeText("out.txt", "precious");
  for (const std::string command : {"show", "watch"})
    EXPECT_EQ(tool.run({"telemetry", command, "-o", "out.txt"}, withDriverOptions("time=0,log=repeated-key")),
              failed("vqs: the driver's log cannot be read to its end: key DesignedBatteryCapacity (25) is in it more "
                     "than once\n"));
  EXPECT_EQ(tool.readText("out.txt"), "precious");
  EXPECT_EQ(tool.files(), std::vector<std::string>{"out.txt"});
}

TEST(OutputOptionTarget, no_room_for_the_file) {
  const Tool tool;
  tool.writeText("out.txt", "precious");
  const RunOptions cramped{.environment = {}, .output = {}, .longestFile = 100};
  EXPECT_EQ(tool.run({"telemetry", "keys", "-o", "out.txt"}, cramped),
            failed("vqs: out.txt cannot be written: File too large\n"));
  EXPECT_EQ(tool.readText("out.txt"), "precious");
  EXPECT_EQ(tool.files(), std::vector<std::string>{"out.txt"});
}

TEST(OutputOptionTarget, device) {
  EXPECT_EQ(Tool{}.run({"telemetry", "keys", "-o", "/dev/full"}),
            failed("vqs: /dev/full cannot be written: it is not a regular file, which is replaced whole\n"));
}

TEST(OutputOptionTarget, needs_no_standard_output) {
  const Tool tool;
  EXPECT_EQ(tool.run({"telemetry", "keys", "-o", "out.txt"}, onTheWayTo("-")).exitCode, 0);
  EXPECT_EQ(tool.run({"telemetry", "keys", "-o", "out.txt"}, onTheWayTo("/dev/full")), done(""));
  EXPECT_TRUE(tool.readText("out.txt").starts_with(" ID  NAME"));
}

}  // namespace
}  // namespace test
