// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>

#include <nlohmann/json.hpp>

#include "tests/support/listings.h"
#include "tests/tool/run_tool.h"

namespace test {
namespace {

using Json = nlohmann::ordered_json;

Json optionsOf(const ListingRow& row, std::size_t column) {
  Json options = Json::array();
  for (const auto& [text, value] : row.options(column)) options.push_back({{"Text", text}, {"Value", value}});
  return options;
}

/// The driver's word on every entry; these it does not support.
bool isSupported(std::int64_t id, std::initializer_list<std::int64_t> unsupported) {
  return std::ranges::find(unsupported, id) == unsupported.end();
}

Json conditionJson(const ListingRow& row) {
  const int supported = isSupported(row.number(0), {9, 33, 34, 68, 69, 71}) ? 1 : 0;
  return {{"Id", row.number(0)},           {"Enabled", supported},      {"Type", row.number(2)},
          {"OperatorMask", row.number(3)}, {"MinValue", row.number(4)}, {"MaxValue", row.number(5)},
          {"Units", row.text(6)},          {"Name", row.text(1)},       {"Options", optionsOf(row, 13)},
          {"Attr1", row.number(8)},        {"DriverFlag", supported},   {"Attr2", row.number(10)},
          {"Attr3", row.number(11)},       {"Attr4", row.number(12)}};
}

Json actionJson(const ListingRow& row) {
  const int supported = isSupported(row.number(0), {13, 20, 21, 22, 23, 24, 25, 26, 92, 93}) ? 1 : 0;
  return {{"Id", row.number(0)},       {"Enabled", supported},  {"Type", row.number(2)}, {"MinValue", row.number(3)},
          {"MaxValue", row.number(4)}, {"Units", row.text(5)},  {"Name", row.text(1)},   {"Options", optionsOf(row, 9)},
          {"DriverFlag", supported},   {"Attr1", row.number(8)}};
}

Json parsed(const ToolRun& run) {
  EXPECT_EQ(run.exitCode, 0) << run;
  EXPECT_EQ(run.err, "");
  return Json::parse(run.out);
}

std::string errorOf(const std::vector<std::string>& arguments) {
  const auto run = Tool{}.run(arguments);
  EXPECT_EQ(run.exitCode, 2) << run;
  EXPECT_EQ(run.out, "");
  return run.err;
}

TEST(CatalogueConditions, holds_every_field_of_every_condition_as_json) {
  const auto rows = readListing(kConditionListing);
  const auto conditions = parsed(Tool{}.run({"catalogue", "conditions", "--json"})).at("conditions");
  ASSERT_EQ(conditions.size(), rows.size());
  for (std::size_t i = 0; i < rows.size(); ++i) EXPECT_EQ(conditions[i].dump(1), conditionJson(rows[i]).dump(1));
}

TEST(CatalogueActions, holds_every_field_of_every_action_as_json) {
  const auto rows = readListing(kActionListing);
  const auto actions = parsed(Tool{}.run({"catalogue", "actions", "--json"})).at("actions");
  ASSERT_EQ(actions.size(), rows.size());
  for (std::size_t i = 0; i < rows.size(); ++i) EXPECT_EQ(actions[i].dump(1), actionJson(rows[i]).dump(1));
}

TEST(CatalogueConditions, is_a_table_with_a_line_for_each) {
  const auto run = Tool{}.run({"catalogue", "conditions"});
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_EQ(std::ranges::count(run.out, '\n'), listedIn(kConditionListing) + 1);
  EXPECT_TRUE(
      run.out.starts_with("ID  NAME                            KIND         RANGE                      UNITS "
                          "   ENABLED  DRIVER  OPTIONS\n"
                          " 0  Power Source                    enumeration  0 to 1                           "
                          "   yes      yes     0 AC Power, 1 DC Power\n"))
      << run.out;
}

TEST(CatalogueActions, is_a_table_with_a_line_for_each) {
  const auto run = Tool{}.run({"catalogue", "actions"});
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_EQ(std::ranges::count(run.out, '\n'), listedIn(kActionListing) + 1);
}

TEST(CatalogueConditions, filtered_by_a_part_of_the_name_whatever_its_case) {
  const auto expected =
      done(R"(ID  NAME                            KIND      RANGE                      UNITS  ENABLED  DRIVER  OPTIONS
10  Battery Percentage              unsigned  from 0                     %      yes      yes
21  Designed Battery Capacity       unsigned  from 0                     mWh    yes      yes
22  Fully Charged Battery Capacity  unsigned  from 0                     mWh    yes      yes
23  Battery Health                  unsigned  from 0                     %      yes      yes
24  Battery Drain Rate              signed    -2147483648 to 2147483647  mW     yes      yes
)");
  EXPECT_EQ(Tool{}.run({"catalogue", "conditions", "battery"}), expected);
  EXPECT_EQ(Tool{}.run({"catalogue", "conditions", "BATT"}), expected);
}

TEST(CatalogueConditions, filter_with_spaces_or_what_stands_for_them) {
  const auto expected = done(
      "ID  NAME       KIND         RANGE   UNITS  ENABLED  DRIVER  OPTIONS\n"
      " 4  Lid State  enumeration  0 to 1         yes      yes     0 Open, 1 Closed\n");
  EXPECT_EQ(Tool{}.run({"catalogue", "conditions", "lid state"}), expected);
  EXPECT_EQ(Tool{}.run({"catalogue", "conditions", "Lid_State"}), expected);
}

TEST(CatalogueConditions, number_is_an_id_and_no_part_of_a_name) {
  EXPECT_EQ(Tool{}.run({"catalogue", "conditions", "10"}),
            done("ID  NAME                KIND      RANGE   UNITS  ENABLED  DRIVER  OPTIONS\n"
                 "10  Battery Percentage  unsigned  from 0  %      yes      yes\n"));
}

TEST(CatalogueConditions, tell_special_kinds_and_what_the_driver_lacks) {
  EXPECT_EQ(Tool{}.run({"catalogue", "conditions", "indexed"}),
            done("ID  NAME                   KIND        RANGE       UNITS  ENABLED  DRIVER  OPTIONS\n"
                 "48  Indexed Sensor Data    special 15  from 0             yes      yes\n"
                 "49  Indexed Sensor Status  special 14  0 to 65535         yes      yes\n"));
  EXPECT_EQ(Tool{}.run({"catalogue", "conditions", "9"}),
            done("ID  NAME           KIND      RANGE   UNITS  ENABLED  DRIVER  OPTIONS\n"
                 " 9  Docking State  unsigned  0 to 1         no       no      0 Undocked, 1 Docked\n"));
  EXPECT_EQ(Tool{}.run({"catalogue", "actions", "lumo"}),
            done("ID  NAME          KIND         RANGE   UNITS  ENABLED  DRIVER  OPTIONS\n"
                 "13  LUMO Control  enumeration  0 to 1         no       no      0 Exit Lumo, 1 Enter Lumo\n"));
}

TEST(CatalogueActions, filtered_as_json) {
  const auto actions = parsed(Tool{}.run({"catalogue", "actions", "system state", "--json"})).at("actions");
  EXPECT_EQ(actions, Json::parse(R"([{"Id": 9, "Enabled": 1, "Type": 1, "MinValue": 0, "MaxValue": 1, "Units": "",
      "Name": "System State",
      "Options": [{"Text": "Enter S4", "Value": 0}, {"Text": "Enter Screen Lock", "Value": 1}],
      "DriverFlag": 1, "Attr1": 1}])"));
}

TEST(CatalogueConditions, signed_limits_are_negative_numbers_in_json) {
  const auto condition = parsed(Tool{}.run({"catalogue", "conditions", "24", "--json"})).at("conditions").at(0);
  EXPECT_EQ(condition.at("MinValue"), -2147483648LL);
  EXPECT_EQ(condition.at("MaxValue"), 2147483647);
}

TEST(CatalogueFilter, that_nothing_matches) {
  EXPECT_EQ(errorOf({"catalogue", "conditions", "lidstat"}),
            "vqs: unknown condition \"lidstat\"; did you mean \"Lid State\"?\n");
  EXPECT_EQ(errorOf({"catalogue", "conditions", "battery percentige"}),
            "vqs: unknown condition \"battery percentige\"; did you mean \"Battery Percentage\"?\n");
  EXPECT_EQ(errorOf({"catalogue", "conditions", "batery"}),
            "vqs: unknown condition \"batery\"; did you mean \"Battery\"?\n");
  EXPECT_EQ(errorOf({"catalogue", "actions", "fan_mod3", "--json"}),
            "vqs: unknown action \"fan_mod3\"; did you mean \"Fan Mode\"?\n");
  EXPECT_EQ(errorOf({"catalogue", "conditions", "weather\x1b"}), "vqs: unknown condition \"weather\\u001b\"\n");
}

TEST(CatalogueFilter, id_that_does_not_exist) {
  EXPECT_EQ(errorOf({"catalogue", "conditions", "73"}), "vqs: unknown condition 73, the conditions are 0 to 72\n");
  EXPECT_EQ(errorOf({"catalogue", "actions", "168"}), "vqs: unknown action 168, the actions are 0 to 167\n");
  EXPECT_EQ(errorOf({"catalogue", "actions", "99999999999999999999"}),
            "vqs: unknown action 99999999999999999999, the actions are 0 to 167\n");
}

}  // namespace
}  // namespace test
