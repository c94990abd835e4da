// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "tests/tool/policy_document.h"
#include "tests/tool/run_tool.h"
#include "tests/tool/small_binary.h"

namespace test {
namespace {

/// A run that was carried out, and whose answer is no.
ToolRun no(std::string out) { return {.exitCode = 1, .out = std::move(out), .err = ""}; }

const std::string kNoOption =
    "quiet.json:10:27: error P0012: 77 is no option of \"Power Source\": \"AC Power\" (0) or \"DC Power\" (1) is "
    "expected\n"
    "   10 |         { \"Power Source\": 77 },\n"
    "      |                           ^^\n";

/// A tool with a document in its folder.
class PolicyCheck : public testing::Test {
 protected:
  ToolRun check(const std::string& document, std::vector<std::string> further = {}) const {
    tool.writeText("quiet.json", document);
    further.insert(further.begin(), {"policy", "check", "quiet.json"});
    return tool.run(further);
  }

  Tool tool;
};

TEST_F(PolicyCheck, says_that_there_is_nothing_to_say) {
  EXPECT_EQ(check(kQuietDocument), done("no findings in 1 policy\n"));
}

TEST_F(PolicyCheck, shows_the_place_of_an_error) {
  EXPECT_EQ(check(quietBut("\"DC Power\"", "77")), no(kNoOption + "1 error in 1 policy\n"));
}

TEST_F(PolicyCheck, shows_what_would_help) {
  EXPECT_EQ(check(quietBut("\"SPL\"", "\"spl\"")), no("quiet.json:14:11: error P0020: \"spl\" is written \"SPL\"\n"
                                                      "   14 |         { \"spl\": 15000 },\n"
                                                      "      |           ^^^^^\n"
                                                      "      help: write \"SPL\"\n"
                                                      "1 error in 1 policy\n"));
}

TEST_F(PolicyCheck, shows_every_finding_in_the_order_of_their_places) {
  const auto run = check(quietBut("\"Fan Mode\": \"Auto\"", "\"SPL\": 16000"), {"--fail-on", "warning"});
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_TRUE(run.out.starts_with("quiet.json:15:11: warning P0102: ")) << run;
  EXPECT_TRUE(run.out.ends_with("1 warning in 1 policy\n")) << run;
  EXPECT_EQ(check(quietBut("\"Fan Mode\": \"Auto\"", "\"SPL\": 16000")).exitCode, 0);
}

TEST_F(PolicyCheck, of_an_empty_file_is_an_error) {
  const auto run = check("");
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_TRUE(run.out.starts_with("quiet.json:1:1: error P0001: ")) << run;
  EXPECT_TRUE(run.out.ends_with("    1 |\n      | ^\n1 error\n")) << run;
}

TEST_F(PolicyCheck, of_what_is_no_utf_8_is_an_error_that_a_terminal_can_show) {
  const auto run = check(quietBut("Quiet on", "Quiet \xFF\x1b on"));
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_NE(run.out.find("quiet.json:6:22: error P0004: "), std::string::npos) << run;
  EXPECT_NE(run.out.find("    6 |       \"name\": \"Quiet \\xff\\u001b on battery\",\n"), std::string::npos) << run;
}

TEST_F(PolicyCheck, lets_pass_with_a_warning_what_no_catalogue_knows_when_asked_to) {
  const std::string document = quietBut("\"Power Source\": \"DC Power\"", "\"#77\": { \"op\": 2, \"value\": 1 }");
  EXPECT_EQ(check(document).exitCode, 1);
  const auto run = check(document, {"--allow-unknown"});
  EXPECT_EQ(run.exitCode, 0) << run;
  EXPECT_TRUE(run.out.starts_with("quiet.json:10:11: warning P0021: ")) << run;
}

TEST_F(PolicyCheck, knows_what_the_older_records_hold) {
  // 40 characters, 80 bytes
  std::string name;
  for (int i = 0; i < 40; ++i) name += "é";
  const std::string document = quietBut("Quiet on battery", name);
  EXPECT_EQ(check(document).exitCode, 0);
  const auto run = check(document, {"--structure-version", "0"});
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_TRUE(run.out.starts_with("quiet.json:6:15: error P0034: ")) << run;
}

TEST_F(PolicyCheck, corrects_what_is_certain_and_reports_the_rest) {
  const std::string corrected = quietBut("\"DC Power\"", "77");
  const std::string wrong =
      documentBut(documentBut(corrected, "\"SPL\"", "\"spl\""), "\"Power Source\"", "\"power source\"");
  EXPECT_EQ(check(wrong, {"--fix"}), no("quiet.json was corrected\n" + kNoOption + "1 error in 1 policy\n"));
  EXPECT_EQ(tool.readText("quiet.json"), corrected);
  EXPECT_EQ(tool.files(), std::vector<std::string>{"quiet.json"});
}

TEST_F(PolicyCheck, of_a_policy_binary_names_the_paths_of_its_findings) {
  tool.write("small.bin", smallBinary());
  const auto run = tool.run({"policy", "check", "small.bin"});
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_NE(run.out.find("small.bin: policies[0].when[0]: warning P0104: \"Docking State\" is not enabled in the "
                         "catalogue\n"),
            std::string::npos)
      << run;
  EXPECT_EQ(run.out.find(" | "), std::string::npos) << run;
  EXPECT_EQ(tool.run({"policy", "check", samplePath("laptop-asm.reg")}).exitCode, 0);
}

TEST_F(PolicyCheck, of_a_damaged_binary_is_a_finding) {
  tool.write("bad.bin", patched(smallBinary(), 8, "00"));
  EXPECT_EQ(tool.run({"policy", "check", "bad.bin"}),
            no("bad.bin: error P0070: not a valid policy binary: offset 8: the magic \"$QTF\" is missing\n1 error\n"));
}

TEST_F(PolicyCheck, takes_several_files_and_counts_over_all) {
  tool.writeText("other.json", quietBut("\"DC Power\"", "77"));
  tool.writeText("quiet.json", kQuietDocument);
  const auto run = tool.run({"policy", "check", "quiet.json", "other.json"});
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_TRUE(run.out.starts_with("other.json:10:27: error P0012: ")) << run;
  EXPECT_TRUE(run.out.ends_with("\n1 error in 2 policies, 2 files\n")) << run;
}

TEST_F(PolicyCheck, as_json) {
  const auto run = check(quietBut("\"SPL\"", "\"spl\""), {"--format", "json"});
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_TRUE(run.out.starts_with("{\n  \"schema\": \"vqs/1\",\n")) << run;
  EXPECT_EQ(nlohmann::json::parse(run.out), nlohmann::json::parse(R"({
    "schema": "vqs/1", "errors": 1, "warnings": 0,
    "files": [{
      "file": "quiet.json", "form": "document", "policies": 1, "corrected": false,
      "findings": [{
        "code": "P0020", "title": "other case", "severity": "error", "message": "\"spl\" is written \"SPL\"",
        "path": "policies[0].do[0]",
        "offset": 308, "length": 5, "line": 14, "column": 11, "endLine": 14, "endColumn": 16,
        "suggestions": [{
          "message": "write \"SPL\"", "certain": true,
          "edits": [{"offset": 308, "length": 5, "line": 14, "column": 11, "endLine": 14, "endColumn": 16,
                     "replacement": "\"SPL\""}]
        }]
      }]
    }]
  })"))
      << run;
}

TEST_F(PolicyCheck, as_json_of_nothing_to_say) {
  const auto run = check(kQuietDocument, {"--format", "json"});
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_EQ(nlohmann::json::parse(run.out), nlohmann::json::parse(R"({
    "schema": "vqs/1", "errors": 0, "warnings": 0,
    "files": [{"file": "quiet.json", "form": "document", "policies": 1, "corrected": false, "findings": []}]
  })"));
}

TEST_F(PolicyCheck, as_workflow_commands) {
  EXPECT_EQ(check(quietBut("\"DC Power\"", "77"), {"--format", "github"}),
            no("::error file=quiet.json,line=10,col=27,endColumn=28,title=P0012::77 is no option of \"Power Source\": "
               "\"AC Power\" (0) or \"DC Power\" (1) is expected\n"));
  EXPECT_EQ(check(kQuietDocument, {"--format", "github"}), done(""));
}

TEST_F(PolicyCheck, as_workflow_commands_escapes_what_they_would_take_for_their_own) {
  tool.writeText("100%,a.json", quietBut("\"Power Source\"", "\"50%\""));
  const auto run = tool.run({"policy", "check", "--format", "github", "100%,a.json"});
  EXPECT_TRUE(run.out.starts_with("::error file=100%25%2Ca.json,line=10,col=11,endColumn=15,title=P0019::\"50%25\" "))
      << run;
}

TEST_F(PolicyCheck, writes_its_findings_into_a_file) {
  EXPECT_EQ(check(quietBut("\"DC Power\"", "77"), {"-o", "findings.txt"}), no(""));
  EXPECT_EQ(tool.readText("findings.txt"), kNoOption + "1 error in 1 policy\n");
}

TEST_F(PolicyCheck, of_what_cannot_be_read) {
  EXPECT_EQ(tool.run({"policy", "check", "no.json"}),
            failed("vqs: no.json cannot be read: No such file or directory\n"));
  EXPECT_EQ(tool.run({"policy", "check", "."}), failed("vqs: . cannot be read: Is a directory\n"));
  EXPECT_EQ(tool.run({"policy", "check", ""}), wrongUsage("vqs: FILE: the file's name is empty\n"));
  EXPECT_EQ(tool.run({"policy", "check"}), wrongUsage("vqs: DOC is required (see \"vqs policy check --help\")\n"));
}

TEST_F(PolicyCheck, corrects_nothing_when_one_of_the_files_cannot_be_read) {
  const std::string wrong = quietBut("\"SPL\"", "\"spl\"");
  EXPECT_EQ(check(wrong, {"--fix", "no.json"}), failed("vqs: no.json cannot be read: No such file or directory\n"));
  EXPECT_EQ(tool.readText("quiet.json"), wrong);
}

TEST_F(PolicyCheck, word_that_is_no_choice) {
  EXPECT_EQ(check(kQuietDocument, {"--format", "yaml"}),
            wrongUsage("vqs: --format: \"yaml\" is none of text, json, sarif, github (see \"vqs policy check "
                       "--help\")\n"));
  EXPECT_EQ(check(kQuietDocument, {"--structure-version", "3"}),
            wrongUsage("vqs: --structure-version: \"3\" is none of 0, 1, 2 (see \"vqs policy check --help\")\n"));
  EXPECT_EQ(check(kQuietDocument, {"--fail-on", "fire"}),
            wrongUsage("vqs: --fail-on: \"fire\" is none of error, warning (see \"vqs policy check --help\")\n"));
}

}  // namespace
}  // namespace test
