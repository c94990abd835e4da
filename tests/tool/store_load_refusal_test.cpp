// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/tool/run_tool.h"
#include "tests/tool/small_binary.h"

namespace test {
namespace {

/// A store with policies 1 and 2, and a file with policies 3 and 2.
class StoreLoadRefusal : public testing::Test {
 protected:
  void SetUp() override {
    tool.write("old.bin", joined({header(2), plainEntry(1, u"one"), plainEntry(2, u"two")}));
    tool.write("new.bin", joined({header(2), plainEntry(3, u"third"), plainEntry(2, u"second")}));
    ASSERT_EQ(tool.run({"store", "load", "asm", "old.bin"}).exitCode, 0);
    before = tool.run({"store", "list", "asm", "--json"}).out;
  }

  void expectUnchanged() const { EXPECT_EQ(tool.run({"store", "list", "asm", "--json"}).out, before); }

  Tool tool;
  std::string before;
};

TEST_F(StoreLoadRefusal, id_in_the_store) {
  EXPECT_EQ(tool.run({"store", "load", "asm", "new.bin"}),
            failed("vqs: policy \"second\" (id 2) has an id that is in the Asm store already, nothing was changed: use "
                   "--replace to replace such policies or --reset to empty the store first\n"));
  expectUnchanged();
}

TEST_F(StoreLoadRefusal, id_twice_in_the_file) {
  tool.write("twice.bin", joined({header(2), plainEntry(7, u"a"), plainEntry(7, u"b\"")}));
  const auto expected = failed(
      "vqs: twice.bin: policy \"b\\\"\" (id 7) has an id that is twice in the file, nothing was changed: --replace "
      "keeps the later of the two\n");
  EXPECT_EQ(tool.run({"store", "load", "asm", "twice.bin"}), expected);
  EXPECT_EQ(tool.run({"store", "load", "asm", "twice.bin", "--reset"}), expected);
  expectUnchanged();
}

TEST_F(StoreLoadRefusal, damaged_file_does_not_reset_the_store) {
  tool.write("bad.bin", patched(smallBinary(), 8, "00"));
  EXPECT_EQ(tool.run({"store", "load", "asm", "bad.bin", "--reset"}),
            failed("vqs: bad.bin is not a valid policy binary: offset 8: the magic \"$QTF\" is missing\n"));
  EXPECT_EQ(tool.run({"store", "load", "asm", "no.bin", "--reset"}),
            failed("vqs: no.bin cannot be read: No such file or directory\n"));
  expectUnchanged();
}

TEST_F(StoreLoadRefusal, replace_and_reset_together) {
  EXPECT_EQ(tool.run({"store", "load", "asm", "new.bin", "--replace", "--reset"}),
            wrongUsage("vqs: --replace excludes --reset (see \"vqs store load --help\")\n"));
  expectUnchanged();
}

TEST_F(StoreLoadRefusal, text_without_an_end) {
  const Bytes small = smallBinary();
  const Bytes text = joined({hex("00 02 00 00"), Record{512, 'x'}, hex("01")});
  Bytes file{small.begin(), small.begin() + 85};
  tool.write("long.bin", joined({file, text, Bytes(small.begin() + 104, small.end())}));
  EXPECT_EQ(tool.run({"store", "load", "asm", "long.bin", "--reset"}),
            failed("vqs: long.bin: a text of policy \"A\\u001b\\\"é�\" (id 7) has no end, the driver takes texts of at "
                   "most 255 units\n"));
  expectUnchanged();
}

TEST_F(StoreLoadRefusal, name_without_an_end_is_refused_by_the_driver) {
  const Bytes entry = plainEntry(5, u"");
  const Bytes endless = joined({hex("80 00 00 00"), Record{128, 'N'}, Bytes(entry.begin() + 6, entry.end())});
  tool.write("endless.bin", joined({header(2), plainEntry(4, u"four"), endless}));
  const auto run = tool.run({"store", "load", "asm", "endless.bin"});
  EXPECT_EQ(run.exitCode, 2);
  EXPECT_EQ(run.out, "");
  EXPECT_TRUE(run.err.starts_with("vqs: policy \"乎乎")) << run.err;
  EXPECT_TRUE(
      run.err.ends_with("乎\" (id 5) was not taken into the Asm store, 1 of 2 were loaded before it: the driver "
                        "refused the request\n"))
      << run.err;
}

TEST(StoreLoadFull, store_tells_how_many_were_loaded) {
  const Tool tool;
  tool.write("two.bin", joined({header(2), plainEntry(7001, u"last one in"), plainEntry(7002, u"left out")}));
  tool.write("one.bin", joined({header(1), plainEntry(7001, u"last one in")}));
  ASSERT_EQ(tool.run({"store", "load", "pb", samplePath("fleet-r5.bin")}).exitCode, 0);
  EXPECT_EQ(tool.run({"store", "load", "pb", "two.bin"}),
            failed("vqs: policy \"last one in\" (id 7001) was not taken into the Policy Builder store, 0 of 2 were "
                   "loaded before it: the driver refused it, the store is full, it takes 400 policies\n"));
  EXPECT_TRUE(tool.run({"store", "list", "pb"}).out.starts_with("Policy Builder store: 400 policies\n"));
}

TEST(StoreLoadFull, partial_load_tells_how_many_are_in) {
  const Tool tool;
  tool.write("one.bin", joined({header(1), plainEntry(7001, u"early")}));
  ASSERT_EQ(tool.run({"store", "load", "pb", "one.bin"}).exitCode, 0);
  const auto run = tool.run({"store", "load", "pb", samplePath("fleet-r5.bin")});
  EXPECT_EQ(run,
            failed("vqs: policy \"Registry switch 399\" (id 1399) was not taken into the Policy Builder store, 399 "
                   "of 400 were loaded before it: the driver refused it, the store is full, it takes 400 policies\n"));
}

TEST(StoreLoadFull, replaces_even_then) {
  const Tool tool;
  ASSERT_EQ(tool.run({"store", "load", "pb", samplePath("fleet-r5.bin")}).exitCode, 0);
  EXPECT_EQ(tool.run({"store", "load", "pb", samplePath("fleet-r5.bin"), "--replace"}),
            done("400 policies from fleet-r5.bin are in the Policy Builder store now (400 in all).\n"));
}

}  // namespace
}  // namespace test
