// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "documents/text/utf.h"

namespace documents {
namespace {

char32_t valueOf(std::string_view utf8) {
  const auto character = nextCharacter(utf8);
  return character ? character->value : U'\0';
}

TEST(NextCharacter, takes_one_to_four_bytes) {
  EXPECT_EQ(valueOf("az"), U'a');
  EXPECT_EQ(valueOf("\xC3\xA4z"), U'\u00E4');
  EXPECT_EQ(valueOf("\xE2\x82\xACz"), U'\u20AC');
  EXPECT_EQ(valueOf("\xF0\x9F\x98\x80z"), U'\U0001F600');
  EXPECT_EQ(nextCharacter("\xF0\x9F\x98\x80z")->bytes, 4U);
  EXPECT_EQ(nextCharacter(std::string_view{"\0", 1})->bytes, 1U);
}

TEST(NextCharacter, takes_the_first_and_the_last_of_each_length) {
  EXPECT_EQ(valueOf("\x7F"), U'\u007F');
  EXPECT_EQ(valueOf("\xC2\x80"), U'\u0080');
  EXPECT_EQ(valueOf("\xDF\xBF"), U'\u07FF');
  EXPECT_EQ(valueOf("\xE0\xA0\x80"), U'\u0800');
  EXPECT_EQ(valueOf("\xED\x9F\xBF"), U'\uD7FF');
  EXPECT_EQ(valueOf("\xEE\x80\x80"), U'\uE000');
  EXPECT_EQ(valueOf("\xEF\xBF\xBF"), U'\uFFFF');
  EXPECT_EQ(valueOf("\xF0\x90\x80\x80"), U'\U00010000');
  EXPECT_EQ(valueOf("\xF4\x8F\xBF\xBF"), U'\U0010FFFF');
}

TEST(NextCharacter, refuses_what_is_no_utf8) {
  for (const std::string_view bytes : {"", "\x80", "\xBF", "\xC0\x80", "\xC1\xBF", "\xC3", "\xC3z", "\xE0\x9F\xBF",
                                       "\xE2\x82", "\xE2\x82z", "\xED\xA0\x80", "\xED\xBF\xBF", "\xF0\x8F\xBF\xBF",
                                       "\xF0\x9F\x98", "\xF4\x90\x80\x80", "\xF8\x88\x80\x80\x80", "\xFE", "\xFF"})
    EXPECT_FALSE(nextCharacter(bytes)) << testing::PrintToString(bytes);
}

TEST(ValidUtf8, ends_before_the_first_broken_byte) {
  EXPECT_EQ(validUtf8(""), 0U);
  EXPECT_EQ(validUtf8("abc"), 3U);
  EXPECT_EQ(validUtf8("a\xC3\xA4\xFFz"), 3U);
  EXPECT_EQ(validUtf8("\xC3\xA4\xE2\x82"), 2U);
}

TEST(AppendUtf8, writes_characters_and_surrogates) {
  std::string text;
  for (const char32_t character : {0x41U, 0xE4U, 0x20ACU, 0x1F600U, 0xD800U, 0xDFFFU}) appendUtf8(text, character);
  EXPECT_EQ(text, "A\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80\xED\xA0\x80\xED\xBF\xBF");
}

TEST(ToUtf16, keeps_surrogates) {
  EXPECT_EQ(toUtf16("a\xE2\x82\xAC\xF0\x9F\x98\x80"), u"a\u20AC\U0001F600");
  EXPECT_EQ(toUtf16("\xED\xA0\x80x\xED\xBF\xBF"), (std::u16string{0xD800, u'x', 0xDFFF}));
}

TEST(ToUtf16, leaves_broken_bytes_out) { EXPECT_EQ(toUtf16("a\xFFz\xC3"), u"az"); }

TEST(ToUtf8, joins_partners_and_keeps_the_others) {
  EXPECT_EQ(toUtf8(u"\U0001F600"), "\xF0\x9F\x98\x80");
  EXPECT_EQ(toUtf8(std::u16string{0xDC00, 0xD800}), "\xED\xB0\x80\xED\xA0\x80");
  EXPECT_EQ(toUtf8(std::u16string{0xD800, 0xD83D, 0xDE00}), "\xED\xA0\x80\xF0\x9F\x98\x80");
}

TEST(ToUtf8, every_unit_comes_back) {
  std::u16string units;
  for (std::uint32_t unit = 0xFFFF; unit > 0; --unit) units.push_back(static_cast<char16_t>(unit));
  EXPECT_EQ(toUtf16(toUtf8(units)), units);
}

}  // namespace
}  // namespace documents
