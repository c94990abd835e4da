// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <filesystem>

#include "tool/driver_client.h"
#include "tool/run_tool.h"

namespace test {
namespace {

/// A tool with the laptop's policies in its Asm store, and a file that must stay as it is.
class StoreSaveFailure : public testing::Test {
 protected:
  void SetUp() override {
    tool.writeText("keep.bin", "precious");
    ASSERT_EQ(tool.run({"store", "load", "asm", samplePath("laptop-r5.bin")}).exitCode, 0);
  }

  void expectKept() const {
    EXPECT_EQ(tool.readText("keep.bin"), "precious");
    EXPECT_EQ(tool.files(), std::vector<std::string>{"keep.bin"});
  }

  Tool tool;
};

TEST_F(StoreSaveFailure, empty_store) {
  EXPECT_EQ(tool.run({"store", "save", "pb", "keep.bin"}),
            failed("vqs: the Policy Builder store is empty, there is nothing to save: keep.bin was not written\n"));
  expectKept();
}

TEST_F(StoreSaveFailure, folder_in_the_way) {
  EXPECT_EQ(tool.run({"store", "save", "asm", "."}), failed("vqs: . cannot be written: Is a directory\n"));
  EXPECT_EQ(tool.run({"store", "save", "asm", "no/file.bin"}),
            failed("vqs: no/file.bin cannot be written: No such file or directory\n"));
  EXPECT_EQ(tool.run({"store", "save", "asm", "keep.bin/file.bin"}),
            failed("vqs: keep.bin/file.bin cannot be written: Not a directory\n"));
  expectKept();
}

TEST_F(StoreSaveFailure, device) {
  EXPECT_EQ(tool.run({"store", "save", "asm", "/dev/full"}),
            failed("vqs: /dev/full cannot be written: it is not a regular file, which is replaced whole\n"));
  EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));
}

TEST_F(StoreSaveFailure, no_name) {
  EXPECT_EQ(tool.run({"store", "save", "asm", ""}), wrongUsage("vqs: FILE: the file's name is empty\n"));
}

TEST_F(StoreSaveFailure, folder_without_permission) {
  std::filesystem::create_directory(tool.path("locked"));
  std::filesystem::permissions(tool.path("locked"), std::filesystem::perms{0500});
  EXPECT_EQ(tool.run({"store", "save", "asm", "locked/file.bin"}),
            failed("vqs: locked/file.bin cannot be written: Permission denied\n"));
  std::filesystem::permissions(tool.path("locked"), std::filesystem::perms{0700});
  EXPECT_TRUE(std::filesystem::is_empty(tool.path("locked")));
}

TEST_F(StoreSaveFailure, no_room_for_the_file) {
  const auto saveWithin = [&](std::size_t bytes, const std::vector<std::string>& options) {
    std::vector<std::string> arguments = {"store", "save", "asm", "keep.bin"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return tool.run(arguments, {.environment = {}, .output = {}, .longestFile = bytes});
  };
  const auto expected = failed("vqs: keep.bin cannot be written: File too large\n");
  EXPECT_EQ(saveWithin(1000, {}), expected);
  // Cut in the three zero bytes a policy that follow the last one: readable, and not what it should be.
  EXPECT_EQ(saveWithin(3340, {}), expected);
  // Room for the binary, but not for its registry text.
  EXPECT_EQ(saveWithin(8000, {"--registry"}), expected);
  expectKept();
}

TEST_F(StoreSaveFailure, policy_that_no_file_may_hold) {
  addUnconditionalPolicy(tool, 77);
  EXPECT_EQ(tool.run({"store", "save", "asm", "keep.bin"}),
            failed("vqs: the Asm store was not saved: policy \"U\" (id 77) has no conditions, and no file with such a "
                   "policy can be read\n"));
  EXPECT_EQ(tool.run({"store", "save", "asm", "keep.bin", "--registry"}),
            failed("vqs: the Asm store was not saved: policy \"U\" (id 77) has no conditions, and no file with such a "
                   "policy can be read\n"));
  expectKept();
}

TEST_F(StoreSaveFailure, registry_text_of_the_policy_builder_store) {
  EXPECT_EQ(tool.run({"store", "save", "pb", "keep.bin", "--registry"}),
            wrongUsage("vqs: --registry: the interface offers registry text for asm and balance-profile only\n"));
  expectKept();
}

TEST_F(StoreSaveFailure, bad_versions) {
  for (const std::string version : {"3", ".", "3.", ".41", "3.41.1", "-1.0", "65536.0", "0.65536", " 3.41", "3.41 ",
                                    "+3.41", "0x3.1", "99999999999999999999.1"}) {
    EXPECT_EQ(tool.run({"store", "save", "asm", "keep.bin", "--version=" + version}),
              wrongUsage("vqs: --version \"" + version +
                         "\": two numbers of 0 to 65535 are expected, as in --version 3.41\n"));
  }
  EXPECT_EQ(tool.run({"store", "save", "asm", "keep.bin", "--version", ""}),
            wrongUsage("vqs: --version \"\": two numbers of 0 to 65535 are expected, as in --version 3.41\n"));
  EXPECT_EQ(tool.run({"store", "save", "asm", "keep.bin", "--version"}),
            wrongUsage("vqs: --version needs a value (see \"vqs store save --help\")\n"));
  expectKept();
}

}  // namespace
}  // namespace test
