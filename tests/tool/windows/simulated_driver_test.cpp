// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <windows.h>

#include <filesystem>

#include "tests/tool/run_tool.h"
#include "tests/tool/small_binary.h"
#include "tests/tool/windows/run_tool.h"

namespace test {
namespace {

const std::string kLoaded = "1 policy from small.bin is in the Asm store now (1 in all).\n";
const std::string kEmpty = "The Asm store is empty.\n";

RunOptions with(std::map<std::string, std::string> environment) {
  return {.environment = std::move(environment), .output = {}, .longestFile = {}};
}

/// A tool, a file to load, and a user who has a folder for the driver's state.
class SimulatedDriver : public testing::Test {
 protected:
  void SetUp() override {
    tool.write("small.bin", smallBinary());
    std::filesystem::create_directory(tool.path("local"));
  }

  ToolRun run(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), "--simulated");
    return tool.run(arguments, atHome);
  }

  Tool tool;
  RunOptions atHome = with({{"VEXOQTF_SIMULATOR_STATE", ""}, {"LOCALAPPDATA", tool.path("local")}});
};

TEST_F(SimulatedDriver, is_called_so_with_its_library) {
  EXPECT_EQ(run({"version"}), done("tool     " VQS_VERSION "\nlibrary  " VQS_VERSION
                                   ".0 (simulated)\ndriver   " VQS_VERSION ".0 (simulated)\n"));
  EXPECT_EQ(tool.run({"version", "--simulated"}, atHome), run({"version"}));
}

TEST_F(SimulatedDriver, is_not_the_one_that_is_installed) {
  EXPECT_EQ(tool.run({"version"}),
            done("tool     " VQS_VERSION "\nlibrary  " VQS_VERSION ".0\ndriver   " VQS_VERSION ".0\n"));
  EXPECT_EQ(run({"store", "load", "asm", "small.bin"}), done(kLoaded));
  EXPECT_EQ(tool.run({"store", "list", "asm"}), done(kEmpty));
}

TEST_F(SimulatedDriver, keeps_its_state_in_the_users_folder) {
  EXPECT_EQ(run({"store", "load", "asm", "small.bin"}), done(kLoaded));
  EXPECT_TRUE(std::filesystem::exists(tool.path("local/vqs/simulator.state")));
  EXPECT_TRUE(run({"store", "list", "asm"}).out.starts_with("Asm store: 1 policy\n"));
}

TEST_F(SimulatedDriver, keeps_its_state_where_it_is_told) {
  const std::string name = "mein Zustand é.state";
  EXPECT_EQ(run({"--driver-state", name, "store", "load", "asm", "small.bin"}), done(kLoaded));
  EXPECT_EQ(tool.files(), (std::vector<std::string>{"local", name, "small.bin"}));
  EXPECT_EQ(run({"store", "list", "asm"}), done(kEmpty));
  atHome.environment["VEXOQTF_SIMULATOR_STATE"] = tool.path("") + name;
  EXPECT_TRUE(run({"store", "list", "asm"}).out.starts_with("Asm store: 1 policy\n"));
}

TEST_F(SimulatedDriver, has_no_place_for_its_state) {
  atHome.environment["LOCALAPPDATA"] = "";
  EXPECT_EQ(run({"store", "list", "asm"}),
            withoutDriver(
                "vqs: there is no place for the simulated driver's state, LOCALAPPDATA is not set: name a file with "
                "--driver-state\n"));
  atHome.environment["LOCALAPPDATA"] = tool.path("small.bin");
  const auto refused = run({"store", "list", "asm"});
  EXPECT_EQ(refused.exitCode, 3);
  EXPECT_TRUE(refused.err.starts_with("vqs: " + tool.path("small.bin") + "\\vqs: ")) << refused.err;
  EXPECT_TRUE(
      refused.err.ends_with("the simulated driver's state needs this directory, or name a file with "
                            "--driver-state\n"))
      << refused.err;
}

TEST_F(SimulatedDriver, says_on_one_line_what_is_wrong_with_its_state) {
  const auto refused = run({"--driver-state", "small.bin", "store", "list", "asm"});
  EXPECT_EQ(refused,
            withoutDriver("vqs: the driver's device cannot be found or opened: vexoqtf simulator: small.bin is not a "
                          "state file of the simulator\n"));
  EXPECT_EQ(difference(readFile(tool.path("small.bin")), smallBinary()), "");
}

TEST_F(SimulatedDriver, needs_a_name_for_its_state) {
  EXPECT_EQ(run({"store", "list", "asm", "--driver-state", ""}),
            wrongUsage("vqs: --driver-state: the file's name is empty\n"));
}

TEST_F(SimulatedDriver, alone_has_a_state_file) {
  EXPECT_EQ(tool.run({"store", "list", "asm", "--driver-state", "my.state"}),
            wrongUsage("vqs: --driver-state: the driver is not simulated; \"--simulated\" uses one that is\n"));
  EXPECT_EQ(tool.files(), (std::vector<std::string>{"local", "small.bin"}));
}

/// A copy of the tool alone in a folder.
ToolRun runAlone(const Tool& tool, const std::vector<std::string>& arguments) {
  std::filesystem::copy_file(besideTheTests(L"vqs.exe"), tool.path("alone.exe"),
                             std::filesystem::copy_options::overwrite_existing);
  RunOptions options;
  options.program = tool.path("alone.exe");
  return tool.run(arguments, options);
}

TEST(Library, that_is_missing_is_named_with_its_place) {
  const Tool tool;
  const auto usual = runAlone(tool, {"version"});
  EXPECT_EQ(usual.exitCode, 3);
  EXPECT_TRUE(usual.err.starts_with("vqs: " + tool.path("VexoQTFServices.dll") + " cannot be loaded: ")) << usual.err;
  const auto simulated = runAlone(tool, {"--simulated", "version"});
  EXPECT_EQ(simulated.exitCode, 3);
  EXPECT_TRUE(simulated.err.starts_with("vqs: " + tool.path("simulated\\VexoQTFServices.dll") + " cannot be loaded: "))
      << simulated.err;
}

TEST(Library, is_not_needed_for_files_catalogues_and_help) {
  const Tool tool;
  tool.write("small.bin", smallBinary());
  EXPECT_EQ(runAlone(tool, {"binary", "show", "small.bin"}), tool.run({"binary", "show", "small.bin"}));
  EXPECT_EQ(runAlone(tool, {"telemetry", "keys"}), tool.run({"telemetry", "keys"}));
  EXPECT_EQ(runAlone(tool, {"catalogue", "conditions", "4"}),
            done("ID  NAME       KIND         RANGE   UNITS  ENABLED  DRIVER  OPTIONS\n"
                 " 4  Lid State  enumeration  0 to 1         -        -       0 Open, 1 Closed\n"));
  EXPECT_EQ(runAlone(tool, {"--version"}), done("vqs " VQS_VERSION "\n"));
  EXPECT_EQ(runAlone(tool, {"store", "--help"}).exitCode, 0);
}

TEST(Library, comes_from_no_other_folder) {
  const Tool tool;
  // Here it would be found by name: in the current folder, and in a folder of PATH.
  std::filesystem::copy_file(besideTheTests(L"VexoQTFServices.dll"), tool.path("VexoQTFServices.dll"));
  std::filesystem::create_directory(tool.path("program"));
  std::filesystem::copy_file(besideTheTests(L"vqs.exe"), tool.path("program/vqs.exe"));
  RunOptions options = with({{"PATH", tool.path(".")}});
  options.program = tool.path("program/vqs.exe");
  EXPECT_EQ(tool.run({"version"}, options).exitCode, 3);
}

}  // namespace
}  // namespace test
