// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/tool/run_tool.h"

// Requests of the tool's commands. Opening a session is one.

namespace test {
namespace {

class CommandRequests : public testing::Test {
 protected:
  /// The number that the counting library leaves behind.
  std::string of(const std::vector<std::string>& arguments) const {
    RunOptions options = withSteadyDriver();
    options.environment["LD_LIBRARY_PATH"] = VQS_COUNTING_LIBRARY;
    options.environment["VQS_COUNTED_REQUESTS"] = tool_.path("requests");
    const ToolRun run = tool_.run(arguments, options);
    EXPECT_EQ(run.exitCode, 0) << run;
    return tool_.readText("requests");
  }
  void loadFleet(const std::string& store) const {
    tool_.useSample("fleet-r5.bin");
    EXPECT_EQ(tool_.run({"store", "load", store, "fleet-r5.bin"}).exitCode, 0);
  }

 private:
  Tool tool_;
};

TEST_F(CommandRequests, version_option) { EXPECT_EQ(of({"--version"}), "0\n"); }

// A store of 400 policies is read in 81 requests, and each policy is added in one.

TEST_F(CommandRequests, store_list) {
  loadFleet("pb");
  EXPECT_EQ(of({"store", "list", "pb"}), "83\n");
}

TEST_F(CommandRequests, store_save) {
  loadFleet("pb");
  EXPECT_EQ(of({"store", "save", "pb", "saved.bin"}), "82\n");
}

TEST_F(CommandRequests, store_save_of_the_store_with_a_version) {
  loadFleet("asm");
  EXPECT_EQ(of({"store", "save", "asm", "saved.bin"}), "83\n");
}

TEST_F(CommandRequests, store_load) {
  loadFleet("pb");
  EXPECT_EQ(of({"store", "load", "asm", "fleet-r5.bin"}), "404\n");
}

TEST_F(CommandRequests, store_verify) {
  loadFleet("pb");
  EXPECT_EQ(of({"store", "verify", "pb", "fleet-r5.bin"}), "83\n");
}

TEST_F(CommandRequests, store_verify_of_the_store_with_a_version) {
  loadFleet("asm");
  // The version is in what the library writes, which reads the policies once more.
  EXPECT_EQ(of({"store", "verify", "asm", "fleet-r5.bin"}), "165\n");
}

TEST_F(CommandRequests, store_apply_of_what_is_there_already) {
  loadFleet("pb");
  EXPECT_EQ(of({"store", "apply", "pb", "fleet-r5.bin", "--yes"}), "83\n");
}

TEST_F(CommandRequests, store_apply_to_an_empty_store) {
  loadFleet("pb");
  EXPECT_EQ(of({"store", "apply", "balance-profile", "fleet-r5.bin", "--yes"}), "484\n");
}

TEST_F(CommandRequests, override_of_one_key) { EXPECT_EQ(of({"override", "PowerSource", "1"}), "4\n"); }

TEST_F(CommandRequests, override_list) { EXPECT_EQ(of({"override"}), "60\n"); }

TEST_F(CommandRequests, io) { EXPECT_EQ(of({"io"}), "6\n"); }

TEST_F(CommandRequests, telemetry_show) { EXPECT_EQ(of({"telemetry", "show"}), "3\n"); }

}  // namespace
}  // namespace test
