// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/tool/lsp/editor.h"
#include "tool/lsp/placed_text.h"

namespace test {
namespace {

using documents::Span;
using tool::lsp::PlacedText;
using tool::lsp::smallestEdit;
using tool::lsp::textAfter;

// A character of two units of UTF-16 and four bytes, and one of one unit and two bytes.
constexpr char kPair[] = "\xF0\x9F\x98\x80";
constexpr char kTwoBytes[] = "\xC3\xA4";
constexpr char kUnknown[] = "\xEF\xBF\xBD";

Json replacing(const Json& start, const Json& end, const std::string& text) {
  return {{"range", between(start, end)}, {"text", text}};
}

std::string changed(const std::string& text, const Json& changes) { return textAfter(PlacedText{text}, changes); }

TEST(PlacedText, counts_units_of_utf_16) {
  const PlacedText text{std::string{"a"} + kPair + kTwoBytes + "b\r\nc"};
  EXPECT_EQ(text.offsetOf(at(0, 0)), 0U);
  EXPECT_EQ(text.offsetOf(at(0, 1)), 1U);
  EXPECT_EQ(text.offsetOf(at(0, 3)), 5U);
  EXPECT_EQ(text.offsetOf(at(0, 4)), 7U);
  EXPECT_EQ(text.offsetOf(at(0, 5)), 8U);
  EXPECT_EQ(text.offsetOf(at(1, 0)), 10U);
  EXPECT_EQ(text.rangeOf({.offset = 5, .length = 6}), between(at(0, 3), at(1, 1)));
}

TEST(PlacedText, ends_where_lines_and_the_text_end) {
  const PlacedText text{"ab\ncd"};
  EXPECT_EQ(text.offsetOf(at(0, 3)), 2U);
  EXPECT_EQ(text.offsetOf(at(0, 2147483647)), 2U);
  EXPECT_EQ(text.offsetOf(at(1, 100)), 5U);
  EXPECT_EQ(text.offsetOf(at(2, 0)), 5U);
  EXPECT_EQ(text.offsetOf(Json{{"line", 18446744073709551615ULL}, {"character", 18446744073709551615ULL}}), 5U);
}

TEST(PlacedText, refuses_what_is_no_place) {
  const PlacedText text{"ab"};
  for (const char* place :
       {R"({ "line": -1, "character": 0 })", R"({ "line": 0, "character": -1 })", R"({ "line": 0.5, "character": 0 })",
        R"({ "line": "0", "character": 0 })", R"({ "line": null, "character": 0 })"})
    EXPECT_THROW(static_cast<void>(text.offsetOf(Json::parse(place))), tool::lsp::RequestError) << place;
  for (const char* place : {"null", "[]", "5", R"({ "line": 0 })", R"({ "character": 0 })"})
    EXPECT_THROW(static_cast<void>(text.offsetOf(Json::parse(place))), Json::exception) << place;
  EXPECT_THROW(static_cast<void>(text.spanOf(between(at(0, 2), at(0, 1)))), tool::lsp::RequestError);
}

TEST(TextAfter, replaces_a_range) {
  EXPECT_EQ(changed("ab\ncd\n", Json::array({replacing(at(0, 1), at(1, 1), "X\nY")})), "aX\nYd\n");
  EXPECT_EQ(changed("ab", Json::array({replacing(at(0, 2), at(0, 2), "c")})), "abc");
  EXPECT_EQ(changed("", Json::array({replacing(at(0, 0), at(0, 0), "c")})), "c");
  EXPECT_EQ(changed("ab", Json::array({replacing(at(0, 0), at(9, 9), "")})), "");
}

TEST(TextAfter, replaces_all_without_a_range) {
  EXPECT_EQ(changed("ab", Json::array({{{"text", "cd"}}})), "cd");
  EXPECT_EQ(changed("ab", Json::array({{{"text", "cd"}, {"range", nullptr}}})), "cd");
}

TEST(TextAfter, applies_changes_one_after_the_other) {
  // From the first to the last, each in the text that the one before leaves.
  EXPECT_EQ(changed("a\nb\nc", Json::array({replacing(at(0, 0), at(1, 0), "x\ny\n"), replacing(at(3, 0), at(3, 1), "C"),
                                            replacing(at(2, 0), at(2, 1), "B")})),
            "x\ny\nB\nC");
  // From the last to the first, as editors do with many cursors.
  EXPECT_EQ(changed("a\nb\nc", Json::array({replacing(at(2, 0), at(2, 1), "CC"), replacing(at(1, 0), at(1, 1), "\n"),
                                            replacing(at(0, 0), at(0, 1), "AA")})),
            "AA\n\n\nCC");
  EXPECT_EQ(changed("ab", Json::array({{{"text", "xy\nz"}}, replacing(at(1, 0), at(1, 1), "Z")})), "xy\nZ");
  EXPECT_EQ(changed("ab", Json::array()), "ab");
}

TEST(TextAfter, applies_changes_that_touch) {
  EXPECT_EQ(changed("abc", Json::array({replacing(at(0, 1), at(0, 2), "B\n"), replacing(at(0, 2), at(1, 0), "-")})),
            "aB-c");
  EXPECT_EQ(changed("abc", Json::array({replacing(at(0, 2), at(0, 3), "C"), replacing(at(0, 1), at(0, 3), "")})), "a");
  // The line of the first change is longer than it was.
  EXPECT_EQ(changed("a\nb", Json::array({replacing(at(0, 1), at(0, 1), "bcd"), replacing(at(0, 3), at(0, 9), "!")})),
            "abc!\nb");
}

TEST(TextAfter, counts_on_where_a_character_is_cut_in_half) {
  const std::string pair = kPair;
  const std::string unknown = kUnknown;
  EXPECT_EQ(changed(pair + "b", Json::array({replacing(at(0, 1), at(0, 2), "")})), unknown + "b");
  EXPECT_EQ(changed(pair + "b", Json::array({replacing(at(0, 0), at(0, 1), "")})), unknown + "b");
  EXPECT_EQ(changed(pair + "b", Json::array({replacing(at(0, 1), at(0, 1), "-")})), unknown + "-" + unknown + "b");
  EXPECT_EQ(changed(pair + "b", Json::array({replacing(at(0, 1), at(0, 2), ""), replacing(at(0, 1), at(0, 2), "c")})),
            unknown + "c");
}

TEST(TextAfter, refuses_what_is_no_change) {
  EXPECT_THROW(changed("ab", Json::array({Json::object()})), Json::exception);
  EXPECT_THROW(changed("ab", Json::array({5})), Json::exception);
  EXPECT_THROW(changed("ab", Json::array({{{"text", 5}}})), Json::exception);
  EXPECT_THROW(changed("ab", Json::array({{{"text", "c"}, {"range", 5}}})), Json::exception);
}

TEST(SmallestEdit, is_what_two_texts_have_not_in_common) {
  const auto edit = smallestEdit("{ \"a\":1 }", "{ \"a\": 1 }");
  EXPECT_EQ(edit.span, (Span{.offset = 6, .length = 0}));
  EXPECT_EQ(edit.replacement, " ");
}

TEST(SmallestEdit, is_nothing_between_equal_texts) {
  const auto edit = smallestEdit("abc", "abc");
  EXPECT_EQ(edit.span.length, 0U);
  EXPECT_EQ(edit.replacement, "");
}

TEST(SmallestEdit, repeats_nothing_where_the_ends_overlap) {
  EXPECT_EQ(smallestEdit("aaa", "aa").span, (Span{.offset = 2, .length = 1}));
  EXPECT_EQ(smallestEdit("aa", "aaa").replacement, "a");
  EXPECT_EQ(smallestEdit("", "abc").replacement, "abc");
  EXPECT_EQ(smallestEdit("abc", "").span, (Span{.offset = 0, .length = 3}));
}

TEST(SmallestEdit, does_not_cut_characters) {
  // Two characters that begin with the same three bytes, and two that end in the same.
  const auto begins = smallestEdit("a\xF0\x9F\x98\x80z", "a\xF0\x9F\x98\x81z");
  EXPECT_EQ(begins.span, (Span{.offset = 1, .length = 4}));
  EXPECT_EQ(begins.replacement, "\xF0\x9F\x98\x81");
  const auto ends = smallestEdit("a\xC3\xA4", "a\xC2\xA4");
  EXPECT_EQ(ends.span, (Span{.offset = 1, .length = 2}));
  EXPECT_EQ(ends.replacement, "\xC2\xA4");
}

}  // namespace
}  // namespace test
