// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/tool/small_binary.h"
#include "tests/tool/windows/console_run.h"
#include "tests/tool/windows/run_tool.h"

namespace test {
namespace {

constexpr unsigned kEscapeSequences = 4;

void expectLeftAlone(const ConsoleRun& run) {
  EXPECT_EQ(run.before.mode & kEscapeSequences, 0U);
  EXPECT_EQ(run.after, run.before) << run.screen;
}

TEST(Console, is_left_as_it_was_found) {
  const auto run = runInConsole(Tool{}, {"--version"});
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_EQ(run.screen, "vqs " VQS_VERSION "\n");
  expectLeftAlone(run);
}

TEST(Console, is_left_as_it_was_found_by_a_failure) {
  const auto run = runInConsole(Tool{}, {"binary", "show", "missing.bin"});
  EXPECT_EQ(run.exitCode, 2);
  EXPECT_EQ(run.screen, "vqs: missing.bin cannot be read: No such file or directory\n");
  expectLeftAlone(run);
}

TEST(Console, shows_characters_that_its_code_page_lacks) {
  const auto run = runInConsole(Tool{}, {"store", "list", "Gerät Ωж"});
  EXPECT_NE(run.before.codePage, 65001U);
  EXPECT_EQ(run.exitCode, 2);
  EXPECT_EQ(run.screen, "vqs: \"Gerät Ωж\" is not a store, the stores are pb, asm or balance-profile\n");
  expectLeftAlone(run);
}

TEST(Console, is_where_text_is_characters_while_pipes_and_files_get_utf_8) {
  const Tool tool;
  tool.write("wide.bin", joined({header(1), plainEntry(7, u"Gerät Ωж")}));
  const std::vector<std::string> show = {"binary", "show", "wide.bin"};
  const auto intoFile = tool.run(show).out;
  EXPECT_NE(intoFile.find("\n7   Gerät Ωж  "), std::string::npos) << intoFile;
  EXPECT_EQ(pipedOutput(tool, show), intoFile);
  EXPECT_EQ(runInConsole(tool, show).screen, intoFile);
}

TEST(Console, has_no_part_in_a_file) {
  const Tool tool;
  const auto run =
      runInConsole(tool, {"telemetry", "watch", "PowerSource", "--every", "10", "--count", "2", "-o", "out.txt"});
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_EQ(run.screen, "");
  EXPECT_EQ(tool.readText("out.txt"), "PowerSource=DC\nPowerSource=DC\n");
  expectLeftAlone(run);
}

TEST(Console, gets_its_mode_back_after_values_that_change_in_place) {
  const auto run = runInConsole(Tool{}, {"telemetry", "watch", "PowerSource", "--every", "10", "--count", "2"});
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_NE(run.screen.find("PowerSource  DC"), std::string::npos) << run.screen;
  expectLeftAlone(run);
}

TEST(Console, gets_its_mode_back_after_an_interruption) {
  const auto run = interruptInConsole(Tool{}, {"telemetry", "watch", "PowerSource", "--every", "3600000"});
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_EQ(run.modeDuring, run.before.mode | kEscapeSequences);
  expectLeftAlone(run);
}

}  // namespace
}  // namespace test
