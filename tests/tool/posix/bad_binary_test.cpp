// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "tests/tool/run_tool.h"
#include "tests/tool/small_binary.h"

namespace test {
namespace {

TEST(BadBinary, without_permission) {
  const Tool tool;
  tool.write("secret.bin", smallBinary());
  std::filesystem::permissions(tool.path("secret.bin"), std::filesystem::perms::none);
  EXPECT_EQ(tool.run({"binary", "show", "secret.bin"}), failed("vqs: secret.bin cannot be read: Permission denied\n"));
}

TEST(BadBinary, pipe) {
  const Tool tool;
  ASSERT_EQ(mkfifo(tool.path("pipe").c_str(), 0600), 0);
  EXPECT_EQ(tool.run({"binary", "show", "pipe"}), failed("vqs: pipe cannot be read: it is not a regular file\n"));
}

TEST(BadBinary, name_with_a_line_end_stays_on_one_line) {
  EXPECT_EQ(Tool{}.run({"binary", "show", "a\nb"}), failed("vqs: a\\nb cannot be read: No such file or directory\n"));
}

}  // namespace
}  // namespace test
