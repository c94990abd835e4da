// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tool/lsp/json_rpc.h"

namespace test {
namespace {

using tool::lsp::Json;
using tool::lsp::parseMessage;

TEST(ParseMessage, takes_json) {
  EXPECT_EQ(parseMessage(R"({ "id": [1, "a\\\"\u00e4\n"] })"), (Json{{"id", {1, "a\\\"\xC3\xA4\n"}}}));
}

TEST(ParseMessage, refuses_what_is_no_json) {
  for (const std::string body : {"", "{", "{} {}", "{'a': 1}", "{\"a\": 1,}", "\"\xC3\"", "// a\n{}", "\"\\u12\""})
    EXPECT_FALSE(parseMessage(body)) << body;
}

TEST(ParseMessage, takes_half_a_surrogate_pair_for_a_character_that_nobody_knows) {
  const std::string unknown = "\xEF\xBF\xBD";
  EXPECT_EQ(parseMessage(R"("\ud83d")"), Json(unknown));
  EXPECT_EQ(parseMessage(R"("a\uDE00b")"), Json("a" + unknown + "b"));
  EXPECT_EQ(parseMessage(R"("\ud83d\ud83d\ude00")"), Json(unknown + "\xF0\x9F\x98\x80"));
  EXPECT_EQ(parseMessage(R"("\ud83d\n")"), Json(unknown + "\n"));
  EXPECT_EQ(parseMessage(R"("\\ud83d")"), Json("\\ud83d"));
  EXPECT_EQ(parseMessage(R"("\\\ud83d")"), Json("\\" + unknown));
  EXPECT_EQ(parseMessage(R"("\ud83d\ude00")"), Json("\xF0\x9F\x98\x80"));
}

TEST(ParseMessage, takes_64_levels) {
  const auto nested = [](std::size_t levels) { return std::string(levels, '[') + std::string(levels, ']'); };
  EXPECT_TRUE(parseMessage(nested(64)));
  EXPECT_FALSE(parseMessage(nested(65)));
  EXPECT_FALSE(parseMessage(nested(10'000'000)));
  EXPECT_TRUE(parseMessage('"' + std::string(100, '[') + '"'));
  EXPECT_TRUE(parseMessage(R"(["\")" + std::string(100, '{') + "\"]"));
}

TEST(PrintMessage, replaces_what_is_no_utf_8) {
  EXPECT_EQ(tool::lsp::printMessage(Json("a\xFF")), "\"a\xEF\xBF\xBD\"");
}

}  // namespace
}  // namespace test
