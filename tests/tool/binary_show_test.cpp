// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/tool/run_tool.h"
#include "tests/tool/small_binary.h"

namespace test {
namespace {

TEST(BinaryShow, prints_every_field_in_words) {
  const Tool tool;
  tool.write("small.bin", smallBinary());
  EXPECT_EQ(tool.run({"binary", "show", "small.bin"}), done(R"(small.bin: 1 policy, version 3.41

7   A\u001b"é�                                         caf��
    when  Docking State op 4: 10 (value2 11)
    do    Display Brightness 13 % (value2 14, value3 15, value4 16, option1 1, option2 2, option3 3)
    text  "x\\y\n😀" (flag 1) · ""
    with  flag0 1 · flag1 3 · flag2 4 · param0 2 · param1 5 · param2 6
)"));
}

TEST(BinaryShow, prints_every_field_as_json) {
  const Tool tool;
  tool.write("small.bin", smallBinary());
  EXPECT_EQ(tool.run({"binary", "show", "small.bin", "--json"}), done(R"({
  "binaryVersion1": 3,
  "binaryVersion2": 41,
  "policies": [
    {
      "name": "A\u001b\"é�",
      "description": "café\u009b",
      "id": 7,
      "flag0": 1,
      "param0": 2,
      "flag1": 3,
      "flag2": 4,
      "param1": 5,
      "param2": 6,
      "conditions": [
        {
          "conditionId": 9,
          "op": 4,
          "value": 10,
          "value2": 11
        }
      ],
      "texts": [
        {
          "text": "x\\y\n😀",
          "flag": 1
        },
        {
          "text": "",
          "flag": 0
        }
      ],
      "actions": [
        {
          "actionId": 12,
          "value": 13,
          "value2": 14,
          "option1": 1,
          "option2": 2,
          "value3": 15,
          "option3": 3,
          "value4": 16
        }
      ]
    }
  ]
}
)"));
}

TEST(BinaryShow, leaves_out_of_the_text_what_is_zero) {
  const Tool tool;
  tool.write("two.bin",
             joined({header(2), plainEntry(1, u"one"), patched(plainEntry(2, u""), 6, "02 00 00 00 00 00 00")}));
  EXPECT_EQ(tool.run({"binary", "show", "two.bin"}), done(R"(two.bin: 2 policies, version 3.41

1   one                                                d
    when  Power Mode is Best Performance
    with  flag0 1

2   ""
    when  Power Mode is Best Performance
)"));
}

TEST(BinaryShow, names_the_file_without_its_folders) {
  const Tool tool;
  tool.write("small.bin", smallBinary());
  EXPECT_EQ(tool.run({"binary", "show", tool.path("small.bin")}).out.substr(0, 10), "small.bin:");
}

TEST(BinaryShow, takes_a_name_that_fills_its_field) {
  const Tool tool;
  const Bytes name = Record{128, 'N'};
  const Bytes entry = plainEntry(5, u"");
  tool.write("full.bin", joined({header(1), hex("80 00 00 00"), name, Bytes(entry.begin() + 6, entry.end())}));
  std::string expected;
  for (int i = 0; i < 64; ++i) expected += "乎";  // two bytes of 'N' are one unit, U+4E4E
  EXPECT_NE(tool.run({"binary", "show", "full.bin"}).out.find("\n5   " + expected + "  d\n"), std::string::npos);
}

}  // namespace
}  // namespace test
