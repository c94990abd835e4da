// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "documents/editing/cursor.h"
#include "tests/documents/editing/marked_text.h"

namespace test {
namespace {

using documents::Cursor;
using documents::Scope;
using documents::WordKind;
using Part = documents::Cursor::Part;

Cursor cursorIn(const std::string& marked) {
  const MarkedText text{marked};
  return documents::cursorAt(text.text, text.offset);
}

struct ScopeCase {
  std::string marked;
  Scope scope;
  Part part;
};

TEST(CursorAt, knows_what_the_list_or_object_around_a_place_is) {
  const std::vector<ScopeCase> cases = {
      {"{ |", Scope::kDocument, Part::kName},
      {R"({ "version": |)", Scope::kDocument, Part::kValue},
      {R"({ "policies": [ |)", Scope::kPolicies, Part::kValue},
      {R"({ "policies": [ { | } ] })", Scope::kPolicy, Part::kName},
      {R"({ "policies": [ { "id": 1, "|)", Scope::kPolicy, Part::kName},
      {inWhen("|"), Scope::kEntries, Part::kValue},
      {inWhen("{ |"), Scope::kEntry, Part::kName},
      {inWhen(R"({ "Power Source": |)"), Scope::kEntry, Part::kValue},
      {inWhen(R"({ "Power Source": "|" })"), Scope::kEntry, Part::kValue},
      {inWhen(R"({ "Skin Temperature": { |)"), Scope::kFields, Part::kName},
      {inWhen(R"({ "Skin Temperature": { "op": | } })"), Scope::kFields, Part::kValue},
      {inWhen(R"({ "App State": [ | ] })"), Scope::kOptions, Part::kValue},
      {inWhen(R"({ "App State": { "op": 2, "value": [ "|" ] } })"), Scope::kOptions, Part::kValue},
      {R"({ "policies": [ { "texts": [ |)", Scope::kTexts, Part::kValue},
      {R"({ "policies": [ { "texts": [ "a", { |)", Scope::kText, Part::kName},
      {"[ |", Scope::kNone, Part::kValue},
      {R"({ "other": { |)", Scope::kNone, Part::kName}};
  for (const auto& [marked, scope, part] : cases) {
    const Cursor cursor = cursorIn(marked);
    EXPECT_EQ(cursor.scope, scope) << marked;
    EXPECT_EQ(cursor.part, part) << marked;
  }
}

TEST(CursorAt, is_for_nothing_where_nothing_can_be_written) {
  for (const std::string marked : {"|", "| {", "{} |", R"({ "id" | })", R"({ "id": 1 | })", "{ // | \n}", "{ // |",
                                   "{ /* | */ }", "{ /* |", R"({ "policies": [ {} | ] })"}) {
    EXPECT_EQ(cursorIn(marked).part, Part::kNone) << marked;
  }
}

TEST(CursorAt, goes_on_behind_comments) {
  EXPECT_EQ(cursorIn("{ /* */| }").part, Part::kName);
  EXPECT_EQ(cursorIn("{ // }\n | }").part, Part::kName);
}

TEST(CursorAt, tells_conditions_from_actions) {
  EXPECT_EQ(cursorIn(inWhen("{ |")).kind, WordKind::kCondition);
  EXPECT_EQ(cursorIn(inDo("{ |")).kind, WordKind::kAction);
  EXPECT_EQ(cursorIn(inDo(R"({ "SPL": { |)")).kind, WordKind::kAction);
}

TEST(CursorAt, knows_the_type_that_a_value_is_of) {
  for (const std::string& marked :
       {inWhen(R"({ "Power Source": |)"), inWhen(R"({ "Power Source": "DC| )"), inWhen(R"({ "power source": |)"),
        inWhen(R"({ "Power Source": { "value": | } })"), inWhen(R"({ "Power Source": [ "|" ] })"),
        inWhen(R"({ "Power Source": { "value": [ |)")}) {
    const Cursor cursor = cursorIn(marked);
    ASSERT_NE(cursor.word, nullptr) << marked;
    EXPECT_EQ(cursor.word->name, "Power Source") << marked;
  }
  EXPECT_EQ(cursorIn(inWhen(R"({ "Nothing": |)")).word, nullptr);
  EXPECT_EQ(cursorIn(inDo(R"({ "Power Source": |)")).word, nullptr);
}

TEST(CursorAt, takes_a_string_with_both_quotes_whole) {
  const Cursor cursor = cursorIn(R"({ "ver|sion": "1.0" })");
  EXPECT_EQ(cursor.span, (documents::Span{.offset = 2, .length = 9}));
  EXPECT_EQ(cursor.member, "version");
  EXPECT_TRUE(cursor.isString);
  EXPECT_TRUE(cursor.isClosed);
  EXPECT_TRUE(cursor.hasColon);
}

TEST(CursorAt, takes_a_string_without_an_end_up_to_the_place) {
  for (const std::string marked : {R"({ "ver|)", "{ \"ver|\n}", R"({ "ver| })", R"({ "ver| }, { "SPL": 1 })"}) {
    const Cursor cursor = cursorIn(marked);
    EXPECT_EQ(cursor.span, (documents::Span{.offset = 2, .length = 4})) << marked;
    EXPECT_EQ(cursor.member, "ver") << marked;
    EXPECT_TRUE(cursor.isString) << marked;
    EXPECT_FALSE(cursor.isClosed) << marked;
    EXPECT_FALSE(cursor.hasColon) << marked;
  }
}

TEST(CursorAt, takes_a_word_without_quotes_whole) {
  for (const std::string marked : {"{ ver|sion: 1 }", "{ version|: 1 }", "{ |version: 1 }"}) {
    const Cursor cursor = cursorIn(marked);
    EXPECT_EQ(cursor.span, (documents::Span{.offset = 2, .length = 7})) << marked;
    EXPECT_EQ(cursor.member, "version") << marked;
    EXPECT_EQ(cursor.part, Part::kName) << marked;
    EXPECT_FALSE(cursor.isString) << marked;
  }
}

TEST(CursorAt, knows_the_other_names_of_an_object_before_and_behind_the_place) {
  using Names = std::vector<std::string>;
  EXPECT_EQ(
      cursorIn(R"({ "policies": [ { "id": 1, |, "when": [ { "SPL": 1 } ], "name": "id" } ], "version": 1 })").others,
      (Names{"id", "when", "name"}));
  EXPECT_EQ(cursorIn(R"({ "a": { "b": 1 }, "|x": 2, "c": [ "d" ] })").others, (Names{"a", "c"}));
  EXPECT_EQ(cursorIn(inWhen(R"({ "App State": [ "Foreground", |, "Full Screen" ] })")).others,
            (Names{"Foreground", "Full Screen"}));
}

TEST(CursorAt, goes_on_where_brackets_do_not_match) {
  EXPECT_EQ(cursorIn(R"({ "policies": [ { "when": [ { "Power Source": ], "do": [ { |)").scope, Scope::kEntry);
  EXPECT_EQ(cursorIn(R"({ "policies": [ { "when": [ { "Power Source": ], "do": [ { |)").kind, WordKind::kAction);
  EXPECT_EQ(cursorIn(R"({ ] "policies": [ |)").scope, Scope::kPolicies);
  EXPECT_EQ(cursorIn(R"({ "policies": [ { "id": 1 "|" } ] })").part, Part::kName);
}

TEST(CursorAt, looks_at_any_depth_without_taking_much_for_it) {
  std::string deep(1 << 20, '[');
  deep += '|';
  EXPECT_EQ(cursorIn(deep).scope, Scope::kNone);
  EXPECT_EQ(documents::cursorAt("{ ", 1000).part, Part::kName);
}

TEST(Unquoted, takes_the_quotes_that_are_there) {
  EXPECT_EQ(documents::unquoted(R"("ab")"), "ab");
  EXPECT_EQ(documents::unquoted(R"("ab)"), "ab");
  EXPECT_EQ(documents::unquoted("ab"), "ab");
  EXPECT_EQ(documents::unquoted("\""), "");
  EXPECT_EQ(documents::unquoted(""), "");
}

}  // namespace
}  // namespace test
