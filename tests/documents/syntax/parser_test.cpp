// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/documents/syntax/json_text.h"

namespace documents {
namespace {

TEST(Parser, reads_every_kind_of_value) {
  EXPECT_EQ(compact("null"), "null");
  EXPECT_EQ(compact("true"), "true");
  EXPECT_EQ(compact("false"), "false");
  EXPECT_EQ(compact("\"a\""), "\"a\"");
  EXPECT_EQ(compact("-12.5e+3"), "-12.5e+3");
  EXPECT_EQ(compact("[]"), "[]");
  EXPECT_EQ(compact("{ }"), "{}");
  EXPECT_EQ(compact("{ \"a\" : [ 1, { \"b\" : null } ] , \"c\" : \"\" }"), R"({"a":[1,{"b":null}],"c":""})");
}

TEST(Parser, takes_comments_and_trailing_commas) {
  EXPECT_EQ(compact("// a\n[1, /* b */ 2,]/*c*/// d"), "[1,2]");
  EXPECT_EQ(compact("{\"a\"/**/:/***/1,// x\r}"), "{\"a\":1}");
}

TEST(Parser, keeps_the_comments) {
  Findings findings;
  const Tree tree = parse("//a\r\n[1/*b*/]//c", findings);
  ASSERT_EQ(tree.comments.size(), 3U);
  EXPECT_EQ(tree.slice(tree.comments[0].span), "//a");
  EXPECT_EQ(tree.slice(tree.comments[1].span), "/*b*/");
  EXPECT_EQ(tree.slice(tree.comments[2].span), "//c");
  EXPECT_FALSE(tree.comments[0].isBlock);
  EXPECT_TRUE(tree.comments[1].isBlock);
}

TEST(Parser, takes_a_byte_order_mark) { EXPECT_EQ(compact("\xEF\xBB\xBF[1]"), "[1]"); }

TEST(Parser, knows_the_places_of_values_and_names) {
  Findings findings;
  const Tree tree = parse("{ \"ab\": [ 10, \"x\" ] }", findings);
  ASSERT_TRUE(findings.empty());
  ASSERT_EQ(tree.nodes.size(), 4U);
  EXPECT_EQ(tree.node(0).span, (Span{.offset = 0, .length = 21}));
  EXPECT_EQ(tree.node(0).count, 1U);
  EXPECT_EQ(tree.node(0).name.length, 0U);
  const Node& list = tree.node(tree.node(0).firstChild);
  EXPECT_EQ(tree.slice(list.span), "[ 10, \"x\" ]");
  EXPECT_EQ(tree.slice(list.name), "\"ab\"");
  EXPECT_EQ(list.count, 2U);
  const Node& number = tree.node(list.firstChild);
  EXPECT_EQ(number.span, (Span{.offset = 10, .length = 2}));
  EXPECT_EQ(tree.slice(tree.node(number.next).span), "\"x\"");
  EXPECT_EQ(tree.node(number.next).next, kNoNode);
}

std::string stringIn(std::string_view text) {
  Findings findings;
  const Tree tree = parse(text, findings);
  return tree.nodes.empty() ? "" : stringOf(tree, tree.node(0));
}

TEST(StringOf, replaces_escapes) {
  EXPECT_EQ(stringIn(R"("a\"\\\/\b\f\n\r\tz")"), "a\"\\/\b\f\n\r\tz");
  EXPECT_EQ(stringIn(R"("\u0041\u00e4\u20AC")"), "A\xC3\xA4\xE2\x82\xAC");
  EXPECT_EQ(stringIn(R"("\u0000")"), std::string(1, '\0'));
}

TEST(StringOf, joins_surrogates_and_keeps_those_without_a_partner) {
  EXPECT_EQ(stringIn(R"("\ud83d\ude00")"), "\xF0\x9F\x98\x80");
  EXPECT_EQ(stringIn(R"("\ud83d")"), "\xED\xA0\xBD");
  EXPECT_EQ(stringIn(R"("\ud83dx\ude00")"), "\xED\xA0\xBDx\xED\xB8\x80");
  EXPECT_EQ(stringIn(R"("\ude00\ud83d")"), "\xED\xB8\x80\xED\xA0\xBD");
  EXPECT_EQ(stringIn(R"("\ud83d\ud83d\ude00")"), "\xED\xA0\xBD\xF0\x9F\x98\x80");
}

TEST(StringOf, leaves_out_what_is_broken) {
  EXPECT_EQ(stringIn("\"a\xFFz\""), "az");
  EXPECT_EQ(stringIn("\"\xC3\\n\""), "\n");
  EXPECT_EQ(stringIn("\"a\\xz\""), "axz");
  EXPECT_EQ(stringIn("\"abc"), "abc");
  EXPECT_EQ(stringIn("\""), "");
  EXPECT_EQ(stringIn("'abc'"), "abc");
}

TEST(NameOf, replaces_escapes) {
  Findings findings;
  const Tree tree = parse(R"({"\u0061b":1})", findings);
  EXPECT_EQ(nameOf(tree, tree.node(1)), "ab");
}

}  // namespace
}  // namespace documents
