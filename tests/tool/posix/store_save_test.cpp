// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <filesystem>

#include "tests/tool/run_tool.h"

namespace test {
namespace {

/// A tool whose Asm store holds the sixteen policies of the laptop.
class StoreSaveTarget : public testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(tool.run({"store", "load", "asm", samplePath("laptop-r5.bin")}).exitCode, 0); }

  [[nodiscard]] Bytes saved(const std::string& name) const { return readFile(tool.path(name)); }

  Tool tool;
};

TEST_F(StoreSaveTarget, replaces_a_file_and_keeps_its_permissions) {
  // The second cannot be read by whoever writes it.
  for (const auto permissions : {std::filesystem::perms{0640}, std::filesystem::perms{0200}}) {
    tool.writeText("copy.bin", "old");
    std::filesystem::permissions(tool.path("copy.bin"), permissions);
    ASSERT_EQ(tool.run({"store", "save", "asm", "copy.bin"}).exitCode, 0);
    EXPECT_EQ(std::filesystem::status(tool.path("copy.bin")).permissions(), permissions);
    EXPECT_EQ(difference(saved("copy.bin"), sample("laptop-r5.bin")), "");
  }
}

TEST_F(StoreSaveTarget, writes_where_a_link_leads_to) {
  tool.writeText("real.bin", "old");
  std::filesystem::create_symlink("real.bin", tool.path("link.bin"));
  ASSERT_EQ(tool.run({"store", "save", "asm", "link.bin"}).exitCode, 0);
  EXPECT_TRUE(std::filesystem::is_symlink(tool.path("link.bin")));
  EXPECT_EQ(difference(saved("real.bin"), sample("laptop-r5.bin")), "");
}

TEST_F(StoreSaveTarget, takes_a_path_with_any_characters) {
  ASSERT_EQ(tool.run({"store", "save", "asm", "Gerät 電池.bin"}),
            done("16 policies of the Asm store are in Gerät 電池.bin now (version 3.41).\n"));
  EXPECT_EQ(difference(saved("Gerät 電池.bin"), sample("laptop-r5.bin")), "");
}

}  // namespace
}  // namespace test
