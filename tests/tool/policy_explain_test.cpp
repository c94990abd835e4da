// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "tests/tool/run_tool.h"

namespace test {
namespace {

ToolRun explain(std::vector<std::string> words) {
  words.insert(words.begin(), {"policy", "explain"});
  return Tool{}.run(words);
}

const std::string kPowerSource =
    "condition 0: Power Source\n"
    "  one of       \"AC Power\" (0)\n"
    "               \"DC Power\" (1)\n"
    "  comparison   op 2 alone, which can be left out\n"
    "  example      { \"Power Source\": \"DC Power\" }\n";

TEST(PolicyExplain, tells_about_a_condition_with_options) {
  EXPECT_EQ(explain({"Power Source"}), done(kPowerSource));
  EXPECT_EQ(explain({"power", "source"}), done(kPowerSource));
}

TEST(PolicyExplain, tells_about_a_condition_with_a_range) {
  EXPECT_EQ(explain({"Skin Temperature"}),
            done("condition 6: Skin Temperature\n"
                 "  value        0 to 4294967295 centi-C\n"
                 "  comparison   op 0, 1, 2, 3, 4: one has to be there\n"
                 "  example      { \"Skin Temperature\": { \"op\": 0, \"value\": 0 } }\n"));
}

TEST(PolicyExplain, tells_about_an_action) {
  EXPECT_EQ(explain({"SPL"}), done("action 2: SPL\n"
                                   "  value        0 to 4294967295 mW\n"
                                   "  example      { \"SPL\": 0 }\n"));
}

TEST(PolicyExplain, tells_about_a_number_of_both_kinds) {
  const auto run = explain({"#0"});
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_TRUE(run.out.starts_with(kPowerSource + "\naction 0: Fan Mode\n")) << run;
}

TEST(PolicyExplain, tells_where_an_option_belongs) {
  EXPECT_EQ(explain({"dc power"}), done("option \"DC Power\" (1) of the condition Power Source (0)\n"));
}

TEST(PolicyExplain, tells_about_a_code) {
  const auto run = explain({"p0012"});
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_TRUE(run.out.starts_with("error P0012: no such option\n  ")) << run;
  EXPECT_NE(run.out.find("\n  instead of\n    {"), std::string::npos) << run;
  EXPECT_NE(run.out.find("\n  write\n    {"), std::string::npos) << run;
}

TEST(PolicyExplain, suggests_what_is_near) {
  EXPECT_EQ(explain({"Pwer", "Source"}), failed("vqs: \"Pwer Source\" is no condition, action, option or finding's "
                                                "code; did you mean \"Power Source\"?\n"));
  EXPECT_EQ(explain({"weather"}), failed("vqs: \"weather\" is no condition, action, option or finding's code\n"));
  EXPECT_EQ(explain({"#99999"}).exitCode, 2);
  EXPECT_EQ(explain({}), wrongUsage("vqs: WORD is required (see \"vqs policy explain --help\")\n"));
}

TEST(PolicySchema, is_a_schema_of_draft_7) {
  const Tool tool;
  const auto run = tool.run({"policy", "schema"});
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_EQ(nlohmann::json::parse(run.out).at("$schema"), "http://json-schema.org/draft-07/schema#");
  EXPECT_EQ(tool.run({"policy", "schema", "-o", "policies.schema.json"}), done(""));
  EXPECT_EQ(tool.readText("policies.schema.json"), run.out);
}

}  // namespace
}  // namespace test
