// SPDX-License-Identifier: Apache-2.0
#include "src/channel/text.h"

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <numeric>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/bytes.h"
#include "tests/support/locale.h"

namespace test {
namespace {

using ::testing::Test;

constexpr char16_t kPoisonUnit = 0xA5A5;
constexpr char kPoisonChar = static_cast<char>(0xA5);

using namespace std::string_view_literals;

/// A field of a record: the text, and garbage behind its NUL.
template <class Unit>
std::vector<Unit> field(std::basic_string_view<Unit> text, std::size_t size) {
  std::vector<Unit> units(size, Unit{0x7E});
  std::ranges::copy(text, units.begin());
  if (text.size() < size) units[text.size()] = Unit{0};
  return units;
}

class Text : public Test {
 protected:
  Text() { errno = 0; }

  bool widenTerminated(std::string_view text, std::size_t size = 64) {
    return vqs::widenTerminated(std::span{wide}.first(64), field(text, size));
  }
  bool widenField(std::string_view text) { return vqs::widenField(wide, field(text, 32)); }
  bool narrow(std::u16string_view text, std::size_t size, std::size_t destination) {
    narrowed.assign(destination, kPoisonChar);
    return vqs::narrowField(narrowed, field(text, size));
  }
  [[nodiscard]] std::u16string_view widened() const { return wide.data(); }
  [[nodiscard]] std::string_view narrowText() const { return narrowed.data(); }

  std::vector<char16_t> wide = std::vector<char16_t>(256, kPoisonUnit);
  std::vector<char> narrowed;
  NoInvalidParameter strict;
};

TEST_F(Text, every_byte_is_one_unit_in_the_plain_locale) {
  for (int first = 1; first < 256; first += 51) {
    std::string text(51, '\0');
    std::iota(text.begin(), text.end(), static_cast<char>(first));
    ASSERT_TRUE(widenTerminated(text));
    for (std::size_t i = 0; i < 51; ++i) EXPECT_EQ(wide[i], static_cast<char16_t>(first + static_cast<int>(i)));
    EXPECT_EQ(wide[51], 0);
    ASSERT_TRUE(narrow(widened(), 64, 64));
    EXPECT_EQ(narrowText(), text);
  }
}

TEST_F(Text, ends_at_its_nul_and_leaves_the_rest_of_the_destination) {
  ASSERT_TRUE(widenTerminated("ab"sv));
  EXPECT_EQ(widened(), u"ab");
  EXPECT_EQ(wide[3], kPoisonUnit);
}

TEST_F(Text, of_63_bytes_is_the_longest_that_holds_its_nul) {
  const std::string longest(63, 'n');
  ASSERT_TRUE(widenTerminated(longest));
  EXPECT_EQ(widened(), std::u16string(63, u'n'));
  EXPECT_EQ(errno, 0);
}

TEST_F(Text, without_nul_is_refused_and_no_invalid_parameter) {
  EXPECT_FALSE(widenTerminated(std::string(64, 'n')));
  EXPECT_EQ(errno, ERANGE);
}

TEST_F(Text, may_fill_its_field_where_no_nul_is_asked_for) {
  const std::string full = "0123456789abcdefghijklmnopqrstuv";
  ASSERT_TRUE(widenField(full));
  EXPECT_EQ(widened(), u"0123456789abcdefghijklmnopqrstuv");
  EXPECT_EQ(wide[33], kPoisonUnit);
}

TEST_F(Text, of_31_bytes_or_none_is_a_field_too) {
  ASSERT_TRUE(widenField(std::string(31, 'x')));
  EXPECT_EQ(widened(), std::u16string(31, u'x'));
  ASSERT_TRUE(widenField({}));
  EXPECT_EQ(widened(), u"");
}

TEST_F(Text, is_narrowed_whole_when_it_fits) {
  ASSERT_TRUE(narrow(std::u16string(31, u'x'), 256, 32));
  EXPECT_EQ(narrowText(), std::string(31, 'x'));
  ASSERT_TRUE(narrow(u""sv, 256, 32));
  EXPECT_EQ(narrowText(), "");
  EXPECT_EQ(narrowed[1], kPoisonChar);
}

TEST_F(Text, is_cut_when_it_does_not_fit) {
  for (const std::size_t length : {32U, 33U, 40U, 255U, 256U}) {
    ASSERT_TRUE(narrow(std::u16string(length, u'y'), 256, 32)) << length;
    EXPECT_EQ(narrowText(), std::string(31, 'y'));
  }
}

TEST_F(Text, is_looked_at_only_as_far_as_it_is_taken) {
  std::u16string text(40, u'z');
  text[32] = 0x3042;
  EXPECT_TRUE(narrow(text, 256, 32));
  EXPECT_EQ(narrowText(), std::string(31, 'z'));
}

TEST_F(Text, above_8_bits_is_refused_in_the_plain_locale) {
  for (const char16_t unit : {char16_t{0x100}, char16_t{0x3042}, char16_t{0xD83D}, char16_t{0xFFFF}}) {
    errno = 0;
    EXPECT_FALSE(narrow(std::u16string(u"ab") + unit, 64, 64)) << int{unit};
    EXPECT_EQ(errno, EILSEQ);
  }
}

TEST_F(Text, of_a_multibyte_locale_is_widened_by_characters) {
  const Locale utf8{"C.UTF-8"};
  ASSERT_TRUE(widenTerminated("\x41\xC3\xA9\xE3\x81\x82\xF0\x9F\x98\x80"sv));
  EXPECT_EQ(widened(), u"\x41\xE9\x3042\xD83D\xDE00");
  ASSERT_TRUE(widenField("\xE3\x81\x82\xF0\x9F\x98\x80"sv));
  EXPECT_EQ(widened(), u"\x3042\xD83D\xDE00");
}

TEST_F(Text, of_a_multibyte_locale_fills_its_field_by_bytes) {
  const Locale utf8{"C.UTF-8"};
  // 21 characters of three bytes: 63 bytes and the NUL.
  std::string name;
  for (int i = 0; i < 21; ++i) name += "\xE3\x81\x82";
  ASSERT_TRUE(widenTerminated(name));
  EXPECT_EQ(widened(), std::u16string(21, 0x3042));
  // 16 characters of two bytes: all 32 bytes, and no NUL to stop at.
  std::string text;
  for (int i = 0; i < 16; ++i) text += "\xC3\xA9";
  ASSERT_TRUE(widenField(text));
  EXPECT_EQ(widened(), std::u16string(16, 0xE9));
}

TEST_F(Text, that_is_not_of_the_multibyte_locale_is_refused) {
  const Locale utf8{"C.UTF-8"};
  for (const std::string_view text : {"\xFF"sv, "a\x80"sv, "\xE3\x81"sv, "\xC3("sv}) {
    errno = 0;
    EXPECT_FALSE(widenTerminated(text));
    EXPECT_EQ(errno, EILSEQ);
    errno = 0;
    EXPECT_FALSE(widenField(text));
    EXPECT_EQ(errno, EILSEQ);
  }
}

TEST_F(Text, whose_last_character_is_cut_by_the_field_is_refused) {
  const Locale utf8{"C.UTF-8"};
  EXPECT_FALSE(widenField("0123456789abcdefghijklmnopqrst\xE3\x81"sv));
  EXPECT_EQ(errno, EILSEQ);
}

TEST_F(Text, of_a_multibyte_locale_is_narrowed_by_characters) {
  const Locale utf8{"C.UTF-8"};
  ASSERT_TRUE(narrow(u"\x41\xE9\x3042\xD83D\xDE00"sv, 64, 64));
  EXPECT_EQ(narrowText(), "\x41\xC3\xA9\xE3\x81\x82\xF0\x9F\x98\x80");
}

TEST_F(Text, of_a_multibyte_locale_is_cut_between_characters) {
  const Locale utf8{"C.UTF-8"};
  ASSERT_TRUE(narrow(std::u16string(30, 0x3042), 64, 64));
  std::string expected;
  for (int i = 0; i < 21; ++i) expected += "\xE3\x81\x82";
  EXPECT_EQ(narrowText(), expected);
}

TEST_F(Text, with_half_a_surrogate_pair_is_refused) {
  const Locale utf8{"C.UTF-8"};
  for (const std::u16string_view text : {u"\xD83D"sv, u"a\xD83D\x62"sv, u"\xDE00"sv}) {
    errno = 0;
    EXPECT_FALSE(narrow(text, 64, 64));
    EXPECT_EQ(errno, EILSEQ);
  }
}

class CopyBounded : public Test {
 protected:
  void copy(std::size_t length, char first) {
    destination.assign(64, kPoisonChar);
    std::string text(length, 'b');
    if (length != 0) text[0] = first;
    vqs::copyBounded(destination, field(std::string_view{text}, 128));
  }

  std::vector<char> destination;
  NoInvalidParameter strict;
};

TEST_F(CopyBounded, keeps_what_fits_with_its_nul) {
  for (const std::size_t length : {1U, 2U, 62U, 63U}) {
    copy(length, 'a');
    EXPECT_EQ(std::string_view{destination.data()}, "a" + std::string(length - 1, 'b'));
  }
  copy(0, 'a');
  EXPECT_EQ(destination[0], '\0');
}

TEST_F(CopyBounded, empties_what_does_not_fit_and_touches_one_byte) {
  for (const std::size_t length : {64U, 65U, 127U, 128U}) {
    errno = 0;
    copy(length, 'a');
    EXPECT_EQ(destination[0], '\0') << length;
    for (std::size_t i = 1; i < 64; ++i) EXPECT_EQ(destination[i], kPoisonChar) << length << ' ' << i;
    EXPECT_EQ(errno, ERANGE);
  }
}

}  // namespace
}  // namespace test
