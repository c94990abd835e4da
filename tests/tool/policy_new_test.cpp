// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/tool/run_tool.h"

namespace test {
namespace {

TEST(PolicyNew, makes_a_document_that_passes_the_check_and_is_laid_out) {
  const Tool tool;
  EXPECT_EQ(tool.run({"policy", "new", "-o", "quiet.json"}), done("quiet.json is there now.\n"));
  EXPECT_EQ(tool.run({"policy", "check", "--fail-on", "warning", "quiet.json"}), done("no findings in 1 policy\n"));
  EXPECT_EQ(tool.run({"policy", "fmt", "--check", "quiet.json"}), done(""));
  EXPECT_NE(tool.readText("quiet.json").find("// A policy document."), std::string::npos);
}

TEST(PolicyNew, prints_the_document_without_a_file) {
  const Tool tool;
  const auto run = tool.run({"policy", "new"});
  EXPECT_TRUE(run.out.starts_with("{\n  // A policy document.")) << run;
  EXPECT_EQ(run.exitCode, 0);
  ASSERT_EQ(tool.run({"policy", "new", "-o", "quiet.json"}).exitCode, 0);
  EXPECT_EQ(tool.readText("quiet.json"), run.out);
}

TEST(PolicyNew, leaves_a_file_alone_that_is_there_unless_forced) {
  const Tool tool;
  tool.writeText("quiet.json", "precious");
  EXPECT_EQ(tool.run({"policy", "new", "-o", "quiet.json"}),
            failed("vqs: quiet.json is there already and was left alone: use --force to replace it\n"));
  EXPECT_EQ(tool.readText("quiet.json"), "precious");
  EXPECT_EQ(tool.run({"policy", "new", "-o", "quiet.json", "--force"}), done("quiet.json is there now.\n"));
  EXPECT_TRUE(tool.readText("quiet.json").starts_with("{\n"));
  EXPECT_EQ(tool.files(), std::vector<std::string>{"quiet.json"});
}

TEST(PolicyNew, place_where_no_file_can_be) {
  EXPECT_EQ(Tool{}.run({"policy", "new", "-o", ".", "--force"}), failed("vqs: . cannot be written: Is a directory\n"));
  EXPECT_EQ(Tool{}.run({"policy", "new", "-o", ""}), wrongUsage("vqs: FILE: the file's name is empty\n"));
}

}  // namespace
}  // namespace test
