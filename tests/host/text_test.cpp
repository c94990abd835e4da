// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <clocale>
#include <string>
#include <string_view>

#include "host/host.h"

namespace test {
namespace {

int conditionsMet = 0;

/// The bounded functions with a handler that counts instead of ending the process.
class BoundedText : public ::testing::Test {
 protected:
  BoundedText() : previous_(host::setInvalidParameterHandler([] { ++conditionsMet; })) {
    conditionsMet = 0;
    errno = 0;
  }
  ~BoundedText() override {
    host::setInvalidParameterHandler(previous_);
    std::setlocale(LC_CTYPE, "C");
  }

 private:
  host::InvalidParameterHandler previous_;
};

constexpr std::size_t kUnset = 0x5A5A;

using Widen = BoundedText;
using Narrow = BoundedText;
using Copy = BoundedText;

TEST_F(Widen, takes_bytes_for_units_in_the_plain_locale) {
  std::array<char16_t, 8> units{};
  units.fill(u'#');
  std::size_t converted = kUnset;
  EXPECT_EQ(mbstowcs_s(&converted, units.data(), units.size(), "a\x80\xFF", 8), 0);
  EXPECT_EQ(converted, 4U);
  EXPECT_EQ((std::u16string_view{units.data(), 5}), (std::u16string_view{u"a\u0080\u00FF\0#", 5}));
}

TEST_F(Widen, stops_at_the_count_and_terminates) {
  std::array<char16_t, 8> units{};
  units.fill(u'#');
  std::size_t converted = kUnset;
  EXPECT_EQ(mbstowcs_s(&converted, units.data(), units.size(), "abcdef", 3), 0);
  EXPECT_EQ(converted, 4U);
  EXPECT_EQ((std::u16string_view{units.data(), 5}), (std::u16string_view{u"abc\0#", 5}));
}

TEST_F(Widen, empties_the_destination_when_it_is_too_small) {
  std::array<char16_t, 4> units{};
  units.fill(u'#');
  std::size_t converted = kUnset;
  EXPECT_EQ(mbstowcs_s(&converted, units.data(), units.size(), "abcd", 4), ERANGE);
  EXPECT_EQ(units[0], u'\0');
  EXPECT_EQ(converted, 0U);
  EXPECT_EQ(errno, ERANGE);
  EXPECT_EQ(conditionsMet, 1);
}

TEST_F(Widen, cuts_when_asked_to_truncate) {
  std::array<char16_t, 4> units{};
  std::size_t converted = kUnset;
  EXPECT_EQ(mbstowcs_s(&converted, units.data(), units.size(), "abcdef", _TRUNCATE), STRUNCATE);
  EXPECT_EQ(converted, 4U);
  EXPECT_EQ(std::u16string(units.data()), u"abc");
  EXPECT_EQ(errno, 0);
  EXPECT_EQ(conditionsMet, 0);
}

TEST_F(Widen, refuses_missing_arguments) {
  std::array<char16_t, 4> units{u'#'};
  EXPECT_EQ(mbstowcs_s(nullptr, nullptr, 4, "a", 1), EINVAL);
  EXPECT_EQ(mbstowcs_s(nullptr, units.data(), 0, "a", 1), EINVAL);
  EXPECT_EQ(mbstowcs_s(nullptr, units.data(), 4, nullptr, 1), EINVAL);
  EXPECT_EQ(units[0], u'\0');
  EXPECT_EQ(conditionsMet, 3);
}

TEST_F(Widen, makes_surrogate_pairs_in_a_utf8_locale) {
  ASSERT_NE(std::setlocale(LC_CTYPE, "C.UTF-8"), nullptr);
  std::array<char16_t, 8> units{};
  std::size_t converted = kUnset;
  EXPECT_EQ(mbstowcs_s(&converted, units.data(), units.size(), "\xC3\xA9\xE3\x81\x82\xF0\x9F\x94\x8B", 20), 0);
  EXPECT_EQ(std::u16string(units.data()), (std::u16string{0xE9, 0x3042, 0xD83D, 0xDD0B}));
  EXPECT_EQ(converted, 5U);
}

TEST_F(Widen, refuses_an_illegal_sequence_without_punishment) {
  ASSERT_NE(std::setlocale(LC_CTYPE, "C.UTF-8"), nullptr);
  std::array<char16_t, 8> units{};
  units.fill(u'#');
  EXPECT_EQ(mbstowcs_s(nullptr, units.data(), units.size(), "ab\xC3", 8), EILSEQ);
  EXPECT_EQ(units[0], u'\0');
  EXPECT_EQ(errno, EILSEQ);
  EXPECT_EQ(conditionsMet, 0);
}

TEST_F(Narrow, takes_units_for_bytes_in_the_plain_locale) {
  std::array<char, 8> bytes{};
  bytes.fill('#');
  std::size_t converted = kUnset;
  EXPECT_EQ(wcstombs_s(&converted, bytes.data(), bytes.size(), u"a\u0080\u00FF", _TRUNCATE), 0);
  EXPECT_EQ(converted, 4U);
  EXPECT_EQ((std::string_view{bytes.data(), 5}), (std::string_view{"a\x80\xFF\0#", 5}));
}

TEST_F(Narrow, refuses_a_unit_beyond_the_plain_locale) {
  std::array<char, 8> bytes{};
  bytes.fill('#');
  EXPECT_EQ(wcstombs_s(nullptr, bytes.data(), bytes.size(), u"ab\u0100", _TRUNCATE), EILSEQ);
  EXPECT_EQ(bytes[0], '\0');
  EXPECT_EQ(errno, EILSEQ);
  EXPECT_EQ(conditionsMet, 0);
}

TEST_F(Narrow, looks_no_further_than_the_destination_reaches) {
  std::array<char, 4> bytes{};
  EXPECT_EQ(wcstombs_s(nullptr, bytes.data(), bytes.size(), u"abcd\u0100", _TRUNCATE), STRUNCATE);
  EXPECT_STREQ(bytes.data(), "abc");
  EXPECT_EQ(wcstombs_s(nullptr, bytes.data(), bytes.size(), u"abc\u0100", _TRUNCATE), EILSEQ);
}

TEST_F(Narrow, empties_the_destination_when_it_is_too_small) {
  std::array<char, 4> bytes{};
  bytes.fill('#');
  EXPECT_EQ(wcstombs_s(nullptr, bytes.data(), bytes.size(), u"abcd", 4), ERANGE);
  EXPECT_EQ(bytes[0], '\0');
  EXPECT_EQ(conditionsMet, 1);
}

TEST_F(Narrow, joins_surrogate_pairs_in_a_utf8_locale) {
  ASSERT_NE(std::setlocale(LC_CTYPE, "C.UTF-8"), nullptr);
  std::array<char, 16> bytes{};
  EXPECT_EQ(wcstombs_s(nullptr, bytes.data(), bytes.size(), u"\u00E9\xD83D\xDD0B", _TRUNCATE), 0);
  EXPECT_STREQ(bytes.data(), "\xC3\xA9\xF0\x9F\x94\x8B");
  EXPECT_EQ(wcstombs_s(nullptr, bytes.data(), bytes.size(), u"a\xD83D", _TRUNCATE), EILSEQ);
  EXPECT_EQ(wcstombs_s(nullptr, bytes.data(), bytes.size(), u"a\xDD0B", _TRUNCATE), EILSEQ);
}

TEST_F(Narrow, leaves_out_a_character_that_does_not_fit_whole) {
  ASSERT_NE(std::setlocale(LC_CTYPE, "C.UTF-8"), nullptr);
  std::array<char, 4> bytes{};
  EXPECT_EQ(wcstombs_s(nullptr, bytes.data(), bytes.size(), u"abc\u00E9", _TRUNCATE), 0);
  EXPECT_STREQ(bytes.data(), "abc");
}

TEST_F(Copy, stops_at_the_terminator_or_the_count) {
  std::array<char, 8> bytes{};
  bytes.fill('#');
  EXPECT_EQ(strncpy_s(bytes.data(), bytes.size(), "abc", 8), 0);
  EXPECT_EQ((std::string_view{bytes.data(), 5}), (std::string_view{"abc\0#", 5}));
  EXPECT_EQ(strncpy_s(bytes.data(), bytes.size(), "vwxyz", 2), 0);
  EXPECT_EQ((std::string_view{bytes.data(), 5}), (std::string_view{"vw\0\0#", 5}));
}

TEST_F(Copy, empties_the_destination_when_it_is_too_small) {
  std::array<char, 4> bytes{};
  bytes.fill('#');
  EXPECT_EQ(strncpy_s(bytes.data(), bytes.size(), "abcd", 9), ERANGE);
  EXPECT_EQ(bytes[0], '\0');
  EXPECT_EQ(errno, ERANGE);
  EXPECT_EQ(conditionsMet, 1);
  EXPECT_EQ(strncpy_s(bytes.data(), bytes.size(), "abc", 9), 0);
}

TEST_F(Copy, cuts_when_asked_to_truncate) {
  std::array<char, 4> bytes{};
  EXPECT_EQ(strncpy_s(bytes.data(), bytes.size(), "abcd", _TRUNCATE), STRUNCATE);
  EXPECT_STREQ(bytes.data(), "abc");
  EXPECT_EQ(conditionsMet, 0);
}

TEST_F(Copy, refuses_missing_arguments) {
  std::array<char, 4> bytes{'#'};
  EXPECT_EQ(strncpy_s(nullptr, 4, "a", 1), EINVAL);
  EXPECT_EQ(strncpy_s(bytes.data(), 0, "a", 1), EINVAL);
  EXPECT_EQ(bytes[0], '#');
  EXPECT_EQ(strncpy_s(bytes.data(), 4, nullptr, 1), EINVAL);
  EXPECT_EQ(bytes[0], '\0');
  EXPECT_EQ(strncpy_s(nullptr, 0, nullptr, 0), 0);
}

TEST(InvalidParameter, ends_the_process_unless_handled) {
  std::array<char, 2> bytes{};
  EXPECT_DEATH(strncpy_s(bytes.data(), bytes.size(), "abc", 3), "");
}

}  // namespace
}  // namespace test
