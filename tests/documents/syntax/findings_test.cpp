// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/documents/syntax/json_text.h"

namespace documents {
namespace {

struct FindingCase {
  std::string_view text;
  std::string_view findings;
  /// what could be read all the same
  std::string_view tree;
};

void expectFindings(const FindingCase& expected) {
  EXPECT_EQ(findingsOf(expected.text), expected.findings) << expected.text;
  Findings findings;
  EXPECT_EQ(compact(parse(expected.text, findings)), expected.tree) << expected.text;
}

TEST(SyntaxFindings, commas_and_colons) {
  constexpr FindingCase kCases[] = {
      {R"({ "a": 1 "b": 2 })", "1:10+3 P0001 a comma or \"}\" is expected -> ,\n", R"({"a":1,"b":2})"},
      {"{\"a\": 1 // c\n \"b\": 2}", "2:2+3 P0001 a comma or \"}\" is expected -> ,\n", R"({"a":1,"b":2})"},
      {"[1 [2]]", "1:4+1 P0001 a comma or \"]\" is expected -> ,\n", "[1,[2]]"},
      {"[1 x, 2]", "1:4+1 P0001 a comma or \"]\" is expected\n", "[1,2]"},
      {"{\"a\": 1 2 3,\n\"b\": 4}", "1:9+1 P0001 a comma or \"}\" is expected\n", R"({"a":1,"b":4})"},
      {"{\"a\": 1 2\n\"b\": 4}", "1:9+1 P0001 a comma or \"}\" is expected\n", R"({"a":1,"b":4})"},
      {"[1,,2]", "1:4+1 P0001 a value or \"]\" is expected\n", "[1,2]"},
      {"[,]", "1:2+1 P0001 a value or \"]\" is expected\n", "[]"},
      {R"({,"a":1})", "1:2+1 P0001 a member's name in quotes or \"}\" is expected\n", R"({"a":1})"},
      {R"(["a":1])", "1:5+1 P0001 a comma or \"]\" is expected\n", R"(["a"])"},
      {R"({"a" 5})", "1:6+1 P0001 a colon is expected -> :\n", R"({"a":5})"},
      {R"({"a" = 5})", "1:6+1 P0001 a colon is expected -> :\n", R"({"a":5})"},
      {R"({"a"})", "1:5+1 P0001 a colon is expected\n", R"({"a":})"},
      {"{\"a\"\n\"b\":1}", "2:1+3 P0001 a colon is expected\n", R"({"a":,"b":1})"},
      {R"({"a":,"b":1})", "1:6+1 P0001 a value is expected\n", R"({"a":,"b":1})"},
      {R"({"a":})", "1:6+1 P0001 a value is expected\n", R"({"a":})"},
  };
  for (const auto& expected : kCases) expectFindings(expected);
}

TEST(SyntaxFindings, brackets) {
  constexpr FindingCase kCases[] = {
      {"[1", "1:3+0 P0001 the list that begins in line 1 has no end: \"]\" is expected\n", "[1]"},
      {"[\n {\"a\":\n", "3:1+0 P0001 the object that begins in line 2 has no end: \"}\" is expected\n", R"([{"a":}])"},
      {R"({"a": [1, 2})", "1:12+1 P0001 a comma or \"]\" is expected\n", R"({"a":[1,2]})"},
      {"[1}, 2]", "1:3+1 P0001 a comma or \"]\" is expected\n", "[1,2]"},
      {"}", "1:1+1 P0001 a value is expected\n", ""},
      {R"({[1, 2], "a": 3})", "1:2+1 P0001 a member's name in quotes or \"}\" is expected\n", R"({"a":3})"},
  };
  for (const auto& expected : kCases) expectFindings(expected);
}

TEST(SyntaxFindings, words) {
  constexpr FindingCase kCases[] = {
      {"{ a: 1, 'b c': 2 }",
       "1:3+1 P0001 a member's name stands in quotes -> \"a\"\n1:9+5 P0001 a member's name stands in quotes -> \"b "
       "c\"\n",
       "{a:1,'b c':2}"},
      {"{1}", "1:2+1 P0001 a member's name in quotes or \"}\" is expected\n", "{}"},
      {"[True, NULL]",
       "1:2+4 P0001 true, false and null are written in small letters -> true\n"
       "1:8+4 P0001 true, false and null are written in small letters -> null\n",
       "[True,NULL]"},
      {"['x y', 'x\"y']",
       "1:2+5 P0001 a string stands in double quotes -> \"x y\"\n1:9+5 P0001 a string stands in double quotes\n",
       "['x y','x\"y']"},
      {"[NaN, @]",
       "1:2+3 P0001 \"NaN\" is no value: a string in quotes, a number, a list or an object is expected ? \"NaN\"\n"
       "1:7+1 P0001 \"@\" is no value: a string in quotes, a number, a list or an object is expected\n",
       "[NaN,@]"},
      {"[\x01]", "1:2+1 P0001 \"\\u0001\" is no value: a string in quotes, a number, a list or an object is expected\n",
       "[\x01]"},
  };
  for (const auto& expected : kCases) expectFindings(expected);
}

TEST(SyntaxFindings, ends_of_documents) {
  constexpr FindingCase kCases[] = {
      {"", "1:1+0 P0001 the document is empty: a value is expected\n", ""},
      {"\xEF\xBB\xBF", "1:1+0 P0001 the document is empty: a value is expected\n", ""},
      {"// a\n", "2:1+0 P0001 the document is empty: a value is expected\n", ""},
      {"[1] // a\n x", "2:2+1 P0011 the document ends before \"x\": nothing is expected here\n", "[1]"},
      {"{}}", "1:3+1 P0011 the document ends before \"}\": nothing is expected here\n", "{}"},
      {"1 \xEF\xBB\xBF", "1:3+3 P0011 the document ends before \"\xEF\xBB\xBF\": nothing is expected here\n", "1"},
  };
  for (const auto& expected : kCases) expectFindings(expected);
}

TEST(SyntaxFindings, strings) {
  constexpr FindingCase kCases[] = {
      {"{\"a: 1,\n\"b\": \"x,\n\"c\": 3}",
       "1:2+6 P0002 the string has no end: a quote is expected before the line's end\n"
       "2:6+3 P0002 the string has no end: a quote is expected before the line's end\n",
       R"({"b":"x,,"c":3})"},
      {"[\"a", "1:2+2 P0002 the string has no end: a quote is expected before the line's end\n", R"(["a])"},
      {"[\"a\\\n]", "1:2+3 P0002 the string has no end: a quote is expected before the line's end\n", R"(["a\])"},
      {"[\"a\tb\"]", "1:4+1 P0005 a control character stands in a string as an escape: \\t is expected -> \\t\n",
       "[\"a\tb\"]"},
      {"\"\x1F\"", "1:2+1 P0005 a control character stands in a string as an escape: \\u001f is expected -> \\u001f\n",
       "\"\x1F\""},
      {R"("C:\Work")",
       "1:4+2 P0006 there is no such escape: \\\", \\\\, \\/, \\b, \\f, \\n, \\r, \\t or \\u with four digits is "
       "expected ? \\\\\n",
       R"("C:\Work")"},
      {R"("\u12g4")", "1:2+4 P0006 four hexadecimal digits are expected behind \"\\u\"\n", R"("\u12g4")"},
  };
  for (const auto& expected : kCases) expectFindings(expected);
}

TEST(SyntaxFindings, comments_without_end) {
  expectFindings({"[1 /* a ]", "1:4+2 P0003 the comment has no end: \"*/\" is expected\n", "[1]"});
  expectFindings({"/*/", "1:1+2 P0003 the comment has no end: \"*/\" is expected\n", ""});
}

TEST(SyntaxFindings, broken_utf8) {
  const std::string_view sentence = " P0004 these bytes are no UTF-8, in which documents are written\n";
  const auto at = [&](std::string_view place) { return std::string{place} + std::string{sentence}; };
  EXPECT_EQ(findingsOf("[\"\xC3\xA4\xFF\xFEz\"]"), at("1:4+2"));
  EXPECT_EQ(findingsOf("[ \x80 1]"), at("1:3+1"));
  EXPECT_EQ(findingsOf("[1] // \xC0\xAF x"), at("1:8+2"));
  EXPECT_EQ(findingsOf("/* \xED\xA0\x80 */ 1"), at("1:4+3"));
  EXPECT_EQ(findingsOf("{\"\xC3\":1}"), at("1:3+1"));
}

TEST(SyntaxFindings, utf16_is_told_once) {
  EXPECT_EQ(findingsOf({"\xFF\xFE{\0}\0", 6}), "1:1+2 P0004 the document is UTF-16: UTF-8 is expected\n");
  EXPECT_EQ(findingsOf({"\xFE\xFF\0{\0}", 6}), "1:1+2 P0004 the document is UTF-16: UTF-8 is expected\n");
}

TEST(SyntaxFindings, numbers) {
  struct NumberCase {
    std::string_view number;
    std::string_view reason;
  };
  constexpr NumberCase kCases[] = {
      {"+3", "a number does not begin with \"+\" -> 3"},
      {".5", "a digit is expected on both sides of the point -> 0.5"},
      {"-.5", "a digit is expected on both sides of the point -> -0.5"},
      {"5.", "a digit is expected on both sides of the point -> 5.0"},
      {"0x1F", "numbers are decimal -> 31"},
      {"0xFFFFFFFFFFFFFFFFF", "numbers are decimal"},
      {"0x", "numbers are decimal"},
      {"01", "a number does not begin with \"0\" and another digit"},
      {"-00", "a number does not begin with \"0\" and another digit"},
      {"-", "digits are expected, as in 12, -3 or 0.5"},
      {"1e", "digits are expected, as in 12, -3 or 0.5"},
      {"1e+", "digits are expected, as in 12, -3 or 0.5"},
      {"1.e5", "digits are expected, as in 12, -3 or 0.5"},
      {"4600mW", "digits are expected, as in 12, -3 or 0.5"},
      {"--1", "digits are expected, as in 12, -3 or 0.5"},
  };
  for (const auto& [number, reason] : kCases) {
    const std::string name{number};
    expectFindings(
        {"[" + name + ", 2]",
         "1:2+" + std::to_string(name.size()) + " P0007 \"" + name + "\" is no number: " + std::string{reason} + "\n",
         "[" + name + ",2]"});
  }
}

TEST(SyntaxFindings, duplicate_members) {
  expectFindings(
      {"{\"a\":1,\n \"b\":2, \"a\":3}",
       "2:9+3 P0010 the object already has a member \"a\", in line 1, column 2: one of each name is expected\n",
       R"({"a":1,"b":2,"a":3})"});
  EXPECT_EQ(findingsOf(R"({"a":1,"\u0061":{"b":1}})"),
            "1:8+8 P0010 the object already has a member \"a\", in line 1, column 2: one of each name is expected\n");
  EXPECT_EQ(
      findingsOf(R"({"\ud83d\ude00":1,")"
                 "\xF0\x9F\x98\x80\":2}"),
      "1:19+6 P0010 the object already has a member \"\xF0\x9F\x98\x80\", in line 1, column 2: one of each name is "
      "expected\n");
  EXPECT_EQ(findingsOf(R"([{"a":1},{"a":1,"b":{"a":2},"A":3}])"), "");
}

TEST(SyntaxFindings, duplicates_among_many_members) {
  std::string text = "{";
  for (int i = 0; i < 100; ++i) text += "\"m" + std::to_string(i) + "\":0,\n";
  text += "\"m70\":1,\"m3\":2,\"m70\":3}";
  EXPECT_EQ(
      findingsOf(text),
      "101:1+5 P0010 the object already has a member \"m70\", in line 71, column 1: one of each name is expected\n"
      "101:9+4 P0010 the object already has a member \"m3\", in line 4, column 1: one of each name is expected\n"
      "101:16+5 P0010 the object already has a member \"m70\", in line 71, column 1: one of each name is expected\n");
}

std::string nested(std::size_t levels) { return std::string(levels, '[') + std::string(levels, ']'); }

TEST(SyntaxFindings, too_many_levels) {
  EXPECT_EQ(findingsOf(nested(32)), "");
  expectFindings(
      {nested(33), "1:33+1 P0008 lists and objects are nested too deeply: 32 levels are read\n", nested(33)});
  EXPECT_EQ(findingsOf("{\"a\":" + nested(40) + ", \"b\" 2}"),
            "1:37+1 P0008 lists and objects are nested too deeply: 32 levels are read\n"
            "1:92+1 P0001 a colon is expected -> :\n")
      << "what comes behind it is read";
}

TEST(SyntaxFindings, too_many_bytes) {
  EXPECT_EQ(findingsOf("1" + std::string(kMostBytes - 1, ' ')), "");
  EXPECT_EQ(findingsOf("1" + std::string(kMostBytes, ' ')),
            "1:1+0 P0009 the document has 16777217 bytes: 16777216 at most are read\n");
}

TEST(SyntaxFindings, too_many_findings) {
  std::string text = "[";
  for (int i = 0; i < 2000; ++i) text += "01,";
  Findings findings;
  parse(text + "1]", findings);
  ASSERT_EQ(findings.size(), 1000U);
  EXPECT_EQ(findings[998].rule, Rule::kMalformedNumber);
  EXPECT_EQ(findings[998].span.offset, 1U + 998 * 3);
  EXPECT_EQ(findings[999].rule, Rule::kTooManyFindings);
  EXPECT_EQ(findings[999].sentence, "there is more to say than 999 findings: mend some of them and check again");
}

TEST(SyntaxFindings, exactly_as_many_findings_as_there_is_room_for) {
  std::string text = "[";
  for (int i = 0; i < 999; ++i) text += "01,";
  Findings findings;
  parse(text + "1]", findings);
  ASSERT_EQ(findings.size(), 999U);
  EXPECT_EQ(findings.back().rule, Rule::kMalformedNumber);
}

TEST(SyntaxFindings, are_in_the_order_of_their_places) {
  EXPECT_EQ(findingsOf(R"({"a":{"b":1,"b":2},"a":01})"),
            "1:13+3 P0010 the object already has a member \"b\", in line 1, column 7: one of each name is expected\n"
            "1:20+3 P0010 the object already has a member \"a\", in line 1, column 2: one of each name is expected\n"
            "1:24+2 P0007 \"01\" is no number: a number does not begin with \"0\" and another digit\n");
}

TEST(HasErrors, looks_for_an_error_among_warnings) {
  Findings findings(2, Finding{.rule = Rule::kIdZero, .severity = Severity::kWarning, .span = {}, .sentence = ""});
  EXPECT_FALSE(hasErrors({}));
  EXPECT_FALSE(hasErrors(findings));
  findings.push_back({.rule = Rule::kUnexpected, .severity = Severity::kError, .span = {}, .sentence = ""});
  EXPECT_TRUE(hasErrors(findings));
}

}  // namespace
}  // namespace documents
