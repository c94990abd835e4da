// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/tool/run_tool.h"
#include "tests/tool/small_binary.h"

namespace test {
namespace {

using Words = std::vector<std::string>;

Words with(Words words, const Words& more) {
  words.insert(words.end(), more.begin(), more.end());
  return words;
}

/// Every command whose output programs read.
const std::vector<Words> kCommands = {{"binary", "show", "small.bin"},
                                      {"store", "list", "asm"},
                                      {"catalogue", "conditions", "0"},
                                      {"catalogue", "actions", "0"},
                                      {"telemetry", "keys"},
                                      {"telemetry", "show"},
                                      {"features"},
                                      {"sensors"},
                                      {"battery"},
                                      {"io"},
                                      {"override"},
                                      {"telemetry", "watch", "PowerSource", "--count", "1"}};

class OutputOption : public testing::Test {
 protected:
  void SetUp() override { tool.write("small.bin", smallBinary()); }

  [[nodiscard]] ToolRun run(const Words& arguments) const { return tool.run(arguments, withSteadyDriver()); }

  Tool tool;
};

TEST_F(OutputOption, is_there_wherever_programs_read) {
  for (const auto& command : kCommands) {
    EXPECT_EQ(run(with(command, {"-o", "out.txt"})), done("")) << testing::PrintToString(command);
    EXPECT_FALSE(tool.readText("out.txt").empty()) << testing::PrintToString(command);
    std::filesystem::remove(tool.path("out.txt"));
  }
  EXPECT_EQ(tool.files(), Words{"small.bin"});
}

TEST_F(OutputOption, gets_what_standard_output_would_get) {
  const std::vector<Words> steady = {{"binary", "show", "small.bin"},
                                     {"binary", "show", "small.bin", "--json"},
                                     {"telemetry", "keys", "--json"},
                                     {"override", "PowerSource", "--json"},
                                     {"telemetry", "watch", "PowerSource", "--every", "10", "--count", "3"}};
  for (const auto& command : steady) {
    const auto shown = run(command);
    ASSERT_EQ(shown.exitCode, 0) << shown;
    EXPECT_EQ(run(with(command, {"--output", "out.txt"})), done(""));
    EXPECT_EQ(tool.readText("out.txt"), shown.out);
  }
}

TEST_F(OutputOption, replaces_a_file) {
  tool.writeText("out.txt", "old and much longer than what comes " + std::string(100000, '.'));
  EXPECT_EQ(run({"override", "PowerSource", "-o", "out.txt"}), done(""));
  EXPECT_TRUE(tool.readText("out.txt").starts_with("KEY  NAME")) << tool.readText("out.txt");
  EXPECT_EQ(tool.files(), (Words{"out.txt", "small.bin"}));
}

TEST_F(OutputOption, may_be_the_file_that_is_shown) {
  const auto shown = run({"binary", "show", "small.bin"}).out;
  EXPECT_EQ(run({"binary", "show", "small.bin", "-o", "small.bin"}), done(""));
  EXPECT_EQ(tool.readText("small.bin"), shown);
}

TEST_F(OutputOption, leaves_a_file_alone_when_the_command_fails) {
  tool.writeText("out.txt", "precious");
  EXPECT_EQ(run({"binary", "show", "missing.bin", "-o", "out.txt"}),
            failed("vqs: missing.bin cannot be read: No such file or directory\n"));
  EXPECT_EQ(run({"catalogue", "actions", "weather", "-o", "out.txt"}).exitCode, 2);
  EXPECT_EQ(tool.readText("out.txt"), "precious");
  EXPECT_EQ(tool.files(), (Words{"out.txt", "small.bin"}));
}

TEST_F(OutputOption, minus_is_standard_output) {
  const auto shown = run({"binary", "show", "small.bin"});
  EXPECT_EQ(run({"binary", "show", "small.bin", "-o", "-"}), shown);
  EXPECT_EQ(tool.files(), Words{"small.bin"});
}

TEST_F(OutputOption, place_where_no_file_can_be) {
  EXPECT_EQ(run({"binary", "show", "small.bin", "-o", "."}), failed("vqs: . cannot be written: Is a directory\n"));
  EXPECT_EQ(run({"binary", "show", "small.bin", "-o", ""}), wrongUsage("vqs: FILE: the file's name is empty\n"));
  EXPECT_EQ(run({"binary", "show", "small.bin", "-o"}),
            wrongUsage("vqs: --output needs a value (see \"vqs binary show --help\")\n"));
  EXPECT_EQ(run({"binary", "show", "small.bin", "-o", "no/out.txt"}).exitCode, 2);
}

TEST_F(OutputOption, is_not_for_commands_that_change_something) {
  EXPECT_EQ(run({"store", "reset", "asm", "-o", "out.txt"}),
            wrongUsage("vqs: \"-o\" is not expected (see \"vqs store reset --help\")\n"));
  EXPECT_EQ(run({"override", "PowerSource", "1", "-o", "out.txt"}).exitCode, 2);
  EXPECT_EQ(run({"override", "PowerSource", "--clear", "-o", "out.txt"}).exitCode, 2);
  EXPECT_EQ(tool.files(), Words{"small.bin"});
}

TEST_F(OutputOption, help_goes_to_standard_output) {
  const auto help = run({"binary", "show", "-o", "out.txt", "--help"});
  EXPECT_TRUE(help.out.starts_with("Show what a policy binary holds.\n")) << help;
  EXPECT_EQ(tool.files(), Words{"small.bin"});
}

}  // namespace
}  // namespace test
