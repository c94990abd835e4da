// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <string>

#include "tests/documents/findings/said.h"

namespace documents {
namespace {

TEST(Contradiction, is_of_two_options_of_one_enumeration) {
  EXPECT_EQ(
      said(withCondition(R"({"Lid State": 0}, {"Power Source": 0}, {"Lid State": "Closed"})")),
      "P0101 warning 1:74-85 policies[0].when[2]: \"Lid State\" cannot be \"Open\", as in when[0], and \"Closed\" at "
      "once\n");
}

TEST(Contradiction, is_none_where_the_comparison_or_the_kind_is_another) {
  EXPECT_EQ(said(withCondition(R"({"Lid State": 0}, {"Lid State": 0})")), "");
  EXPECT_EQ(said(withCondition(R"({"ASM Level": {"op": 1, "value": 2}}, {"ASM Level": {"op": 2, "value": 3}})")), "");
  EXPECT_EQ(said(withCondition(R"({"Socket Power": {"op": 2, "value": 2}}, {"Socket Power": {"op": 2, "value": 3}})")),
            "");
  EXPECT_EQ(said(withCondition(R"({"App State": {"op": 2, "value": 1}}, {"App State": {"op": 2, "value": 2}})")), "");
}

TEST(Contradiction, is_said_of_an_enumeration_that_admits_more_comparisons) {
  EXPECT_EQ(
      said(withCondition(R"({"ASM Level": {"op": 2, "value": 2}}, {"ASM Level": {"op": 2, "value": 3}})")),
      "P0101 warning 1:73-84 policies[0].when[1]: \"ASM Level\" cannot be \"Level 2\", as in when[0], and \"Level 3\" "
      "at once\n");
}

TEST(Contradiction, is_not_said_of_what_is_no_option) {
  EXPECT_EQ(
      said(withCondition(R"({"Lid State": 0}, {"Lid State": 5})")),
      "P0012 error 1:66-67 policies[0].when[1].value: 5 is no option of \"Lid State\": \"Open\" (0) or \"Closed\" (1) "
      "is expected\n");
}

TEST(ActionTwice, is_said_at_the_second) {
  EXPECT_EQ(said(withAction(R"({"SPL": 1}, {"FPPT": 2}, {"SPL": 1})")),
            "P0102 warning 1:91-96 policies[0].do[2]: \"SPL\" is set twice: by do[0] already\n");
}

TEST(ActionTwice, is_said_of_unknown_numbers_too) {
  EXPECT_EQ(said(withAction(R"({"#200": 1}, {"#200": 2})"), {.allowUnknown = true}),
            "P0021 warning 1:66-72 policies[0].do[0]: no action has the number 200: 0 to 167 are known\n"
            "P0021 warning 1:79-85 policies[0].do[1]: no action has the number 200: 0 to 167 are known\n"
            "P0102 warning 1:79-85 policies[0].do[1]: \"#200\" is set twice: by do[0] already\n");
}

std::string withTwo(const std::string& first, const std::string& second) {
  const std::string when = R"(, "when": [{"Lid State": 0}]})";
  return "{\"policies\": [\n{" + first + when + ",\n{" + second + when + "]}";
}

TEST(DuplicateId, is_said_at_the_second) {
  EXPECT_EQ(said(withTwo("\"id\": 7", "\"id\": 7")),
            "P0033 error 3:8-9 policies[1].id: 7 is the id of policies[0] already: one that no other policy has is "
            "expected\n");
}

TEST(DuplicateId, is_not_said_where_there_is_none) {
  EXPECT_EQ(said(withTwo("\"id\": 7", "\"id\": 8")), "");
  EXPECT_EQ(said(withTwo("\"flag0\": 7", "\"flag0\": 8")),
            "P0014 error 2:1-2 policies[0]: the policy has no \"id\": a number from 0 to 4294967295 is expected\n"
            "P0014 error 3:1-2 policies[1]: the policy has no \"id\": a number from 0 to 4294967295 is expected\n");
}

TEST(DuplicateName, is_said_at_the_second) {
  EXPECT_EQ(said(withTwo(R"("id": 7, "name": "Quiet")", R"("id": 8, "name": "Quiet")")),
            "P0103 warning 3:19-26 policies[1].name: \"Quiet\" is the name of policies[0] already\n");
  EXPECT_EQ(said(withTwo(R"("id": 7, "name": "Quiet")", R"("id": 8, "name": "quiet")")), "");
  EXPECT_EQ(said(withTwo(R"("id": 7, "name": "")", R"("id": 8, "name": "")")), "");
}

TEST(Duplicates, of_three_are_those_of_the_first) {
  const std::string when = R"(, "when": [{"Lid State": 0}]})";
  const std::string document =
      "{\"policies\": [{\"id\": 5" + when + ", {\"id\": 5" + when + ", {\"id\": 5" + when + "]}";
  const auto findings = readDocument(document).findings;
  ASSERT_EQ(findings.size(), 2U);
  EXPECT_EQ(findings[0].path, "policies[1].id");
  EXPECT_EQ(findings[1].path, "policies[2].id");
  EXPECT_EQ(findings[1].sentence, "5 is the id of policies[0] already: one that no other policy has is expected");
}

TEST(NoConditions, is_said_where_they_would_be) {
  EXPECT_EQ(said(R"({"policies": [{"id": 1}]})"),
            "P0030 error 1:15-16 policies[0].when: the policy has no conditions: 1 to 15 are expected\n");
  EXPECT_EQ(said(R"({"policies": [{"id": 1, "when": 5}]})"),
            "P0013 error 1:33-34 policies[0].when: \"when\" cannot be a number: a list is expected\n");
}

}  // namespace
}  // namespace documents
