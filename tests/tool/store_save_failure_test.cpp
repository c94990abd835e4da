// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/tool/driver_client.h"
#include "tests/tool/store_save_failure.h"

namespace test {
namespace {

TEST_F(StoreSaveFailure, empty_store) {
  EXPECT_EQ(tool.run({"store", "save", "pb", "keep.bin"}),
            failed("vqs: the Policy Builder store is empty, there is nothing to save: keep.bin was not written\n"));
  expectKept();
}

TEST_F(StoreSaveFailure, place_where_no_file_can_be) {
  EXPECT_EQ(tool.run({"store", "save", "asm", "."}), failed("vqs: . cannot be written: Is a directory\n"));
  for (const std::string target : {"no/file.bin", "keep.bin/file.bin"}) {
    const auto run = tool.run({"store", "save", "asm", target});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(run.out, "");
    // The system's own words follow.
    EXPECT_TRUE(run.err.starts_with("vqs: " + target + " cannot be written: ")) << run.err;
    EXPECT_EQ(run.err.find('\n'), run.err.size() - 1) << run.err;
  }
  expectKept();
}

TEST_F(StoreSaveFailure, no_name) {
  EXPECT_EQ(tool.run({"store", "save", "asm", ""}), wrongUsage("vqs: FILE: the file's name is empty\n"));
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
