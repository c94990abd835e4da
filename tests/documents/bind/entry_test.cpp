// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/documents/findings/said.h"

namespace documents {
namespace {

TEST(Entries, have_fields_of_their_own) {
  const auto result = readDocument(withMembers(
      R"("do": [{"Fan Table Index": {"value": 3, "value2": 4, "value3": 5, "value4": 6, "option1": 7, "option2": 8, "option3": 255}}])"));
  EXPECT_TRUE(result.findings.empty());
  const VqsPolicyAction& action = result.policies.value().policies.at(0).actions.at(0);
  EXPECT_EQ(action.actionId, 1U);
  EXPECT_EQ(action.value, 3U);
  EXPECT_EQ(action.value2, 4U);
  EXPECT_EQ(action.value3, 5U);
  EXPECT_EQ(action.value4, 6U);
  EXPECT_EQ(action.option1, 7);
  EXPECT_EQ(action.option2, 8);
  EXPECT_EQ(action.option3, 255);
}

TEST(Entries, that_are_conditions_have_a_comparison) {
  const auto result = readDocument(withCondition(R"({"Skin Temperature": {"value2": 9, "op": 4, "value": 4600}})"));
  EXPECT_TRUE(result.findings.empty());
  const VqsPolicyCondition& condition = result.policies.value().policies.at(0).conditions.at(0);
  EXPECT_EQ(condition.conditionId, 6U);
  EXPECT_EQ(condition.op, 4U);
  EXPECT_EQ(condition.value, 4600U);
  EXPECT_EQ(condition.value2, 9U);
}

TEST(Entries, that_admit_one_comparison_have_it) {
  const auto result = readDocument(withCondition(R"({"Power Source": "DC Power"}, {"Lid State": {"op": 2}})"));
  EXPECT_TRUE(result.findings.empty());
  EXPECT_EQ(result.policies.value().policies.at(0).conditions.at(0).op, 2U);
  EXPECT_EQ(result.policies.value().policies.at(0).conditions.at(1).op, 2U);
}

TEST(Entries, of_unknown_numbers_are_kept) {
  const auto result = readDocument(withMembers(R"("do": [{"#4294967295": 7}])"), {.allowUnknown = true});
  EXPECT_EQ(result.policies.value().policies.at(0).actions.at(0).actionId, 0xFFFFFFFFU);
  EXPECT_EQ(said(withAction(R"({"#168": 7})")),
            "P0021 error 1:66-72 policies[0].do[0]: no action has the number 168: 0 to 167 are known\n");
}

TEST(Entries, of_unknown_numbers_take_numbers_and_comparisons) {
  const ReadOptions options{.allowUnknown = true};
  constexpr std::string_view kUnknown =
      "P0021 warning 1:35-40 policies[0].when[0]: no condition has the number 77: 0 to 72 are known\n";
  EXPECT_EQ(
      said(withCondition(R"({"#77": 1})"), options),
      std::string(kUnknown) +
          "P0025 error 1:42-43 policies[0].when[0].op: the comparison of \"#77\" is missing: \"op\" of 0, 1, 2, 3 or 4 "
          "is expected\n");
  EXPECT_EQ(
      said(withCondition(R"({"#77": {"op": 1, "value": "On"}})"), options),
      std::string(kUnknown) +
          "P0013 error 1:61-65 policies[0].when[0].value: \"value\" cannot be a string: a number from 0 to 4294967295 "
          "is expected\n");
}

TEST(Entries, of_known_numbers_are_better_named) {
  EXPECT_EQ(said(withAction(R"({"#2": 15000})")),
            "P0108 warning 1:66-70 policies[0].do[0]: action 2 has a name: \"SPL\" is expected\n"
            "  certain: write \"SPL\"\n");
}

TEST(Entries, have_a_number_that_a_record_holds) {
  EXPECT_EQ(said(withCondition(R"({"#4294967296": 1})")),
            "P0016 error 1:35-48 policies[0].when[0]: a condition's number goes from 0 to 4294967295\n");
}

TEST(Entries, are_found_by_name) {
  EXPECT_EQ(said(withCondition(R"({"BIOS Input": 1})")),
            "P0019 error 1:35-47 policies[0].when[0]: \"BIOS Input\" is no condition: perhaps \"BIOS Input 1\", \"BIOS "
            "Input 2\" or \"BIOS Input 3\" is meant\n"
            "  maybe: write \"BIOS Input 1\"\n"
            "  maybe: write \"BIOS Input 2\"\n"
            "  maybe: write \"BIOS Input 3\"\n");
  EXPECT_EQ(
      said(withCondition(R"({"Weather": 1})")),
      "P0019 error 1:35-44 policies[0].when[0]: \"Weather\" is no condition: a name of the catalogue, or \"#\" and a "
      "number, is expected\n");
  EXPECT_EQ(said(withAction(R"({"Power Source": 1})")),
            "P0019 error 1:66-80 policies[0].do[0]: \"Power Source\" is no action: it is a condition\n");
}

TEST(Entries, have_no_number_that_is_written_otherwise) {
  for (const char* name : {"#", "#-1", "#01", "#1.0", "#x", "# 1", "77"})
    EXPECT_TRUE(said(withCondition(R"({")" + std::string(name) + R"(": 1})")).starts_with("P0019 error")) << name;
}

TEST(Entries, of_one_object_are_written_apart) {
  EXPECT_EQ(said(withAction(R"({"SPL": 1 /* , */, "FPPT": 2, "SPPT": 3})")),
            "P0022 error 1:84-90 policies[0].do[0]: an action is an object of one member: this one has 3\n"
            "  certain: write an object for each\n");
}

TEST(Entries, beside_their_fields_are_not_guessed) {
  EXPECT_EQ(said(withCondition(R"({"Power Source": 1, "op": 2})")),
            "P0022 error 1:54-58 policies[0].when[0]: a condition is an object of one member: this one has 2\n");
}

TEST(Entries, are_objects) {
  EXPECT_EQ(said(withCondition("{}")),
            "P0022 error 1:34-35 policies[0].when[0]: a condition is an object of one member: this one has none\n");
  EXPECT_EQ(said(withCondition("\"Power Source\"")),
            "P0013 error 1:34-48 policies[0].when[0]: a condition cannot be a string: an object of one member is "
            "expected\n");
  EXPECT_EQ(said(withMembers(R"("do": {"SPL": 1})")),
            "P0013 error 1:64-74 policies[0].do: \"do\" cannot be an object: a list is expected\n");
}

TEST(Entries, admit_the_comparisons_of_the_catalogue) {
  EXPECT_EQ(
      said(withCondition(R"({"App State": {"op": 4, "value": 1}})")),
      "P0024 error 1:55-56 policies[0].when[0].op: \"App State\" does not admit comparison 4: 2 or 3 is expected\n");
  EXPECT_EQ(
      said(withCondition(R"({"App State": 1})")),
      "P0025 error 1:48-49 policies[0].when[0].op: the comparison of \"App State\" is missing: \"op\" of 2 or 3 is "
      "expected\n");
  EXPECT_EQ(said(withCondition(R"({"App State": {"op": 5, "value": 1}})")),
            "P0039 error 1:55-56 policies[0].when[0].op: 5 is no comparison: 2 or 3 is expected\n");
}

TEST(Entries, have_no_other_members) {
  EXPECT_EQ(said(withAction(R"({"SPL": {"value": 1, "option4": 2}})")),
            "P0015 error 1:86-95 policies[0].do[0]: \"option4\" is no member of an action: perhaps \"option1\", "
            "\"option2\" or \"option3\" is meant\n"
            "  maybe: write \"option1\"\n"
            "  maybe: write \"option2\"\n"
            "  maybe: write \"option3\"\n");
}

TEST(Entries, of_structure_version_0_have_a_value_alone) {
  const std::string document = withAction(R"({"SPL": {"value": 1, "option2": 2, "value4": 0}})");
  EXPECT_EQ(said(document, {.structureVersion = 0}),
            "P0042 error 1:97-98 policies[0].do[0].option2: an action of structure version 0 has no \"option2\": 0 is "
            "expected, or nothing\n");
  EXPECT_EQ(said(document, {.structureVersion = 1}), "");
}

}  // namespace
}  // namespace documents
