// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <filesystem>

#include "tests/tool/run_tool.h"
#include "tests/tool/small_binary.h"

namespace test {
namespace {

RunOptions with(std::map<std::string, std::string> environment) {
  return {.environment = std::move(environment), .output = {}, .longestFile = {}};
}

const std::string kLoaded = "1 policy from small.bin is in the Asm store now (1 in all).\n";
const std::string kEmpty = "The Asm store is empty.\n";

/// A tool, and a file to load into its driver.
class DriverState : public testing::Test {
 protected:
  void SetUp() override { tool.write("small.bin", smallBinary()); }

  Tool tool;
};

TEST_F(DriverState, lies_in_the_users_state_folder) {
  const auto options = with({{"VEXOQTF_SIMULATOR_STATE", ""}, {"XDG_STATE_HOME", tool.path("states/of/mine")}});
  EXPECT_EQ(tool.run({"store", "load", "asm", "small.bin"}, options), done(kLoaded));
  EXPECT_TRUE(fileExists(tool.path("states/of/mine/vqs/simulator.state")));
  EXPECT_TRUE(tool.run({"store", "list", "asm"}, options).out.starts_with("Asm store: 1 policy\n"));
  EXPECT_EQ(tool.run({"store", "list", "asm"}), done(kEmpty));
}

TEST_F(DriverState, lies_under_home_without_a_state_folder) {
  const auto home = with({{"VEXOQTF_SIMULATOR_STATE", ""}, {"XDG_STATE_HOME", ""}, {"HOME", tool.path("home")}});
  EXPECT_EQ(tool.run({"store", "load", "asm", "small.bin"}, home), done(kLoaded));
  EXPECT_TRUE(fileExists(tool.path("home/.local/state/vqs/simulator.state")));
  // A state folder has to be named in full.
  const auto relative =
      with({{"VEXOQTF_SIMULATOR_STATE", ""}, {"XDG_STATE_HOME", "states"}, {"HOME", tool.path("home")}});
  EXPECT_TRUE(tool.run({"store", "list", "asm"}, relative).out.starts_with("Asm store: 1 policy\n"));
}

TEST_F(DriverState, can_be_chosen_before_and_behind_the_command) {
  EXPECT_EQ(tool.run({"--driver-state", "mine", "store", "load", "asm", "small.bin"}), done(kLoaded));
  EXPECT_TRUE(tool.run({"store", "list", "asm", "--driver-state", "mine"}).out.starts_with("Asm store: 1 policy\n"));
  EXPECT_EQ(tool.run({"store", "list", "asm"}), done(kEmpty));
}

TEST_F(DriverState, has_no_place_without_a_home) {
  const auto options = with({{"VEXOQTF_SIMULATOR_STATE", ""}, {"XDG_STATE_HOME", ""}, {"HOME", ""}});
  EXPECT_EQ(tool.run({"store", "list", "asm"}, options),
            withoutDriver("vqs: there is no place for the simulated driver's state, HOME is not set: name a file with "
                          "--driver-state\n"));
}

TEST_F(DriverState, folder_that_cannot_be_made) {
  const std::string home = tool.path("small.bin");
  const auto options = with({{"VEXOQTF_SIMULATOR_STATE", ""}, {"XDG_STATE_HOME", home}});
  EXPECT_EQ(tool.run({"store", "list", "asm"}, options),
            withoutDriver("vqs: " + home +
                          "/vqs: Not a directory: the simulated driver's state needs this directory, or name "
                          "a file with --driver-state\n"));
}

TEST_F(DriverState, file_of_another_kind_is_reported_on_one_line) {
  const auto run = tool.run({"store", "list", "asm", "--driver-state", "small.bin"});
  EXPECT_EQ(run.exitCode, 3);
  EXPECT_EQ(run.out, "");
  EXPECT_TRUE(run.err.starts_with("vqs: the driver's device cannot be found or opened: ")) << run.err;
  EXPECT_NE(run.err.find("small.bin"), std::string::npos) << run.err;
  EXPECT_EQ(run.err.find('\n'), run.err.size() - 1) << run.err;
  EXPECT_EQ(difference(readFile(tool.path("small.bin")), smallBinary()), "");
}

TEST_F(DriverState, without_room_for_its_file_is_refused_before_anything_is_done) {
  RunOptions cramped;
  cramped.longestFile = 1000;
  const auto run = tool.run({"store", "load", "asm", samplePath("laptop-r5.bin")}, cramped);
  EXPECT_EQ(run.exitCode, 3);
  EXPECT_EQ(run.out, "");
  EXPECT_TRUE(run.err.starts_with("vqs: the driver's device cannot be found or opened: ")) << run.err;
  EXPECT_NE(run.err.find("cannot be written: File too large"), std::string::npos) << run.err;
  EXPECT_EQ(run.err.find('\n'), run.err.size() - 1) << run.err;
  EXPECT_EQ(tool.run({"store", "list", "asm"}), done(kEmpty));
}

TEST_F(DriverState, needs_a_name) {
  EXPECT_EQ(tool.run({"store", "list", "asm", "--driver-state", ""}),
            wrongUsage("vqs: --driver-state: the file's name is empty\n"));
}

}  // namespace
}  // namespace test
