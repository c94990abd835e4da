// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "tests/tool/policy_document.h"
#include "tests/tool/run_tool.h"

namespace test {
namespace {

RunOptions fed(const std::string& input) {
  RunOptions options;
  options.input = input;
  return options;
}

TEST(PolicyStandardInput, is_checked) {
  EXPECT_EQ(Tool{}.run({"policy", "check", "-"}, fed(kQuietDocument)), done("no findings in 1 policy\n"));
  const auto run = Tool{}.run({"policy", "check", "-"}, fed(quietBut("\"DC Power\"", "77")));
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_TRUE(run.out.starts_with("<stdin>:10:27: error P0012: ")) << run;
}

TEST(PolicyStandardInput, is_laid_out_on_standard_output) {
  EXPECT_EQ(Tool{}.run({"policy", "fmt", "-"}, fed(quietBut("      \"id\": 10,\n", "\"id\":10,"))),
            done(kQuietDocument));
  EXPECT_EQ(Tool{}.run({"policy", "fmt", "-"}, fed(kQuietDocument)), done(kQuietDocument));
  EXPECT_EQ(Tool{}.run({"policy", "fmt", "--check", "-"}, fed("{}")),
            (ToolRun{.exitCode = 1, .out = "standard input\n", .err = ""}));
}

TEST(PolicyStandardInput, becomes_a_binary_on_standard_output_and_a_document_again) {
  const Tool tool;
  tool.writeText("quiet.json", kQuietDocument);
  ASSERT_EQ(tool.run({"policy", "compile", "quiet.json", "-o", "quiet.bin"}).exitCode, 0);
  EXPECT_EQ(tool.run({"policy", "compile", "-", "-o", "-"}, fed(kQuietDocument)), done(tool.readText("quiet.bin")));
  EXPECT_EQ(tool.run({"policy", "decompile", "-"}, fed(tool.readText("quiet.bin"))),
            done(quietBut("      // A comment.\n", "")));
  EXPECT_EQ(tool.run({"policy", "diff", "quiet.json", "-"}, fed(tool.readText("quiet.bin"))),
            done("standard input and quiet.json say the same, 1 policy.\n"));
}

TEST(PolicyStandardInput, cannot_be_corrected_or_read_twice) {
  EXPECT_EQ(Tool{}.run({"policy", "check", "--fix", "-"}, fed(kQuietDocument)),
            wrongUsage("vqs: --fix: standard input cannot be corrected in place\n"));
  EXPECT_EQ(Tool{}.run({"policy", "check", "-", "-"}, fed(kQuietDocument)),
            wrongUsage("vqs: \"-\" is there twice, standard input can be read once\n"));
}

TEST(PolicyStandardInput, that_is_empty_is_no_document) {
  const auto run = Tool{}.run({"policy", "check", "-"}, fed(""));
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_TRUE(run.out.starts_with("<stdin>:1:1: error P0001: ")) << run;
}

TEST(PolicyFiles, without_permission) {
  const Tool tool;
  tool.writeText("secret.json", kQuietDocument);
  ASSERT_EQ(chmod(tool.path("secret.json").c_str(), 0), 0);
  EXPECT_EQ(tool.run({"policy", "check", "secret.json"}),
            failed("vqs: secret.json cannot be read: Permission denied\n"));
}

TEST(PolicyFiles, whose_names_are_no_utf_8_are_named_all_the_same) {
  const Tool tool;
  tool.writeText("caf\xE9.json", kQuietDocument);
  const auto run = tool.run({"policy", "check", "--format", "json", "caf\xE9.json"});
  EXPECT_EQ(run.exitCode, 0) << run;
  EXPECT_NE(run.out.find("\"file\": \"caf\xEF\xBF\xBD.json\""), std::string::npos) << run;
}

TEST(PolicyFiles, pipe) {
  const Tool tool;
  ASSERT_EQ(mkfifo(tool.path("pipe").c_str(), 0600), 0);
  EXPECT_EQ(tool.run({"policy", "check", "pipe"}), failed("vqs: pipe cannot be read: it is not a regular file\n"));
}

TEST(PolicyFiles, of_a_size_that_no_policies_have) {
  const Tool tool;
  tool.writeText("huge.json", "");
  std::filesystem::resize_file(tool.path("huge.json"), std::uintmax_t{6} << 30);
  EXPECT_EQ(tool.run({"policy", "check", "huge.json"}),
            failed("vqs: huge.json cannot be read: it has more than 64 MiB, which no policies take\n"));
}

TEST(PolicyFiles, whose_folder_cannot_be_written_stay_as_they_are) {
  const Tool tool;
  std::filesystem::create_directory(tool.path("locked"));
  const std::string untidy = quietBut("\"SPL\"", "\"spl\"");
  tool.writeText("locked/quiet.json", untidy);
  ASSERT_EQ(chmod(tool.path("locked").c_str(), 0500), 0);
  EXPECT_EQ(tool.run({"policy", "check", "--fix", "locked/quiet.json"}),
            failed("vqs: locked/quiet.json cannot be written: Permission denied\n"));
  EXPECT_EQ(tool.readText("locked/quiet.json"), untidy);
}

TEST(PolicyFiles, are_corrected_where_their_links_lead) {
  const Tool tool;
  tool.writeText("quiet.json", quietBut("      \"id\": 10,\n", "\"id\":10,"));
  std::filesystem::create_symlink("quiet.json", tool.path("link.json"));
  EXPECT_EQ(tool.run({"policy", "fmt", "link.json"}), done("link.json\n"));
  EXPECT_TRUE(std::filesystem::is_symlink(tool.path("link.json")));
  EXPECT_EQ(tool.readText("quiet.json"), kQuietDocument);
}

TEST(PolicyFiles, need_no_driver) {
  const Tool tool;
  tool.writeText("quiet.json", kQuietDocument);
  RunOptions withoutDriver;
  withoutDriver.environment["VEXOQTF_SIMULATOR_STATE"] = tool.path("quiet.json");
  EXPECT_EQ(tool.run({"policy", "check", "quiet.json"}, withoutDriver).exitCode, 0);
  EXPECT_EQ(tool.run({"policy", "diff", "quiet.json", "quiet.json"}, withoutDriver).exitCode, 0);
  EXPECT_EQ(tool.run({"policy", "diff", "quiet.json", "store:asm"}, withoutDriver).exitCode, 3);
}

}  // namespace
}  // namespace test
