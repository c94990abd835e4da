// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/tool/run_tool.h"
#include "tests/tool/small_binary.h"

namespace test {
namespace {

TEST(StoreReset, empties_one_store) {
  const Tool tool;
  for (const std::string store : {"pb", "asm", "balance-profile"})
    ASSERT_EQ(tool.run({"store", "load", store, samplePath("laptop-r5.bin")}).exitCode, 0);
  EXPECT_EQ(tool.run({"store", "reset", "asm"}), done("16 policies removed, the Asm store is empty now.\n"));
  EXPECT_EQ(tool.run({"store", "list", "asm"}), done("The Asm store is empty.\n"));
  EXPECT_TRUE(tool.run({"store", "list", "pb"}).out.starts_with("Policy Builder store: 16 policies\n"));
  EXPECT_TRUE(tool.run({"store", "list", "balance-profile"}).out.starts_with("BalanceProfile store: 16 policies\n"));
}

TEST(StoreReset, tells_how_many_policies_there_were) {
  const Tool tool;
  tool.write("small.bin", smallBinary());
  EXPECT_EQ(tool.run({"store", "reset", "pb"}), done("0 policies removed, the Policy Builder store is empty now.\n"));
  ASSERT_EQ(tool.run({"store", "load", "balance-profile", "small.bin"}).exitCode, 0);
  EXPECT_EQ(tool.run({"store", "reset", "balance-profile"}),
            done("1 policy removed, the BalanceProfile store is empty now.\n"));
}

}  // namespace
}  // namespace test
