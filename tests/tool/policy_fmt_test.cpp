// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/tool/policy_document.h"
#include "tests/tool/run_tool.h"

namespace test {
namespace {

const std::string kUntidy = quietBut("      \"id\": 10,\n", "\"id\":10,");

TEST(PolicyFmt, lays_a_document_out_in_place_and_keeps_its_comments) {
  const Tool tool;
  tool.writeText("quiet.json", kUntidy);
  EXPECT_EQ(tool.run({"policy", "fmt", "quiet.json"}), done("quiet.json\n"));
  EXPECT_EQ(tool.readText("quiet.json"), kQuietDocument);
  EXPECT_EQ(tool.run({"policy", "fmt", "quiet.json"}), done(""));
  EXPECT_EQ(tool.files(), std::vector<std::string>{"quiet.json"});
}

TEST(PolicyFmt, checks_without_writing) {
  const Tool tool;
  tool.writeText("untidy.json", kUntidy);
  tool.writeText("quiet.json", kQuietDocument);
  EXPECT_EQ(tool.run({"policy", "fmt", "--check", "quiet.json", "untidy.json"}),
            (ToolRun{.exitCode = 1, .out = "untidy.json\n", .err = ""}));
  EXPECT_EQ(tool.readText("untidy.json"), kUntidy);
  EXPECT_EQ(tool.run({"policy", "fmt", "--check", "quiet.json"}), done(""));
}

TEST(PolicyFmt, changes_nothing_when_one_document_cannot_be_read_as_one) {
  const Tool tool;
  tool.writeText("untidy.json", kUntidy);
  tool.writeText("bad.json", "{\n  \"policies\": [,]\n}\n");
  const auto run = tool.run({"policy", "fmt", "untidy.json", "bad.json"});
  EXPECT_EQ(run.exitCode, 2);
  EXPECT_EQ(run.out, "");
  EXPECT_TRUE(run.err.starts_with("bad.json:2:16: error P0001: ")) << run;
  EXPECT_NE(run.err.find("\n    2 |   \"policies\": [,]\n      |                ^\n"), std::string::npos) << run;
  EXPECT_TRUE(run.err.ends_with("\nvqs: bad.json cannot be formatted, nothing was changed\n")) << run;
  EXPECT_EQ(tool.readText("untidy.json"), kUntidy);
}

TEST(PolicyFmt, of_what_cannot_be_read) {
  EXPECT_EQ(Tool{}.run({"policy", "fmt", "no.json"}),
            failed("vqs: no.json cannot be read: No such file or directory\n"));
  EXPECT_EQ(Tool{}.run({"policy", "fmt", "."}), failed("vqs: . cannot be read: Is a directory\n"));
  EXPECT_EQ(Tool{}.run({"policy", "fmt"}), wrongUsage("vqs: DOC is required (see \"vqs policy fmt --help\")\n"));
}

}  // namespace
}  // namespace test
