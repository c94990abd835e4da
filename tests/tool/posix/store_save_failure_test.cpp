// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <filesystem>

#include "tests/tool/store_save_failure.h"

namespace test {
namespace {

class StoreSaveObstacle : public StoreSaveFailure {};

TEST_F(StoreSaveObstacle, folder_in_the_way) {
  EXPECT_EQ(tool.run({"store", "save", "asm", "."}), failed("vqs: . cannot be written: Is a directory\n"));
  EXPECT_EQ(tool.run({"store", "save", "asm", "no/file.bin"}),
            failed("vqs: no/file.bin cannot be written: No such file or directory\n"));
  EXPECT_EQ(tool.run({"store", "save", "asm", "keep.bin/file.bin"}),
            failed("vqs: keep.bin/file.bin cannot be written: Not a directory\n"));
  expectKept();
}

TEST_F(StoreSaveObstacle, device) {
  EXPECT_EQ(tool.run({"store", "save", "asm", "/dev/full"}),
            failed("vqs: /dev/full cannot be written: it is not a regular file, which is replaced whole\n"));
  EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));
}

TEST_F(StoreSaveObstacle, folder_without_permission) {
  std::filesystem::create_directory(tool.path("locked"));
  std::filesystem::permissions(tool.path("locked"), std::filesystem::perms{0500});
  EXPECT_EQ(tool.run({"store", "save", "asm", "locked/file.bin"}),
            failed("vqs: locked/file.bin cannot be written: Permission denied\n"));
  std::filesystem::permissions(tool.path("locked"), std::filesystem::perms{0700});
  EXPECT_TRUE(std::filesystem::is_empty(tool.path("locked")));
}

TEST_F(StoreSaveObstacle, no_room_for_the_file) {
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

}  // namespace
}  // namespace test
