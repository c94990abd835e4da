// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "tests/tool/policy_document.h"
#include "tests/tool/run_tool.h"
#include "tests/tool/small_binary.h"

namespace test {
namespace {

const std::string kQuietInWords =
    "10  Quiet on battery                                   low power, low noise\n"
    "    when  Power Source is DC Power\n"
    "          Skin Temperature op 3: 4600 centi-C\n"
    "    do    SPL 15000 mW · Fan Mode Auto\n"
    "    text  \"teams.exe\" · \"obs64.exe\" (flag 1)\n";

TEST(PolicyShow, shows_a_document_in_words) {
  const Tool tool;
  tool.writeText("quiet.json", kQuietDocument);
  EXPECT_EQ(tool.run({"policy", "show", "quiet.json"}),
            done("quiet.json: document, version 3.41, 1 policy\n\n" + kQuietInWords));
}

TEST(PolicyShow, shows_a_binary_and_registry_text_in_the_same_words) {
  const Tool tool;
  tool.writeText("quiet.json", kQuietDocument);
  ASSERT_EQ(tool.run({"policy", "compile", "quiet.json", "-o", "quiet.bin"}).exitCode, 0);
  ASSERT_EQ(tool.run({"policy", "compile", "quiet.json", "-o", "quiet.reg", "--registry", "asm"}).exitCode, 0);
  EXPECT_EQ(tool.run({"policy", "show", "quiet.bin"}),
            done("quiet.bin: policy binary, revision 5, version 3.41, 1 policy\n\n" + kQuietInWords));
  EXPECT_EQ(tool.run({"policy", "show", "quiet.reg"}),
            done("quiet.reg: registry text, revision 5, version 3.41, 1 policy\n\n" + kQuietInWords));
}

TEST(PolicyShow, shows_a_store_in_the_same_words) {
  const Tool tool;
  tool.writeText("quiet.json", kQuietDocument);
  ASSERT_EQ(tool.run({"policy", "compile", "quiet.json", "-o", "quiet.bin"}).exitCode, 0);
  for (const std::string store : {"asm", "pb"}) ASSERT_EQ(tool.run({"store", "load", store, "quiet.bin"}).exitCode, 0);
  EXPECT_EQ(tool.run({"policy", "show", "store:asm"}),
            done("the Asm store: store, version 3.41, 1 policy\n\n" + kQuietInWords));
  EXPECT_EQ(tool.run({"policy", "show", "store:pb"}),
            done("the Policy Builder store: store, 1 policy\n\n" + kQuietInWords));
  EXPECT_EQ(tool.run({"store", "show", "asm"}), done("Asm store: 1 policy\n\n" + kQuietInWords));
  EXPECT_EQ(tool.run({"store", "show", "asm", "10"}), done(kQuietInWords));
}

TEST(PolicyShow, breaks_long_lines_between_actions) {
  const auto run = Tool{}.run({"policy", "show", samplePath("laptop-r5.bin")});
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_NE(
      run.out.find("\n30  Plugged in, best performance                       AC and slider right\n"
                   "    when  Power Source is AC Power\n"
                   "          Power Mode is Best Performance\n"
                   "    do    SPL 45000 mW · SPPT 54000 mW · FPPT 65000 mW · PPM Profile Performance PPM Profile\n"
                   "          PPM PERFEPP DENSE 20 %\n"
                   "    with  flag0 1\n\n40  "),
      std::string::npos)
      << run;
}

TEST(PolicyShow, as_json_has_every_field_and_the_words) {
  const Tool tool;
  tool.writeText("quiet.json", kQuietDocument);
  const auto run = tool.run({"policy", "show", "quiet.json", "--json"});
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_EQ(nlohmann::json::parse(run.out), nlohmann::json::parse(R"({
    "schema": "vqs/1", "name": "quiet.json", "form": "document", "version": "3.41",
    "policies": [{
      "name": "Quiet on battery", "description": "low power, low noise", "id": 10,
      "flag0": 0, "param0": 0, "flag1": 0, "flag2": 0, "param1": 0, "param2": 0,
      "conditions": [
        {"conditionId": 0, "op": 2, "value": 1, "value2": 0, "words": "Power Source is DC Power"},
        {"conditionId": 6, "op": 3, "value": 4600, "value2": 0, "words": "Skin Temperature op 3: 4600 centi-C"}
      ],
      "texts": [{"text": "teams.exe", "flag": 0}, {"text": "obs64.exe", "flag": 1}],
      "actions": [
        {"actionId": 2, "value": 15000, "value2": 0, "option1": 0, "option2": 0, "value3": 0, "option3": 0,
         "value4": 0, "words": "SPL 15000 mW"},
        {"actionId": 0, "value": 0, "value2": 0, "option1": 0, "option2": 0, "value3": 0, "option3": 0,
         "value4": 0, "words": "Fan Mode Auto"}
      ]
    }]
  })"))
      << run;
}

TEST(PolicyShow, of_what_says_no_policies_shows_the_findings) {
  const Tool tool;
  tool.writeText("quiet.json", quietBut("15000", "1e99"));
  const auto run = tool.run({"policy", "show", "quiet.json"});
  EXPECT_EQ(run.exitCode, 2);
  EXPECT_EQ(run.out, "");
  EXPECT_TRUE(run.err.starts_with("quiet.json:14:18: error P00")) << run;
  EXPECT_TRUE(run.err.ends_with("\nvqs: quiet.json cannot be read: 1 error\n")) << run;
}

TEST(PolicyShow, of_what_cannot_be_read) {
  EXPECT_EQ(Tool{}.run({"policy", "show", "no.json"}),
            failed("vqs: no.json cannot be read: No such file or directory\n"));
  EXPECT_EQ(Tool{}.run({"policy", "show", "store:asn"}),
            wrongUsage("vqs: \"asn\" is not a store, the stores are pb, asm or balance-profile; did you mean "
                       "\"asm\"?\n"));
  EXPECT_EQ(Tool{}.run({"policy", "show", "."}), failed("vqs: . cannot be read: Is a directory\n"));
}

TEST(StoreShow, selects_one_policy) {
  const Tool tool;
  ASSERT_EQ(tool.run({"store", "load", "asm", samplePath("laptop-r5.bin")}).exitCode, 0);
  EXPECT_EQ(tool.run({"store", "show", "asm", "140"}),
            done("140  Dark room                                         dim\n"
                 "    when  Ambient Light op 0: 15\n"
                 "          User Presence is Present\n"
                 "    do    Display Brightness 25 %\n"
                 "    with  flag0 1\n"));
  EXPECT_EQ(tool.run({"store", "show", "asm", "141"}), failed("vqs: the Asm store has no policy of id 141\n"));
  EXPECT_EQ(tool.run({"store", "show", "asm", "Dark room"}),
            wrongUsage("vqs: \"Dark room\" is not the id of a policy, which is a number of 0 to 4294967295\n"));
  EXPECT_EQ(tool.run({"store", "show", "pb"}), done("The Policy Builder store is empty.\n"));
}

TEST(StoreShow, as_json) {
  const Tool tool;
  ASSERT_EQ(tool.run({"store", "load", "asm", samplePath("laptop-r5.bin")}).exitCode, 0);
  const auto shown = nlohmann::json::parse(tool.run({"store", "show", "asm", "140", "--json"}).out);
  EXPECT_EQ(shown.at("schema"), "vqs/1");
  EXPECT_EQ(shown.at("store"), "asm");
  ASSERT_EQ(shown.at("policies").size(), 1U);
  EXPECT_EQ(shown.at("policies")[0].at("conditions")[1].at("words"), "User Presence is Present");
}

}  // namespace
}  // namespace test
