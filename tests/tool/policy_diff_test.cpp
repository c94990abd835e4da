// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "tests/tool/policy_document.h"
#include "tests/tool/run_tool.h"

namespace test {
namespace {

const std::string kSecondPolicy = R"(
    {
      "id": 20,
      "name": "Dark room",
      "when": [
        { "Lid State": "Open" }
      ],
      "do": []
    })";

/// Two policies, the quiet one first or last.
std::string both(bool isQuietFirst) {
  if (isQuietFirst) return quietBut("\n    }\n  ]\n}", "\n    }," + kSecondPolicy + "\n  ]\n}");
  return quietBut("[\n    {\n      \"id\": 10", "[" + kSecondPolicy + ",\n    {\n      \"id\": 10");
}

class PolicyDiff : public testing::Test {
 protected:
  ToolRun diff(const std::string& first, const std::string& second, std::vector<std::string> further = {}) const {
    tool.writeText("old.json", first);
    tool.writeText("new.json", second);
    further.insert(further.begin(), {"policy", "diff", "old.json", "new.json"});
    return tool.run(further);
  }

  static ToolRun differs(std::string out) { return {.exitCode = 1, .out = std::move(out), .err = ""}; }

  Tool tool;
};

TEST_F(PolicyDiff, says_that_both_say_the_same_whatever_their_form) {
  EXPECT_EQ(diff(kQuietDocument, quietBut("      // A comment.\n", "")),
            done("new.json and old.json say the same, 1 policy.\n"));
  ASSERT_EQ(tool.run({"policy", "compile", "old.json", "-o", "old.bin"}).exitCode, 0);
  EXPECT_EQ(tool.run({"policy", "diff", "old.json", "old.bin"}),
            done("old.bin and old.json say the same, 1 policy.\n"));
  ASSERT_EQ(tool.run({"policy", "compile", "old.json", "-o", "old.reg", "--registry", "asm"}).exitCode, 0);
  EXPECT_EQ(tool.run({"policy", "diff", "old.reg", "old.bin"}), done("old.bin and old.reg say the same, 1 policy.\n"));
}

TEST_F(PolicyDiff, tells_changed_values_by_field) {
  const std::string other = documentBut(quietBut("4600", "4800"), "15000", "18000");
  EXPECT_EQ(diff(kQuietDocument, documentBut(other, "low power, low noise", "low noise")),
            differs("new.json differs from old.json in 1 of 1 policy.\n"
                    "  ~ 10 \"Quiet on battery\"  description \"low power, low noise\" in old.json, \"low noise\" in "
                    "new.json\n"
                    "                           when Skin Temperature op 3: 4600 centi-C in old.json, 4800 centi-C in "
                    "new.json\n"
                    "                           do SPL 15000 mW in old.json, 18000 mW in new.json\n"));
}

TEST_F(PolicyDiff, tells_a_rename_and_a_moved_entry) {
  EXPECT_EQ(diff(kQuietDocument, quietBut("Quiet on battery", "Silent")),
            differs("new.json differs from old.json in 1 of 1 policy.\n"
                    "  ~ 10 \"Quiet on battery\"  name \"Quiet on battery\" in old.json, \"Silent\" in new.json\n"));
  const auto run = diff(kQuietDocument, documentBut(quietBut("        { \"SPL\": 15000 },\n", ""), "\"Auto\" }",
                                                    "\"Auto\" },\n        { \"SPL\": 15000 }"));
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_NE(run.out.find(" is number "), std::string::npos) << run;
}

TEST_F(PolicyDiff, tells_entries_that_one_side_lacks) {
  EXPECT_EQ(diff(kQuietDocument, quietBut("        { \"SPL\": 15000 },\n", "")),
            differs("new.json differs from old.json in 1 of 1 policy.\n"
                    "  ~ 10 \"Quiet on battery\"  do SPL 15000 mW only in old.json\n"));
}

TEST_F(PolicyDiff, tells_policies_that_one_side_lacks) {
  EXPECT_EQ(diff(kQuietDocument, both(true)),
            differs("new.json differs from old.json in 1 of 2 policies.\n  + 20 \"Dark room\"  only in new.json\n"));
  EXPECT_EQ(diff(both(true), kQuietDocument),
            differs("new.json differs from old.json in 1 of 2 policies.\n  - 20 \"Dark room\"  only in old.json\n"));
}

TEST_F(PolicyDiff, tells_another_order) {
  const auto run = diff(both(true), both(false));
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_TRUE(run.out.starts_with("new.json differs from old.json in the order of its policies.\nThe order differs: "))
      << run;
  EXPECT_TRUE(run.out.ends_with(" is last in new.json, first in old.json.\n") ||
              run.out.ends_with(" is first in new.json, last in old.json.\n"))
      << run;
}

TEST_F(PolicyDiff, tells_another_version) {
  EXPECT_EQ(
      diff(kQuietDocument, quietBut("3.41", "3.42")),
      differs("new.json differs from old.json in its version.\n  ~ version 3.41 in old.json, 3.42 in new.json\n"));
}

TEST_F(PolicyDiff, with_a_store) {
  tool.writeText("quiet.json", kQuietDocument);
  ASSERT_EQ(tool.run({"policy", "compile", "quiet.json", "-o", "quiet.bin"}).exitCode, 0);
  for (const std::string store : {"asm", "pb"}) ASSERT_EQ(tool.run({"store", "load", store, "quiet.bin"}).exitCode, 0);
  EXPECT_EQ(tool.run({"policy", "diff", "quiet.json", "store:asm"}),
            done("The Asm store and quiet.json say the same, 1 policy.\n"));
  tool.writeText("quiet.json", documentBut(quietBut("4600", "4800"), "3.41", "3.42"));
  EXPECT_EQ(tool.run({"policy", "diff", "quiet.json", "store:asm"}),
            differs("The Asm store differs from quiet.json in 1 of 1 policy.\n"
                    "  ~ version 3.42 in quiet.json, 3.41 in the store\n"
                    "  ~ 10 \"Quiet on battery\"  when Skin Temperature op 3: 4800 centi-C in quiet.json, 4600 centi-C "
                    "in the store\n"));
  // The driver keeps no version of this one.
  EXPECT_EQ(tool.run({"policy", "diff", "quiet.json", "store:pb"}),
            differs("The Policy Builder store differs from quiet.json in 1 of 1 policy.\n"
                    "  ~ 10 \"Quiet on battery\"  when Skin Temperature op 3: 4800 centi-C in quiet.json, 4600 centi-C "
                    "in the store\n"));
  EXPECT_EQ(tool.run({"policy", "diff", "store:pb", "store:asm"}),
            done("The Asm store and the Policy Builder store say the same, 1 policy.\n"));
  EXPECT_EQ(tool.run({"policy", "diff", "quiet.bin", "store:balance-profile"}),
            differs("The BalanceProfile store differs from quiet.bin in 1 of 1 policy.\n"
                    "  - 10 \"Quiet on battery\"  only in quiet.bin\n"));
}

TEST_F(PolicyDiff, as_json) {
  const auto run = diff(kQuietDocument, quietBut("4600", "4800"), {"--json"});
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_TRUE(run.out.starts_with("{\n  \"schema\": \"vqs/1\",\n")) << run;
  EXPECT_EQ(nlohmann::json::parse(run.out), nlohmann::json::parse(R"({
    "schema": "vqs/1", "same": false,
    "first": {"name": "old.json", "form": "document", "version": "3.41", "policies": 1},
    "second": {"name": "new.json", "form": "document", "version": "3.41", "policies": 1},
    "versionDiffers": false,
    "policies": [{"change": "changed", "id": 10, "name": "Quiet on battery", "fields": [
      {"change": "changed", "field": "when", "first": "Skin Temperature op 3: 4600 centi-C",
       "second": "Skin Temperature op 3: 4800 centi-C", "firstIndex": 1, "secondIndex": 1}
    ]}],
    "moved": []
  })"))
      << run;
  EXPECT_EQ(diff(kQuietDocument, kQuietDocument, {"--json"}).exitCode, 0);
}

TEST_F(PolicyDiff, of_what_cannot_be_read_is_no_answer) {
  EXPECT_EQ(diff(kQuietDocument, "{").exitCode, 2);
  EXPECT_EQ(tool.run({"policy", "diff", "old.json", "no.json"}),
            failed("vqs: no.json cannot be read: No such file or directory\n"));
  EXPECT_EQ(tool.run({"policy", "diff", "old.json"}),
            wrongUsage("vqs: B is required (see \"vqs policy diff --help\")\n"));
  EXPECT_EQ(tool.run({"policy", "diff", "-", "-"}),
            wrongUsage("vqs: \"-\" is there twice, standard input can be read once\n"));
}

}  // namespace
}  // namespace test
