// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "tests/tool/run_tool.h"

namespace test {
namespace {

class Override : public testing::Test {
 protected:
  ToolRun run(const std::vector<std::string>& arguments) const { return tool.run(arguments, withSteadyDriver()); }
  ToolRun override(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), "override");
    return run(arguments);
  }
  nlohmann::json telemetry(const std::string& key) const {
    return nlohmann::json::parse(run({"telemetry", "show", "--json"}).out).at("values").at(key);
  }

  Tool tool;
};

TEST_F(Override, lists_as_json) {
  const auto list = override({"--json"});
  ASSERT_EQ(list.exitCode, 0) << list;
  const auto keys = nlohmann::json::parse(list.out).at("keys");
  std::vector<int> ids;
  for (const auto& key : keys) ids.push_back(key.at("key"));
  EXPECT_EQ(ids, (std::vector{2,  4,  5,  24, 27, 28, 31,  32,  35,  36,  52,  54,  55,  56,
                              57, 58, 85, 97, 98, 99, 100, 101, 102, 103, 104, 126, 175, 185}));
  EXPECT_EQ(keys[3], nlohmann::json::parse(R"({"key": 24, "name": "PowerSource", "type": 5, "lowest": 0, "highest": 1,
                                               "value": 1, "overridden": false})"));
  EXPECT_EQ(keys[4].at("lowest"), -100000);
  EXPECT_EQ(keys[6].at("highest"), 4294967295);
}

TEST_F(Override, set_shows_in_the_telemetry_until_it_is_cleared) {
  EXPECT_EQ(telemetry("PowerSource"), "DC");
  EXPECT_EQ(override({"PowerSource", "0"}), done("PowerSource is overridden with 0 now.\n"));
  EXPECT_EQ(telemetry("PowerSource"), "AC");
  EXPECT_EQ(override({"PowerSource"}), done("KEY  NAME         RANGE   VALUE  OVERRIDDEN\n"
                                            " 24  PowerSource  0 to 1      0  yes\n"));
  EXPECT_EQ(override({"PowerSource", "--clear"}), done("PowerSource is no longer overridden.\n"));
  EXPECT_EQ(telemetry("PowerSource"), "DC");
  EXPECT_EQ(override({"PowerSource", "--clear"}), done("PowerSource was not overridden.\n"));
}

TEST_F(Override, key_by_id_and_whatever_its_case) {
  EXPECT_EQ(override({"28", "33"}), done("BatteryChargeLevel is overridden with 33 now.\n"));
  EXPECT_EQ(telemetry("BatteryChargeLevel"), 33);
  EXPECT_EQ(override({"batterychargelevel", "34"}), done("BatteryChargeLevel is overridden with 34 now.\n"));
  EXPECT_EQ(telemetry("BatteryChargeLevel"), 34);
}

TEST_F(Override, signed_values) {
  EXPECT_EQ(override({"BatteryChargeRate", "-15000"}), done("BatteryChargeRate is overridden with -15000 now.\n"));
  EXPECT_EQ(telemetry("BatteryChargeRate"), -15000);
  EXPECT_EQ(override({"BatteryChargeRate"}), done("KEY  NAME               RANGE               VALUE  OVERRIDDEN\n"
                                                  " 27  BatteryChargeRate  -100000 to 100000  -15000  yes\n"));
  EXPECT_EQ(override({"BatteryChargeRate", "0xFFFFFFF0"}), done("BatteryChargeRate is overridden with -16 now.\n"));
  EXPECT_EQ(telemetry("BatteryChargeRate"), -16);
}

TEST_F(Override, hexadecimal_values) {
  EXPECT_EQ(override({"AppInput1", "0xffFFffFF"}), done("AppInput1 is overridden with 4294967295 now.\n"));
  EXPECT_EQ(telemetry("AppInput1"), 4294967295);
  EXPECT_EQ(override({"AppInput1", "0X10"}), done("AppInput1 is overridden with 16 now.\n"));
  EXPECT_EQ(telemetry("AppInput1"), 16);
}

TEST_F(Override, limits_themselves_are_taken) {
  for (const auto& [key, value] : std::vector<std::pair<std::string, std::string>>{{"BatteryChargeRate", "-100000"},
                                                                                   {"BatteryChargeRate", "100000"},
                                                                                   {"skinTemp", "65535"},
                                                                                   {"CustomInput10", "4294967295"},
                                                                                   {"PowerMode", "4"}})
    EXPECT_EQ(override({key, value}),
              done(std::string{key}.append(" is overridden with ").append(value).append(" now.\n")));
}

TEST_F(Override, value_out_of_range) {
  ASSERT_EQ(override({"BatteryChargeLevel", "44"}).exitCode, 0);
  const auto refusal = [](const std::string& value, const std::string& key, const std::string& range) {
    return wrongUsage("vqs: \"" + value + "\" is not a value for " + key + ": a number of " + range +
                      " is expected, decimal or 0x and hexadecimal\n");
  };
  for (const std::string value : {"101", "-1", "0x65", "99999999999999999999"})
    EXPECT_EQ(override({"BatteryChargeLevel", value}), refusal(value, "BatteryChargeLevel", "0 to 100"));
  for (const std::string value : {"100001", "-100001", "0x80000000"})
    EXPECT_EQ(override({"27", value}), refusal(value, "BatteryChargeRate", "-100000 to 100000"));
  EXPECT_EQ(override({"skinTemp", "65536"}), refusal("65536", "skinTemp", "0 to 65535"));
  for (const std::string value : {"4294967296", "0x100000000"})
    EXPECT_EQ(override({"AppInput1", value}), refusal(value, "AppInput1", "0 to 4294967295"));
  EXPECT_EQ(telemetry("BatteryChargeLevel"), 44);
}

TEST_F(Override, value_that_is_no_number) {
  for (const std::string value : {"DC", "", "1 ", " 1", "0x", "0xg", "1.0", "+1", "-"})
    EXPECT_EQ(override({"PowerSource", value}),
              wrongUsage("vqs: \"" + value +
                         "\" is not a value for PowerSource: a number of 0 to 1 is expected, decimal or 0x and "
                         "hexadecimal\n"));
}

TEST_F(Override, unknown_key) {
  const std::string refusal = " is not a key that can be overridden";
  EXPECT_EQ(override({"powersorce", "1"}),
            wrongUsage("vqs: \"powersorce\"" + refusal + "; did you mean \"PowerSource\"?\n"));
  EXPECT_EQ(override({"power_mode"}), wrongUsage("vqs: \"power_mode\"" + refusal + "; did you mean \"PowerMode\"?\n"));
  EXPECT_EQ(override({"nvmeModel", "--clear"}), wrongUsage("vqs: \"nvmeModel\"" + refusal + "\n"));
  EXPECT_EQ(override({"25", "1"}), wrongUsage("vqs: \"25\"" + refusal + "\n"));
  EXPECT_EQ(override({"4294967320", "1"}), wrongUsage("vqs: \"4294967320\"" + refusal + "\n"));
}

TEST_F(Override, arguments_that_exclude_each_other) {
  EXPECT_EQ(override({"24", "1", "--clear"}),
            wrongUsage("vqs: VALUE excludes --clear (see \"vqs override --help\")\n"));
  EXPECT_EQ(override({"24", "1", "--json"}), wrongUsage("vqs: VALUE excludes --json (see \"vqs override --help\")\n"));
  EXPECT_EQ(override({"24", "--clear", "--json"}),
            wrongUsage("vqs: --clear excludes --json (see \"vqs override --help\")\n"));
  EXPECT_EQ(override({"--clear"}), wrongUsage("vqs: --clear needs a KEY\n"));
  EXPECT_EQ(override({"24", "1", "2"}), wrongUsage("vqs: \"2\" is not expected (see \"vqs override --help\")\n"));
}

}  // namespace
}  // namespace test
