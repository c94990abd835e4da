// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <string>

#include "tests/documents/findings/said.h"

namespace documents {
namespace {

Policy policyWith(const std::string& members) {
  const std::string document = withMembers(members);
  EXPECT_EQ(said(document), "");
  return readDocument(document).policies.value().policies.at(0);
}

TEST(Texts, are_strings_with_or_without_a_flag) {
  const auto texts =
      policyWith(R"("texts": ["teams.exe", {"text": "obs64.exe", "flag": 1}, {"flag": 1}, {}, ""])").texts;
  ASSERT_EQ(texts.size(), 5U);
  EXPECT_EQ(texts[0], (PolicyText{u"teams.exe", 0}));
  EXPECT_EQ(texts[1], (PolicyText{u"obs64.exe", 1}));
  EXPECT_EQ(texts[2], (PolicyText{u"", 1}));
  EXPECT_EQ(texts[3], PolicyText{});
  EXPECT_EQ(texts[4], PolicyText{});
}

TEST(Texts, keep_every_character) {
  const Policy policy = policyWith(R"("name": "\u00e9é😀\ud83d\ude00\ud800\n\"", "texts": ["\udc00\ud800"])");
  EXPECT_EQ(policy.name, (std::u16string{0xE9, 0xE9, 0xD83D, 0xDE00, 0xD83D, 0xDE00, 0xD800, u'\n', u'"'}));
  EXPECT_EQ(policy.texts.at(0).text, (std::u16string{0xDC00, 0xD800}));
}

TEST(Texts, are_as_long_as_records_hold) {
  EXPECT_EQ(policyWith("\"name\": \"" + std::string(63, 'n') + '"').name, std::u16string(63, u'n'));
  EXPECT_EQ(policyWith("\"texts\": [\"" + std::string(255, 't') + "\"]").texts.at(0).text, std::u16string(255, u't'));
  EXPECT_EQ(
      said(withMembers("\"texts\": [\"" + std::string(256, 't') + "\"]")),
      "P0035 error 1:68-326 policies[0].texts[0]: a text cannot be 256 units of UTF-16 long: a record holds 255\n");
}

TEST(Texts, are_counted_in_units) {
  std::string name;
  for (int i = 0; i < 32; ++i) name += "\xF0\x9F\x98\x80";
  EXPECT_EQ(said(withMembers("\"name\": \"" + name + '"')),
            "P0034 error 1:66-100 policies[0].name: \"name\" cannot be 64 units of UTF-16 long: a record holds 63\n");
}

TEST(Texts, of_8_bit_layouts_are_counted_in_bytes) {
  const ReadOptions options{.structureVersion = 1};
  const auto name = [](int count) {
    std::string text(1, 'n');
    for (int i = 0; i < count; ++i) text += "\xC3\xA9";
    return withMembers("\"name\": \"" + text + '"');
  };
  EXPECT_EQ(said(name(31), options), "");
  EXPECT_EQ(
      said(name(32), options),
      "P0034 error 1:66-101 policies[0].name: \"name\" cannot be 65 bytes long: a record of this structure version "
      "holds 63\n");
  EXPECT_EQ(said(name(32)), "");
}

TEST(Texts, of_8_bit_layouts_have_no_lone_surrogates) {
  EXPECT_EQ(
      said(withMembers(R"("texts": [{"text": "\ud800"}])"), {.structureVersion = 0}),
      "P0036 error 1:77-85 policies[0].texts[0].text: \"text\" holds a surrogate without its partner: no 8-bit text "
      "can\n");
}

TEST(Texts, hold_no_zero) {
  EXPECT_EQ(said(withMembers(R"("texts": ["a\u0000"])")),
            "P0037 error 1:68-77 policies[0].texts[0]: a text holds a zero character, which ends a record's text\n");
  EXPECT_EQ(
      said(withMembers(R"("description": "a\u0000")")),
      "P0037 error 1:73-82 policies[0].description: \"description\" holds a zero character, which ends a record's "
      "text\n");
}

TEST(Texts, are_of_no_other_kind) {
  EXPECT_EQ(said(withMembers(R"("name": 5)")),
            "P0013 error 1:66-67 policies[0].name: \"name\" cannot be a number: a string is expected\n");
  EXPECT_EQ(said(withMembers(R"("texts": ["a", null])")),
            "P0013 error 1:73-77 policies[0].texts[1]: a text cannot be null: a string is expected\n");
  EXPECT_EQ(said(withMembers(R"("description": [])")),
            "P0013 error 1:73-75 policies[0].description: \"description\" cannot be a list: a string is expected\n");
}

TEST(Description, is_bytes) {
  EXPECT_EQ(policyWith(R"("description": "Café")").description, "Caf\xC3\xA9");
  EXPECT_EQ(policyWith("\"description\": \"" + std::string(31, 'd') + '"').description, std::string(31, 'd'));
}

TEST(Description, is_cut_at_a_character) {
  const std::string document = withMembers("\"description\": \"" + std::string(30, 'd') + "\xC3\xA9\"");
  EXPECT_EQ(
      said(document),
      "P0106 warning 1:73-106 policies[0].description: \"description\" is cut from 32 to 30 bytes: a record holds "
      "31\n");
  EXPECT_EQ(readDocument(document).policies->policies[0].description, std::string(30, 'd'));
}

TEST(Description, may_have_any_byte) {
  const std::string document = withMembers(R"("description": "\udc80a\udcff\udcc3\udca9")");
  EXPECT_EQ(said(document),
            "P0107 warning 1:73-100 policies[0].description: \"description\" holds 4 bytes of no character: UTF-8 is "
            "expected\n");
  EXPECT_EQ(readDocument(document).policies->policies[0].description,
            "\x80"
            "a\xFF\xC3\xA9");
}

TEST(Description, has_no_other_surrogates) {
  for (const char* surrogate : {"\\udc7f", "\\udd00", "\\ud800", "\\udfff"}) {
    EXPECT_EQ(said(withMembers(R"("description": ")" + std::string(surrogate) + '"')),
              "P0036 error 1:73-81 policies[0].description: \"description\" holds a surrogate without its partner: no "
              "8-bit text can\n");
  }
}

}  // namespace
}  // namespace documents
