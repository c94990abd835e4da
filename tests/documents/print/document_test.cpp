// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "documents/documents.h"
#include "documents/print/listing.h"
#include "tests/documents/policies/models.h"

namespace documents {
namespace {

VqsPolicyAction action(std::uint32_t id, std::uint32_t value, std::uint8_t option1 = 0) {
  VqsPolicyAction action{};
  action.actionId = id;
  action.value = value;
  action.option1 = option1;
  return action;
}

Policy quietPolicy() {
  auto policy = namedPolicy(10, u"Quiet on battery");
  policy.description = "low power, low noise";
  policy.conditions = {{0, 2, 1, 0}, {1, 2, 2, 0}, {14, 2, 5, 0}};
  policy.actions = {action(2, 15000), action(0, 1)};
  policy.texts = {{.text = u"teams.exe", .flag = 0}, {.text = u"obs64.exe", .flag = 1}};
  policy.flag0 = 1;
  return policy;
}

PolicySet setOf(std::vector<Policy> policies) {
  return {.version1 = 0, .version2 = 0, .policies = std::move(policies)};
}

/// The line of a document that a member stands on, without its indentation and comma.
std::string memberOf(const std::string& document, const std::string& name) {
  const auto start = document.find("\"" + name + "\": ");
  const auto end = document.find('\n', start);
  if (start == std::string::npos || end == std::string::npos) return {};
  auto line = document.substr(start, end - start);
  if (line.ends_with(',')) line.pop_back();
  return line;
}

TEST(PrintDocument, writes_the_canonical_form) {
  auto second = namedPolicy(20, u"");
  second.flag0 = 1;
  second.flag1 = 2;
  second.flag2 = 3;
  second.param0 = 4;
  second.param1 = 5;
  second.param2 = 4294967295;
  EXPECT_EQ(printDocument({.version1 = 3, .version2 = 41, .policies = {quietPolicy(), second}}),
            R"({
  "version": "3.41",
  "policies": [
    {
      "id": 10,
      "name": "Quiet on battery",
      "description": "low power, low noise",
      "when": [
        { "Power Source": "DC Power" },
        { "Power Mode": "Balanced" },
        { "App State": { "op": 2, "value": ["Foreground", "Full Screen"] } }
      ],
      "do": [
        { "SPL": 15000 },
        { "Fan Mode": "Manual" }
      ],
      "texts": ["teams.exe", { "text": "obs64.exe", "flag": 1 }],
      "flag0": 1
    },
    {
      "id": 20,
      "flag0": 1,
      "flag1": 2,
      "flag2": 3,
      "param0": 4,
      "param1": 5,
      "param2": 4294967295
    }
  ]
}
)");
}

TEST(PrintDocument, leaves_out_what_is_zero_or_empty) {
  EXPECT_EQ(printDocument({}), "{\n  \"policies\": []\n}\n");
  EXPECT_EQ(printDocument(setOf({Policy{}})), "{\n  \"policies\": [\n    {\n      \"id\": 0\n    }\n  ]\n}\n");
  EXPECT_EQ(memberOf(printDocument({.version1 = 0, .version2 = 65535, .policies = {}}), "version"),
            R"("version": "0.65535")");
}

TEST(PrintDocument, gives_long_texts_a_line_each) {
  auto policy = namedPolicy(1, u"a");
  policy.texts = {{.text = std::u16string(80, u'x'), .flag = 0}, {.text = std::u16string(80, u'y'), .flag = 1}};
  EXPECT_EQ(printDocument(setOf({policy})),
            "{\n  \"policies\": [\n    {\n      \"id\": 1,\n      \"name\": \"a\",\n      \"texts\": [\n        \"" +
                std::string(80, 'x') + "\",\n        { \"text\": \"" + std::string(80, 'y') +
                "\", \"flag\": 1 }\n      ]\n    }\n  ]\n}\n");
}

TEST(PrintDocument, keeps_every_unit_of_a_name) {
  const struct {
    std::u16string name;
    const char* member;
  } cases[] = {
      {u"caf\u00E9 \u6F22 \U0001F600", "\"name\": \"caf\xC3\xA9 \xE6\xBC\xA2 \xF0\x9F\x98\x80\""},
      {{0xD800, u'a'}, R"("name": "\uD800a")"},
      {{0xDFFF, 0xD83D}, R"("name": "\uDFFF\uD83D")"},
      {{0xDC00, 0xD83D, 0xDE00}, "\"name\": \"\\uDC00\xF0\x9F\x98\x80\""},
      {u"\"\\/\b\f\n\r\t", R"("name": "\"\\/\b\f\n\r\t")"},
      {{1, 0x1B, 0x1F, 0x7F, 0x80, 0x9F, 0xA0}, "\"name\": \"\\u0001\\u001B\\u001F\\u007F\\u0080\\u009F\xC2\xA0\""},
  };
  for (const auto& [name, member] : cases)
    EXPECT_EQ(memberOf(printDocument(setOf({namedPolicy(1, name)})), "name"), member);
}

TEST(PrintDocument, keeps_every_byte_of_a_description) {
  const struct {
    std::string description;
    const char* member;
  } cases[] = {
      {"caf\xC3\xA9\x7F", "\"description\": \"caf\xC3\xA9\\u007F\""},
      {"caf\xE9 \xFF\x80", R"("description": "caf\udce9 \udcff\udc80")"},
      {"\xED\xA0\x80", R"("description": "\udced\udca0\udc80")"},
      {"\xC3", R"("description": "\udcc3")"},
      {"\x01\"", R"("description": "\u0001\"")"},
  };
  for (const auto& [description, member] : cases) {
    auto policy = namedPolicy(1, u"");
    policy.description = description;
    EXPECT_EQ(memberOf(printDocument(setOf({policy})), "description"), member);
  }
}

TEST(PrintDocument, is_left_alone_by_the_formatter) {
  for (const char* name : {"laptop-r3.json", "laptop-r4.json", "laptop-r5.json", "limits-r5.json", "wide-r5.json"}) {
    const auto document = printDocument(sampleSet(name));
    EXPECT_EQ(formatDocument(document).text, document) << name;
  }
}

TEST(Listed, has_a_policy_in_pieces) {
  const auto shown = listed(quietPolicy());
  EXPECT_EQ(shown.id, 10U);
  EXPECT_EQ(shown.name, "Quiet on battery");
  EXPECT_EQ(shown.description, "low power, low noise");
  EXPECT_EQ(shown.conditions, (std::vector<std::string>{"Power Source is DC Power", "Power Mode is Balanced",
                                                        "App State op 2: Foreground, Full Screen"}));
  EXPECT_EQ(shown.actions, (std::vector<std::string>{"SPL 15000 mW", "Fan Mode Manual"}));
  EXPECT_EQ(shown.texts, (std::vector<std::string>{"teams.exe", "obs64.exe"}));
  EXPECT_EQ(shown.textFlags, (std::vector<std::uint8_t>{0, 1}));
  EXPECT_EQ(shown.others, (std::vector<std::string>{"flag0 1"}));
}

}  // namespace
}  // namespace documents
