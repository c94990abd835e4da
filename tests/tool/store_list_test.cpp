// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/tool/run_tool.h"
#include "tests/tool/small_binary.h"

namespace test {
namespace {

TEST(StoreList, empty_stores) {
  const Tool tool;
  EXPECT_EQ(tool.run({"store", "list", "pb"}), done("The Policy Builder store is empty.\n"));
  EXPECT_EQ(tool.run({"store", "list", "asm"}), done("The Asm store is empty.\n"));
  EXPECT_EQ(tool.run({"store", "list", "balance-profile"}), done("The BalanceProfile store is empty.\n"));
  EXPECT_EQ(tool.run({"store", "list", "pb", "--json"}), done("{\n  \"store\": \"pb\",\n  \"policies\": []\n}\n"));
}

TEST(StoreList, is_a_table_in_the_order_of_arrival) {
  const Tool tool;
  ASSERT_EQ(tool.run({"store", "load", "asm", samplePath("laptop-r5.bin")}).exitCode, 0);
  EXPECT_EQ(tool.run({"store", "list", "asm"}), done(R"(Asm store: 16 policies

 ID  NAME                          CONDITIONS  TEXTS  ACTIONS  DESCRIPTION
 10  Quiet on battery                       2      0        5  low power, low noise
 20  Battery saver                          2      0        5  user asked for it
 30  Plugged in, best performance           2      0        5  AC and slider right
 40  Plugged in, balanced                   2      0        4  AC and slider middle
 50  On the lap                             2      0        3  skin comes first
 60  In the bag                             2      0        3  hibernate, fans off
 70  Tent and stand                         3      0        2  fans face the desk
 80  Video call                             2      2        3  camera on, cap the boost
 90  Game running                           3      2        3  full screen and foreground
100  Docked with two displays               2      0        3
110  Lid closed on AC                       2      0        3  keep working, stay silent
120  Hot chassis                            1      0        4  step down above 46 C
130  Draining fast                          2      0        4  more than 25 W
140  Dark room                              2      0        1  dim
150  User away                              2      0        3  lock and relax
160  Registry switch                        1      1        2  set by the help desk
)"));
}

TEST(StoreList, keeps_its_columns_with_wide_characters) {
  const Tool tool;
  ASSERT_EQ(tool.run({"store", "load", "balance-profile", samplePath("wide-r5.bin")}).exitCode, 0);
  EXPECT_EQ(tool.run({"store", "list", "balance-profile"}), done(R"(BalanceProfile store: 3 policies

ID  NAME                             CONDITIONS  TEXTS  ACTIONS  DESCRIPTION
 1  Ruhig unterwegs – ältere Geräte           1      2        1  latin and beyond
 2  バッテリー節約                            1      0        1  name in kana and kanji
 3  surrogate 🔋 pair                         1      0        1  two units, one battery
)"));
}

TEST(StoreList, escapes_what_could_drive_a_terminal) {
  const Tool tool;
  tool.write("small.bin", smallBinary());
  ASSERT_EQ(tool.run({"store", "load", "asm", "small.bin"}).exitCode, 0);
  EXPECT_EQ(tool.run({"store", "list", "asm"}), done(R"(Asm store: 1 policy

ID  NAME        CONDITIONS  TEXTS  ACTIONS  DESCRIPTION
 7  A\u001b"é�           1      2        1  café\u009b
)"));
}

}  // namespace
}  // namespace test
