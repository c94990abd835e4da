// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <string>

#include "tests/documents/findings/said.h"

namespace documents {
namespace {

/// The value that the one condition of a document has, or the one action; nothing is to be said about it.
std::uint32_t conditionValue(const std::string& condition) {
  const auto result = readDocument(withCondition(condition));
  EXPECT_EQ(said(withCondition(condition)), "");
  return result.policies.value().policies.at(0).conditions.at(0).value;
}
std::uint32_t actionValue(const std::string& action) {
  const auto result = readDocument(withAction(action));
  EXPECT_EQ(said(withAction(action)), "");
  return result.policies.value().policies.at(0).actions.at(0).value;
}

TEST(Values, are_options_by_their_texts_or_numbers) {
  EXPECT_EQ(conditionValue(R"({"Power Source": "DC Power"})"), 1U);
  EXPECT_EQ(conditionValue(R"({"Power Source": 1})"), 1U);
  EXPECT_EQ(conditionValue(R"({"Power Source": {"value": "AC Power"}})"), 0U);
  EXPECT_EQ(actionValue(R"({"Fan Mode": "Manual"})"), 1U);
}

TEST(Values, are_options_outside_of_the_range_too) {
  EXPECT_EQ(conditionValue(R"({"Display Type": "Uninit"})"), 0xFFFFFFFEU);
  EXPECT_EQ(conditionValue(R"({"Display Type": 4294967295})"), 0xFFFFFFFFU);
  EXPECT_EQ(conditionValue(R"({"Display Type": "Internal"})"), 0x80000000U);
}

TEST(Values, are_all_options_of_one_number) {
  EXPECT_EQ(said(withAction(R"({"Taskbar Icon Colour": "Pink"})")),
            "P0104 warning 1:66-87 policies[0].do[0]: \"Taskbar Icon Colour\" is not enabled in the catalogue\n");
  const auto result = readDocument(withAction(R"({"Taskbar Icon Colour": "Pink"})"));
  EXPECT_EQ(result.policies.value().policies.at(0).actions.at(0).value, 5U);
}

TEST(Values, are_sets_of_options) {
  EXPECT_EQ(conditionValue(R"({"App State": {"op": 2, "value": ["Foreground", "Full Screen"]}})"), 5U);
  EXPECT_EQ(conditionValue(R"({"App State": {"op": 2, "value": "Encode"}})"), 16U);
  EXPECT_EQ(conditionValue(R"({"App State": {"op": 3, "value": 63}})"), 63U);
  EXPECT_EQ(conditionValue(R"({"App State": {"op": 3, "value": []}})"), 0U);
  EXPECT_EQ(conditionValue(R"({"App State": {"op": 3, "value": [1, "Decode"]}})"), 33U);
}

TEST(Values, are_numbers_at_the_ends_of_their_ranges) {
  EXPECT_EQ(conditionValue(R"({"Skin Temperature": {"op": 0, "value": 0}})"), 0U);
  EXPECT_EQ(conditionValue(R"({"Skin Temperature": {"op": 0, "value": 4294967295}})"), 0xFFFFFFFFU);
  EXPECT_EQ(actionValue(R"({"QTF SPPT TC": 1})"), 1U);
  EXPECT_EQ(actionValue(R"({"QTF SPPT TC": 300})"), 300U);
}

TEST(Values, have_a_sign_where_the_kind_has_one) {
  EXPECT_EQ(conditionValue(R"({"Battery Drain Rate": {"op": 0, "value": -1}})"), 0xFFFFFFFFU);
  EXPECT_EQ(conditionValue(R"({"Battery Drain Rate": {"op": 0, "value": -2147483648}})"), 0x80000000U);
  EXPECT_EQ(conditionValue(R"({"Battery Drain Rate": {"op": 0, "value": 2147483647}})"), 0x7FFFFFFFU);
}

TEST(Values, of_templates_are_numbers) {
  EXPECT_EQ(conditionValue(R"({"App Detection": 0})"), 0U);
  EXPECT_EQ(conditionValue(R"({"Reg key": 4294967295})"), 0xFFFFFFFFU);
  EXPECT_EQ(said(withCondition(R"({"App Detection": "<Application Name>.exe"})")),
            "P0013 error 1:52-76 policies[0].when[0].value: the value of \"App Detection\" cannot be a string: 0 is "
            "expected\n");
}

TEST(Values, that_are_no_option_are_refused) {
  EXPECT_EQ(
      said(withCondition(R"({"Power Source": "Wall"})")),
      "P0012 error 1:51-57 policies[0].when[0].value: \"Wall\" is no option of \"Power Source\": \"AC Power\" (0) "
      "or \"DC Power\" (1) is expected\n");
  EXPECT_EQ(said(withCondition(R"({"Power Source": "DC Powr"})")),
            "P0012 error 1:51-60 policies[0].when[0].value: \"DC Powr\" is no option of \"Power Source\": \"AC Power\" "
            "(0) or \"DC Power\" (1) is expected\n"
            "  maybe: write \"DC Power\"\n");
  EXPECT_EQ(
      said(withCondition(R"({"Power Source": "1"})")),
      "P0012 error 1:51-54 policies[0].when[0].value: \"1\" is no option of \"Power Source\": \"AC Power\" (0) or "
      "\"DC Power\" (1) is expected\n"
      "  certain: write 1\n");
}

TEST(Values, in_the_range_that_are_no_option_are_refused) {
  EXPECT_EQ(
      said(withCondition(R"({"NPU Workload Type": 3})")),
      "P0012 error 1:56-57 policies[0].when[0].value: 3 is no option of \"NPU Workload Type\": \"Best Effort\" (1) "
      "or \"Real-time\" (2) is expected\n");
}

TEST(Values, below_zero_are_refused_where_the_option_is_meant) {
  EXPECT_EQ(said(withCondition(R"({"NPU Workload Type": -1})")),
            "P0016 error 1:56-58 policies[0].when[0].value: the value of \"NPU Workload Type\" cannot be -1: \"Best "
            "Effort\" (1) or \"Real-time\" (2) is expected\n");
  EXPECT_TRUE(said(withCondition(R"({"Display Type": -2})")).ends_with("\n  certain: write \"Uninit\"\n"));
}

TEST(Values, in_another_case_are_mended) {
  EXPECT_EQ(said(withCondition(R"({"Power Source": "dc power"})")),
            "P0020 error 1:51-61 policies[0].when[0].value: \"dc power\" is written \"DC Power\"\n"
            "  certain: write \"DC Power\"\n");
  EXPECT_EQ(readDocument(withCondition(R"({"Power Source": "dc power"})")).policies->policies[0].conditions[0].value,
            1U);
}

TEST(Values, out_of_their_range_are_refused_and_kept) {
  EXPECT_EQ(
      said(withAction(R"({"QTF SPPT TC": 301})")),
      "P0023 error 1:81-84 policies[0].do[0].value: 301 is out of the range of \"QTF SPPT TC\": a number from 1 to "
      "300, in 100ms, is expected\n");
  EXPECT_EQ(readDocument(withAction(R"({"QTF SPPT TC": 301})")).policies->policies[0].actions[0].value, 301U);
  EXPECT_EQ(said(withAction(R"({"QTF SPPT TC": {"value2": 7}})")),
            "P0023 error 1:81-82 policies[0].do[0].value: 0 is out of the range of \"QTF SPPT TC\": a number from 1 to "
            "300, in 100ms, is expected\n");
}

TEST(Values, of_the_signed_kind_are_held_in_32_bits) {
  EXPECT_EQ(
      said(withCondition(R"({"Battery Drain Rate": {"op": 0, "value": 2147483648}})")),
      "P0016 error 1:76-86 policies[0].when[0].value: the value of \"Battery Drain Rate\" cannot be 2147483648: a "
      "number from -2147483648 to 2147483647, in mW, is expected\n");
}

constexpr char kAppState[] =
    "a list of \"Foreground\" (1), \"Background\" (2), \"Full Screen\" (4), \"Windowed\" (8), \"Encode\" (16) or "
    "\"Decode\" (32) is expected\n";

TEST(Values, of_sets_have_the_options_bits_only) {
  EXPECT_EQ(
      said(withCondition(R"({"App State": {"op": 2, "value": 64}})")),
      std::string("P0026 error 1:67-69 policies[0].when[0].value: 64 has bits that no option of \"App State\" has: ") +
          kAppState);
  EXPECT_EQ(
      said(withCondition(R"({"App State": {"op": 2, "value": ["Encode", "Window"]}})")),
      std::string("P0012 error 1:78-86 policies[0].when[0].value[1]: \"Window\" is no option of \"App State\": ") +
          kAppState + "  maybe: write \"Windowed\"\n");
  EXPECT_EQ(
      said(withCondition(R"({"App State": {"op": 2, "value": [null]}})")),
      "P0013 error 1:68-72 policies[0].when[0].value[0]: an option of \"App State\" cannot be null: its text or its "
      "number is expected\n");
}

TEST(Values, that_are_lists_are_of_sets_only) {
  EXPECT_EQ(said(withCondition(R"({"Power Source": ["DC Power"]})")),
            "P0013 error 1:51-63 policies[0].when[0].value: the value of \"Power Source\" cannot be a list: \"AC "
            "Power\" (0) or \"DC Power\" (1) is expected\n");
}

TEST(Values, that_no_catalogue_knows_may_be_allowed) {
  const ReadOptions options{.allowUnknown = true};
  for (const char* condition : {R"({"Power Source": 77})", R"({"App State": {"op": 2, "value": 64}})",
                                R"({"#77": {"op": 1, "value": 4294967295}})"}) {
    const auto result = readDocument(withCondition(condition), options);
    ASSERT_EQ(result.findings.size(), 1U) << condition;
    EXPECT_EQ(result.findings[0].severity, Severity::kWarning) << condition;
    EXPECT_TRUE(result.policies) << condition;
  }
}

TEST(Values, that_nobody_could_mean_are_not_allowed) {
  const ReadOptions options{.allowUnknown = true};
  for (const char* condition :
       {R"({"Power Source": "Wall"})", R"({"Sun": 1})", R"({"NPU Column": {"op": 0, "value": 8}})"})
    EXPECT_TRUE(hasErrors(readDocument(withCondition(condition), options).findings)) << condition;
}

}  // namespace
}  // namespace documents
