// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/tool/run_tool.h"
#include "tests/tool/small_binary.h"

namespace test {
namespace {

/// A tool whose stores hold the sixteen policies of the laptop.
class StoreSave : public testing::Test {
 protected:
  void SetUp() override {
    for (const std::string store : {"pb", "asm", "balance-profile"})
      ASSERT_EQ(tool.run({"store", "load", store, samplePath("laptop-r5.bin")}).exitCode, 0);
  }

  [[nodiscard]] Bytes saved(const std::string& name) const { return readFile(tool.path(name)); }

  Tool tool;
};

TEST_F(StoreSave, asm_with_the_version_that_the_driver_keeps) {
  EXPECT_EQ(tool.run({"store", "save", "asm", "copy.bin"}),
            done("16 policies of the Asm store are in copy.bin now (version 3.41).\n"));
  EXPECT_EQ(difference(saved("copy.bin"), sample("laptop-r5.bin")), "");
}

TEST_F(StoreSave, every_store_with_a_version_of_its_own) {
  for (const std::string store : {"pb", "asm", "balance-profile"}) {
    ASSERT_EQ(tool.run({"store", "save", store, store + ".bin", "--version", "3.41"}).exitCode, 0);
    EXPECT_EQ(difference(saved(store + ".bin"), sample("laptop-r5.bin")), "") << store;
  }
  EXPECT_EQ(tool.run({"store", "save", "asm", "most.bin", "--version", "65535.0"}),
            done("16 policies of the Asm store are in most.bin now (version 65535.0).\n"));
  EXPECT_EQ(difference(saved("most.bin"), patched(sample("laptop-r5.bin"), 4, "ff ff 00 00")), "");
}

TEST_F(StoreSave, version_zero_without_another) {
  EXPECT_EQ(tool.run({"store", "save", "pb", "copy.bin"}),
            done("16 policies of the Policy Builder store are in copy.bin now (version 0.0).\n"));
  EXPECT_EQ(difference(saved("copy.bin"), patched(sample("laptop-r5.bin"), 4, "00 00 00 00")), "");
  EXPECT_EQ(tool.run({"store", "save", "balance-profile", "copy.bin"}),
            done("16 policies of the BalanceProfile store are in copy.bin now (version 0.0).\n"));
}

TEST_F(StoreSave, registry_text) {
  EXPECT_EQ(tool.run({"store", "save", "asm", "asm.reg", "--registry"}),
            done("16 policies of the Asm store are in asm.reg now (registry text, version 3.41).\n"));
  EXPECT_EQ(difference(saved("asm.reg"), sample("laptop-asm.reg")), "");
  EXPECT_EQ(tool.run({"store", "save", "balance-profile", "bp.reg", "--registry", "--version", "3.41"}),
            done("16 policies of the BalanceProfile store are in bp.reg now (registry text, version 3.41).\n"));
  EXPECT_EQ(difference(saved("bp.reg"), sample("laptop-balanceprofile.reg")), "");
}

TEST_F(StoreSave, leaves_nothing_else_behind) {
  ASSERT_EQ(tool.run({"store", "save", "asm", "copy.bin"}).exitCode, 0);
  ASSERT_EQ(tool.run({"store", "save", "asm", "copy.reg", "--registry"}).exitCode, 0);
  EXPECT_EQ(tool.files(), (std::vector<std::string>{"copy.bin", "copy.reg"}));
}

TEST_F(StoreSave, wide_texts_come_back_byte_for_byte) {
  ASSERT_EQ(tool.run({"store", "load", "asm", samplePath("wide-r5.bin"), "--reset"}).exitCode, 0);
  EXPECT_EQ(tool.run({"store", "save", "asm", "copy.bin"}),
            done("3 policies of the Asm store are in copy.bin now (version 5.5).\n"));
  EXPECT_EQ(difference(saved("copy.bin"), sample("wide-r5.bin")), "");
}

TEST_F(StoreSave, limits_come_back_byte_for_byte) {
  ASSERT_EQ(tool.run({"store", "load", "asm", samplePath("limits-r5.bin"), "--reset"}).exitCode, 0);
  ASSERT_EQ(tool.run({"store", "save", "asm", "copy.bin"}).exitCode, 0);
  EXPECT_EQ(difference(saved("copy.bin"), sample("limits-r5.bin")), "");
}

TEST_F(StoreSave, saves_one_policy_in_the_singular) {
  tool.write("small.bin", smallBinary());
  ASSERT_EQ(tool.run({"store", "load", "asm", "small.bin", "--reset"}).exitCode, 0);
  EXPECT_EQ(tool.run({"store", "save", "asm", "copy.bin"}),
            done("1 policy of the Asm store is in copy.bin now (version 3.41).\n"));
  // Every policy that the library writes counts for three bytes more than it has.
  EXPECT_EQ(difference(saved("copy.bin"), joined({smallBinary(), hex("00 00 00")})), "");
}

}  // namespace
}  // namespace test
