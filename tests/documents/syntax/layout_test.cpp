// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "documents/documents.h"
#include "tests/documents/syntax/json_text.h"
#include "tests/documents/syntax/random_document.h"

namespace documents {
namespace {

std::string formatted(std::string_view text) {
  const auto result = formatDocument(text);
  return result.text ? *result.text : "findings:\n" + findingsOf(text);
}

constexpr std::string_view kPolicies = R"({
  // Comments are welcome, and survive formatting.
  "$schema": "vexoqtf-policies.schema.json",
  "version": "3.41",
  "policies": [
    {
      "id": 10,
      "name": "Quiet on battery",
      "description": "low power, low noise",
      "when": [
        { "Power Source": "DC Power" },
        { "Power Mode": "Balanced" },
        { "Skin Temperature": { "op": 3, "value": 4600 } },
        { "App State": { "op": 2, "value": ["Foreground", "Full Screen"] } }
      ],
      "do": [
        { "SPL": 15000 },
        { "Fan Mode": "Manual" },
        { "Fan Table Index": { "value": 3, "option1": 1 } }
      ],
      "texts": ["teams.exe", { "text": "obs64.exe", "flag": 1 }],
      "flag0": 1
    }
  ]
}
)";

TEST(Layout, leaves_what_is_laid_out_alone) { EXPECT_EQ(formatted(kPolicies), kPolicies); }

std::string without(std::string text, std::string_view bytes) {
  std::erase_if(text, [&](char byte) { return bytes.find(byte) != std::string_view::npos; });
  return text;
}

TEST(Layout, begins_and_ends_lines_where_they_belong) {
  const std::string inOneLine = without(std::string{kPolicies}.erase(4, 48), "\n");
  std::string expected{kPolicies};
  expected.erase(4, expected.find("\"$schema\"") - 4);
  EXPECT_EQ(formatted(inOneLine), expected);
}

TEST(Layout, spreads_the_outer_levels) {
  EXPECT_EQ(formatted(R"({"policies":[{"id":1}]})"), R"({
  "policies": [
    {
      "id": 1
    }
  ]
}
)");
}

TEST(Layout, empty_lists_and_objects_stay_on_their_line) {
  EXPECT_EQ(formatted("{ }"), "{}\n");
  EXPECT_EQ(formatted("[\n\n]"), "[]\n");
  EXPECT_EQ(formatted(R"({"policies":[{"when":[ ],"do":{ }}]})"), R"({
  "policies": [
    {
      "when": [],
      "do": {}
    }
  ]
}
)");
}

TEST(Layout, a_value_of_its_own_is_a_document) {
  EXPECT_EQ(formatted(" 1 "), "1\n");
  EXPECT_EQ(formatted("\"a\""), "\"a\"\n");
}

/// A policy with these texts, as far as its line reaches.
std::string texts(std::string_view list) {
  return R"({"policies":[{"texts":)" + std::string{list} + R"(,"flag0":1}]})";
}

TEST(Layout, a_line_has_120_characters) {
  // Six blanks, "texts": and its brackets, quotes and comma take 20.
  const std::string fits = "[\"" + std::string(100, 'x') + "\"]";
  const std::string wide = "[\"" + std::string(101, 'x') + "\"]";
  EXPECT_EQ(formatted(texts(fits)),
            "{\n  \"policies\": [\n    {\n      \"texts\": " + fits + ",\n      \"flag0\": 1\n    }\n  ]\n}\n");
  EXPECT_EQ(formatted(texts(wide)), "{\n  \"policies\": [\n    {\n      \"texts\": [\n        \"" +
                                        std::string(101, 'x') + "\"\n      ],\n      \"flag0\": 1\n    }\n  ]\n}\n");
}

TEST(Layout, characters_are_counted_and_not_bytes) {
  std::string name;
  for (int i = 0; i < 100; ++i) name += "\xE2\x82\xAC";
  EXPECT_EQ(formatted(texts("[\"" + name + "\"]")),
            "{\n  \"policies\": [\n    {\n      \"texts\": [\"" + name + "\"],\n      \"flag0\": 1\n    }\n  ]\n}\n");
}

TEST(Layout, keeps_what_is_written_in_names_strings_and_numbers) {
  EXPECT_EQ(formatted(R"([ "\u0041\/\ud800", 1.50E+03, -0 ])"), R"([
  "\u0041\/\ud800",
  1.50E+03,
  -0
]
)");
}

TEST(Layout, drops_byte_order_mark_trailing_commas_and_other_line_ends) {
  EXPECT_EQ(formatted("\xEF\xBB\xBF{\r\n\"a\":1,\r\n// b\r\n}\r\n"), "{\n  \"a\": 1\n  // b\n}\n");
}

TEST(Layout, keeps_one_empty_line_between_members) {
  EXPECT_EQ(formatted("{\n\n\"a\":1,\n\n\n\"b\":2,\n\"c\":3\n\n}\n\n"),
            "{\n  \"a\": 1,\n\n  \"b\": 2,\n  \"c\": 3\n}\n");
  EXPECT_EQ(formatted("{\"a\":1\n,\n\"b\":2,\n// c\n\n// d\n\"e\":3}"),
            "{\n  \"a\": 1,\n  \"b\": 2,\n  // c\n\n  // d\n  \"e\": 3\n}\n");
}

struct CommentCase {
  std::string_view written;
  std::string_view expected;
};

TEST(Layout, comments_stay_where_they_are) {
  constexpr CommentCase kCases[] = {
      // Before and behind the document.
      {"// a\n[]", "// a\n[]\n"},
      {"/* a */ []", "/* a */ []\n"},
      {"\n\n// a\n\n\n[]", "// a\n\n[]\n"},
      {"[] // a", "[] // a\n"},
      {"[]\n\n\n// a  \n/* b */", "[]\n\n// a\n/* b */\n"},
      // On the line of a member, before and behind its comma.
      {"[1, // a\n2 // b\n]", "[\n  1, // a\n  2 // b\n]\n"},
      {"[1 // a\n, 2]", "[\n  1, // a\n  2\n]\n"},
      {"[1 /* a */, 2]", "[\n  1, /* a */\n  2\n]\n"},
      {"[1, /* a */ 2]", "[\n  1,\n  /* a */ 2\n]\n"},
      {"[1, /* a */ // b\n 2]", "[\n  1, /* a */ // b\n  2\n]\n"},
      {"[1, /* a */]", "[\n  1 /* a */\n]\n"},
      // On lines of their own.
      {"[1,\n// a\n2\n// b\n]", "[\n  1,\n  // a\n  2\n  // b\n]\n"},
      {"[1\n/* a */, 2]", "[\n  1,\n  /* a */ 2\n]\n"},
      {"{\n/* a */ /* b */ \"c\": 1}", "{\n  /* a */ /* b */ \"c\": 1\n}\n"},
      // Behind an opening bracket, and between empty ones.
      {"[ // a\n1]", "[ // a\n  1\n]\n"},
      {"[ /* a */ 1]", "[\n  /* a */ 1\n]\n"},
      {"[ // a\n]", "[ // a\n]\n"},
      {"[/* a */]", "[\n  /* a */\n]\n"},
      {"{\n// a\n}", "{\n  // a\n}\n"},
      // Between a name and its value.
      {"{\"a\" /* b */ : /* c */ 1}", "{\n  \"a\": /* b */ /* c */ 1\n}\n"},
      {"{\"a\": // b\n 1}", "{\n  // b\n  \"a\": 1\n}\n"},
      {"{\n/* a */ \"b\" /* c */ : // d\n 1}", "{\n  /* a */ /* c */\n  // d\n  \"b\": 1\n}\n"},
      // A comment of several lines keeps them.
      {"[\r\n/* a\r\n   b */\r\n1]", "[\n  /* a\n   b */\n  1\n]\n"},
  };
  for (const auto& [written, expected] : kCases) EXPECT_EQ(formatted(written), expected) << written;
}

TEST(Layout, what_holds_a_comment_has_several_lines) {
  EXPECT_EQ(formatted(R"({"policies":[{"when":[{"A":1},// a
{"B":/* b */2}]}]})"),
            R"({
  "policies": [
    {
      "when": [
        { "A": 1 }, // a
        {
          "B": /* b */ 2
        }
      ]
    }
  ]
}
)");
}

TEST(Layout, is_nothing_for_what_cannot_be_read) {
  const auto result = formatDocument("[1");
  EXPECT_FALSE(result.text);
  EXPECT_EQ(result.findings.size(), 1U);
}

/// The comments without what a layout changes in them.
std::string commentsOf(std::string_view text) {
  Findings findings;
  const Tree tree = parse(text, findings);
  std::string all;
  for (const Comment& comment : tree.comments) all += without(std::string{tree.slice(comment.span)}, "\r\n ") + '\n';
  return all;
}

void expectFaithful(const std::string& text) {
  const std::string first = formatted(text);
  EXPECT_EQ(compact(first), compact(text)) << text;
  EXPECT_EQ(commentsOf(first), commentsOf(text)) << text;
  EXPECT_EQ(formatted(first), first) << text;
}

TEST(Layout, keeps_content_and_comments_and_is_stable) {
  for (unsigned seed = 0; seed < 4000 && !testing::Test::HasFailure(); ++seed) {
    RandomDocument random{seed};
    expectFaithful(random.spaced(random.tokens(), true));
  }
}

TEST(Layout, is_stable_with_a_comment_in_every_gap) {
  for (unsigned seed = 0; seed < 60 && !testing::Test::HasFailure(); ++seed) {
    const auto tokens = RandomDocument{seed}.tokens();
    for (std::size_t gap = 0; gap <= tokens.size(); ++gap)
      for (const char* const comment :
           {"/*a*/", "//b\n", "\n/*c*/", "/*d*/\n", "\n//e\n", "/*f\n*/", "/*g*//*h*/", "\n\n/*i*/\n\n//j\n\n"})
        expectFaithful(RandomDocument::withOneComment(tokens, gap, comment));
  }
}

}  // namespace
}  // namespace documents
