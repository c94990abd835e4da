// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>

#include <nlohmann/json.hpp>

#include "tests/support/results.h"
#include "tests/tool/driver_client.h"

namespace test {
namespace {

// The debug output counts the driver's seconds, which not every system can stop.

TEST(Io, outputs_follow_the_inputs) {
  const Tool tool;
  useDriver(tool, [](QtfSession* session) { EXPECT_EQ(vqsSetAppInputs(session, 17, 0xFFFFFFFF), kDone); });
  const auto run = tool.run({"io"});
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_TRUE(
      run.out.starts_with("application inputs   17, 4294967295\n"
                          "application outputs  17, 4294967295\n"
                          "taskbar icon         1, 2\n"
                          "debug output         "))
      << run.out;
  EXPECT_EQ(std::ranges::count(run.out, '\n'), 4) << run.out;
}

TEST(Io, overridden_inputs_as_json) {
  const Tool tool;
  for (const auto& [key, value] : {std::pair{"AppInput2", "5"}, {"PowerSource", "0"}, {"PowerMode", "4"}})
    ASSERT_EQ(tool.run({"override", key, value}).exitCode, 0);
  const auto run = tool.run({"io", "--json"});
  ASSERT_EQ(run.exitCode, 0) << run;
  auto io = nlohmann::json::parse(run.out);
  EXPECT_TRUE(io.at("debugOutput").is_number_unsigned()) << io;
  io.erase("debugOutput");
  EXPECT_EQ(io, nlohmann::json::parse(R"({"appInputs": [0, 5], "appOutputs": [0, 5], "taskbarIcon": [0, 4]})"));
}

}  // namespace
}  // namespace test
