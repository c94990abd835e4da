// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "documents/print/print.h"

namespace documents {
namespace {

VqsPolicyAction action(std::uint32_t id, std::uint32_t value) {
  VqsPolicyAction action{};
  action.actionId = id;
  action.value = value;
  return action;
}

/// A value of its own in every field.
VqsPolicyAction fullAction(std::uint32_t id) {
  auto full = action(id, 3);
  full.value2 = 4;
  full.value3 = 5;
  full.value4 = 4294967295;
  full.option1 = 1;
  full.option2 = 255;
  full.option3 = 2;
  return full;
}

struct Shown {
  VqsPolicyCondition condition;
  const char* entry;
  const char* words;
};

constexpr Shown kConditions[] = {
    {{0, 2, 1, 0}, R"({ "Power Source": "DC Power" })", "Power Source is DC Power"},
    // no option, another comparison, a second value
    {{0, 2, 7, 0}, R"({ "Power Source": 7 })", "Power Source is 7"},
    {{0, 3, 1, 0}, R"({ "Power Source": { "op": 3, "value": "DC Power" } })", "Power Source op 3: DC Power"},
    {{0, 2, 1, 9},
     R"({ "Power Source": { "value": "DC Power", "value2": 9 } })",
     "Power Source is DC Power (value2 9)"},
    // several comparisons
    {{14, 2, 5, 0},
     R"({ "App State": { "op": 2, "value": ["Foreground", "Full Screen"] } })",
     "App State op 2: Foreground, Full Screen"},
    {{14, 3, 32, 0}, R"({ "App State": { "op": 3, "value": ["Decode"] } })", "App State op 3: Decode"},
    {{14, 2, 65, 0}, R"({ "App State": { "op": 2, "value": 65 } })", "App State op 2: 65"},
    {{14, 2, 0, 0}, R"({ "App State": { "op": 2, "value": 0 } })", "App State op 2: 0"},
    {{19, 4, 4294967295, 0}, R"({ "Mouse Count": { "op": 4, "value": 4294967295 } })", "Mouse Count op 4: 4294967295"},
    // with a sign, with units
    {{24, 1, 4294967295, 0}, R"({ "Battery Drain Rate": { "op": 1, "value": -1 } })", "Battery Drain Rate op 1: -1 mW"},
    {{24, 1, 2147483648, 0},
     R"({ "Battery Drain Rate": { "op": 1, "value": -2147483648 } })",
     "Battery Drain Rate op 1: -2147483648 mW"},
    {{6, 3, 4600, 0}, R"({ "Skin Temperature": { "op": 3, "value": 4600 } })", "Skin Temperature op 3: 4600 centi-C"},
    // options that are no values
    {{13, 2, 1, 0}, R"({ "App Detection": 1 })", "App Detection is 1"},
    {{45, 2, 0, 0}, R"({ "Reg key": 0 })", "Reg key is 0"},
    // unknown
    {{77777, 2, 1, 0}, R"({ "#77777": { "op": 2, "value": 1 } })", "#77777 op 2: 1"},
    {{4294967295, 0, 0, 0}, R"({ "#4294967295": { "op": 0, "value": 0 } })", "#4294967295 op 0: 0"},
};

TEST(DocumentEntry, has_a_condition_in_the_shortest_form_that_says_all_of_it) {
  for (const auto& [condition, entry, words] : kConditions) EXPECT_EQ(documentEntry(condition), entry);
}

TEST(InWords, reads_a_condition_out) {
  for (const auto& [condition, entry, words] : kConditions) EXPECT_EQ(inWords(condition), words);
}

TEST(DocumentEntry, has_an_action_in_the_shortest_form_that_says_all_of_it) {
  EXPECT_EQ(documentEntry(action(2, 15000)), R"({ "SPL": 15000 })");
  EXPECT_EQ(documentEntry(action(0, 1)), R"({ "Fan Mode": "Manual" })");
  EXPECT_EQ(documentEntry(action(0, 2)), R"({ "Fan Mode": 2 })");
  EXPECT_EQ(documentEntry(action(53, 5)), R"({ "Taskbar Icon Colour": "Blue" })");
  EXPECT_EQ(documentEntry(action(99999, 2)), R"({ "#99999": 2 })");
  EXPECT_EQ(documentEntry(fullAction(2)),
            R"({ "SPL": { "value": 3, "value2": 4, "value3": 5, "value4": 4294967295, "option1": 1, )"
            R"("option2": 255, "option3": 2 } })");
  auto one = action(0, 0);
  one.option1 = 1;
  EXPECT_EQ(documentEntry(one), R"({ "Fan Mode": { "value": "Auto", "option1": 1 } })");
}

TEST(InWords, reads_an_action_out) {
  EXPECT_EQ(inWords(action(2, 15000)), "SPL 15000 mW");
  EXPECT_EQ(inWords(action(0, 1)), "Fan Mode Manual");
  EXPECT_EQ(inWords(action(0, 2)), "Fan Mode 2");
  EXPECT_EQ(inWords(action(99999, 2)), "#99999 2");
  EXPECT_EQ(inWords(fullAction(2)),
            "SPL 3 mW (value2 4, value3 5, value4 4294967295, option1 1, option2 255, option3 2)");
}

TEST(Readable, replaces_what_is_no_text) {
  EXPECT_EQ(readable(std::u16string{u"a\x00E9\xD83D\xDE00"}), "a\xC3\xA9\xF0\x9F\x98\x80");
  EXPECT_EQ(readable(std::u16string{0xDE00, u'b', 0xD83D}),
            "\xEF\xBF\xBD"
            "b"
            "\xEF\xBF\xBD");
  EXPECT_EQ(readable(std::string_view{"a\xC3\xA9\x1B"}), "a\xC3\xA9\x1B");
  EXPECT_EQ(readable(std::string_view{"\xC3"
                                      "b\xFF\xED\xA0\x80"}),
            "\xEF\xBF\xBD"
            "b\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD");
}

}  // namespace
}  // namespace documents
