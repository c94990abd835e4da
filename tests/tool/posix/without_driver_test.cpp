// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "tests/support/listings.h"
#include "tests/tool/run_tool.h"
#include "tests/tool/small_binary.h"

namespace test {
namespace {

/// A tool whose driver cannot be opened: its state file is none.
class WithoutDriver : public testing::Test {
 protected:
  void SetUp() override { tool.write("small.bin", smallBinary()); }

  ToolRun run(const std::vector<std::string>& arguments) const {
    RunOptions options;
    options.environment["VEXOQTF_SIMULATOR_STATE"] = tool.path("small.bin");
    return tool.run(arguments, options);
  }

  Tool tool;
};

TEST_F(WithoutDriver, files_are_shown) {
  EXPECT_EQ(run({"store", "list", "asm"}).exitCode, 3);
  EXPECT_EQ(run({"binary", "show", "small.bin"}), tool.run({"binary", "show", "small.bin"}));
  EXPECT_EQ(run({"binary", "show", "small.bin"}).exitCode, 0);
}

TEST_F(WithoutDriver, keys_are_listed) {
  EXPECT_EQ(run({"telemetry", "keys", "--ex"}), tool.run({"telemetry", "keys", "--ex"}));
  EXPECT_EQ(run({"telemetry", "keys"}).exitCode, 0);
}

TEST_F(WithoutDriver, the_catalogues_do_not_say_what_is_supported) {
  EXPECT_EQ(run({"catalogue", "conditions", "4"}),
            done("ID  NAME       KIND         RANGE   UNITS  ENABLED  DRIVER  OPTIONS\n"
                 " 4  Lid State  enumeration  0 to 1         -        -       0 Open, 1 Closed\n"));
  const auto actions = nlohmann::ordered_json::parse(run({"catalogue", "actions", "--json"}).out).at("actions");
  ASSERT_EQ(actions.size(), listedIn(kActionListing));
  EXPECT_TRUE(actions[0].at("Enabled").is_null());
  EXPECT_TRUE(actions[0].at("DriverFlag").is_null());
}

TEST_F(WithoutDriver, one_that_was_named_is_missed) {
  const auto refused = tool.run({"catalogue", "conditions", "4", "--driver-state", "small.bin"});
  EXPECT_EQ(refused.exitCode, 3);
  EXPECT_TRUE(refused.err.starts_with("vqs: the driver's device cannot be found or opened: ")) << refused.err;
}

}  // namespace
}  // namespace test
