// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "documents/schema/json_value.h"

namespace documents {
namespace {

JsonValue texts(std::size_t count, const std::string& text) {
  JsonValue list = JsonValue::list();
  for (std::size_t i = 0; i < count; ++i) list.add(JsonValue::text(text));
  return list;
}

TEST(JsonValueText, puts_in_one_line_what_fits) {
  const JsonValue value = JsonValue::object({{"a", JsonValue::number(-5)},
                                             {"b", JsonValue::list({JsonValue::text("c"), JsonValue::boolean(true)})},
                                             {"d", JsonValue::object()},
                                             {"e", JsonValue::list()}});
  EXPECT_EQ(value.laidOut(), "{ \"a\": -5, \"b\": [\"c\", true], \"d\": {}, \"e\": [] }\n");
}

TEST(JsonValueText, escapes_what_no_string_of_json_holds) {
  EXPECT_EQ(JsonValue::text("\"a\\b\n\x1f/").laidOut(), "\"\\\"a\\\\b\\u000a\\u001f/\"\n");
}

TEST(JsonValueText, puts_members_in_a_line_each_where_one_is_too_short) {
  const std::string text(50, 't');
  const JsonValue value = JsonValue::object(
      {{"first", JsonValue::text(text)}, {"second", JsonValue::object({{"third", JsonValue::text(text)}})}});
  EXPECT_EQ(value.laidOut(), "{\n  \"first\": \"" + text + "\",\n  \"second\": { \"third\": \"" + text + "\" }\n}\n");
}

TEST(JsonValueText, fills_the_lines_of_a_long_list_of_scalars) {
  const std::string text(37, 't');
  const std::string element = '"' + text + '"';
  EXPECT_EQ(texts(4, text).laidOut(),
            "[\n  " + element + ", " + element + ",\n  " + element + ", " + element + "\n]\n");
}

TEST(JsonValueText, fills_a_line_to_its_120th_character) {
  // Two for the indent, two elements of 58 and a comma behind each, one blank between them.
  const std::string fits(56, 't');
  EXPECT_NE(texts(3, fits).laidOut().find("\", \""), std::string::npos);
  EXPECT_EQ(texts(3, fits + 't').laidOut().find("\", \""), std::string::npos);
}

TEST(JsonValueText, leaves_room_for_the_comma_behind_a_value) {
  // With indent and quotes the inner list takes 120 characters: too many where a comma follows.
  const JsonValue inner = texts(2, std::string(55, 't'));
  const JsonValue two = JsonValue::list({inner, JsonValue::number(1)});
  const JsonValue one = JsonValue::list({JsonValue::number(1), inner});
  EXPECT_EQ(two.laidOut().substr(0, 9), "[\n  [\n   ");
  EXPECT_EQ(one.laidOut().substr(0, 12), "[\n  1,\n  [\"t");
}

TEST(JsonValueComparison, sees_kinds_names_and_order) {
  const JsonValue one = JsonValue::number(1);
  EXPECT_EQ(JsonValue::list({one}), JsonValue::list({one}));
  EXPECT_FALSE(JsonValue::list() == JsonValue::object());
  EXPECT_FALSE(JsonValue::text("1") == one);
  EXPECT_FALSE(JsonValue::object({{"a", one}}) == JsonValue::object({{"b", one}}));
  EXPECT_FALSE(JsonValue::object({{"a", one}, {"b", one}}) == JsonValue::object({{"b", one}, {"a", one}}));
}

}  // namespace
}  // namespace documents
