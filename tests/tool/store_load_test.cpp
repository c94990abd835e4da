// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/tool/run_tool.h"
#include "tests/tool/small_binary.h"

namespace test {
namespace {

std::string table(const Tool& tool, const std::string& store) { return tool.run({"store", "list", store}).out; }

TEST(StoreLoad, adds_the_policies_of_a_file) {
  const Tool tool;
  tool.useSample("laptop-r5.bin");
  tool.useSample("limits-r5.bin");
  EXPECT_EQ(tool.run({"store", "load", "asm", "laptop-r5.bin"}),
            done("16 policies from laptop-r5.bin are in the Asm store now (16 in all).\n"));
  EXPECT_EQ(tool.run({"store", "load", "asm", "limits-r5.bin"}),
            done("2 policies from limits-r5.bin are in the Asm store now (18 in all).\n"));
}

TEST(StoreLoad, speaks_of_one_policy_in_the_singular) {
  const Tool tool;
  tool.write("small.bin", smallBinary());
  EXPECT_EQ(tool.run({"store", "load", "pb", "small.bin"}),
            done("1 policy from small.bin is in the Policy Builder store now (1 in all).\n"));
}

TEST(StoreLoad, leaves_the_other_stores_alone) {
  const Tool tool;
  ASSERT_EQ(tool.run({"store", "load", "balance-profile", samplePath("wide-r5.bin")}).exitCode, 0);
  EXPECT_EQ(table(tool, "pb"), "The Policy Builder store is empty.\n");
  EXPECT_EQ(table(tool, "asm"), "The Asm store is empty.\n");
}

TEST(StoreLoad, gives_the_asm_store_the_version_of_the_file) {
  const Tool tool;
  ASSERT_EQ(tool.run({"store", "load", "asm", samplePath("laptop-r5.bin")}).exitCode, 0);
  ASSERT_EQ(tool.run({"store", "save", "asm", "copy.bin"}).exitCode, 0);
  EXPECT_EQ(difference(readFile(tool.path("copy.bin")), sample("laptop-r5.bin")), "");
}

TEST(StoreLoad, replaces_policies_that_are_there) {
  const Tool tool;
  tool.write("old.bin", joined({header(2), plainEntry(1, u"one"), plainEntry(2, u"two")}));
  tool.write("new.bin", joined({header(2), plainEntry(2, u"second"), plainEntry(3, u"third")}));
  ASSERT_EQ(tool.run({"store", "load", "pb", "old.bin"}).exitCode, 0);
  EXPECT_EQ(tool.run({"store", "load", "pb", "new.bin", "--replace"}),
            done("2 policies from new.bin are in the Policy Builder store now (3 in all).\n"));
  EXPECT_EQ(table(tool, "pb"), R"(Policy Builder store: 3 policies

ID  NAME    CONDITIONS  TEXTS  ACTIONS  DESCRIPTION
 1  one              1      0        0  d
 2  second           1      0        0  d
 3  third            1      0        0  d
)");
}

TEST(StoreLoad, replacing_keeps_the_later_of_two_policies_with_one_id) {
  const Tool tool;
  tool.write("twice.bin", joined({header(2), plainEntry(1, u"first"), plainEntry(1, u"later")}));
  ASSERT_EQ(tool.run({"store", "load", "pb", "--replace", "twice.bin"}).exitCode, 0);
  EXPECT_EQ(table(tool, "pb"), R"(Policy Builder store: 1 policy

ID  NAME   CONDITIONS  TEXTS  ACTIONS  DESCRIPTION
 1  later           1      0        0  d
)");
}

TEST(StoreLoad, empties_the_store_first_when_asked) {
  const Tool tool;
  tool.write("old.bin", joined({header(2), plainEntry(1, u"one"), plainEntry(2, u"two")}));
  tool.write("new.bin", joined({header(1), plainEntry(2, u"second")}));
  ASSERT_EQ(tool.run({"store", "load", "asm", "old.bin"}).exitCode, 0);
  EXPECT_EQ(tool.run({"store", "load", "asm", "new.bin", "--reset"}),
            done("1 policy from new.bin is in the Asm store now (1 in all).\n"));
}

TEST(StoreLoad, can_be_repeated_when_replacing) {
  const Tool tool;
  for (int i = 0; i < 2; ++i)
    EXPECT_EQ(tool.run({"store", "load", "asm", samplePath("laptop-r5.bin"), "--replace"}),
              done("16 policies from laptop-r5.bin are in the Asm store now (16 in all).\n"));
}

}  // namespace
}  // namespace test
