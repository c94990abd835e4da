// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "tests/support/results.h"
#include "tests/tool/driver_client.h"

namespace test {
namespace {

ToolRun showIo(const Tool& tool, std::vector<std::string> further = {}, const std::string& driverOptions = "time=0") {
  further.insert(further.begin(), "io");
  return tool.run(further, withDriverOptions(driverOptions));
}

TEST(Io, of_a_fresh_driver) {
  EXPECT_EQ(showIo(Tool{}), done("application inputs   0, 0\n"
                                 "application outputs  0, 0\n"
                                 "taskbar icon         1, 2\n"
                                 "debug output         0\n"));
}

TEST(Io, outputs_follow_what_another_client_put_in) {
  const Tool tool;
  useDriver(tool, [](QtfSession* session) { EXPECT_EQ(vqsSetAppInputs(session, 17, 0xFFFFFFFF), kDone); });
  EXPECT_EQ(showIo(tool, {}, "time=90000"), done("application inputs   17, 4294967295\n"
                                                 "application outputs  17, 4294967295\n"
                                                 "taskbar icon         1, 2\n"
                                                 "debug output         90\n"));
}

TEST(Io, as_json) {
  const Tool tool;
  for (const auto& [key, value] : {std::pair{"AppInput2", "5"}, {"PowerSource", "0"}, {"PowerMode", "4"}})
    ASSERT_EQ(tool.run({"override", key, value}, withDriverOptions("time=0")).exitCode, 0);
  const auto run = showIo(tool, {"--json"});
  ASSERT_EQ(run.exitCode, 0) << run;
  EXPECT_EQ(
      nlohmann::json::parse(run.out),
      nlohmann::json::parse(R"({"appInputs": [0, 5], "appOutputs": [0, 5], "taskbarIcon": [0, 4], "debugOutput": 0})"));
}

TEST(Io, with_a_log_that_lacks_the_inputs) {
  EXPECT_EQ(showIo(Tool{}, {}, "log=empty"), failed("vqs: the driver's log does not hold key AppInput1 (31)\n"));
  EXPECT_EQ(showIo(Tool{}, {}, "log=unknown-key"),
            failed("vqs: the driver's log cannot be read to its end: its first record has an unknown key id\n"));
}

}  // namespace
}  // namespace test
