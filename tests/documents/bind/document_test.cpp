// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <string>

#include "documents/syntax/tree.h"
#include "tests/documents/findings/said.h"

namespace documents {
namespace {

constexpr char kPolicy[] = R"({"id": 1, "when": [{"Lid State": "Open"}]})";

std::string withPolicies(std::size_t count) {
  std::string list;
  for (std::size_t i = 1; i <= count; ++i) {
    if (i != 1) list += ',';
    list += R"({"id":)" + std::to_string(i) + R"(,"when":[{"Lid State":0}]})";
  }
  return R"({"policies":[)" + list + "]}";
}

TEST(Document, is_an_object_with_policies) {
  EXPECT_EQ(said("[]"), "P0013 error 1:1-3 a document cannot be a list: an object with \"policies\" is expected\n");
  EXPECT_EQ(said("{}"), "P0014 error 1:1-2 the document has no \"policies\": a list is expected\n");
  EXPECT_EQ(said(R"({"policies": {}})"),
            "P0013 error 1:14-16 policies: \"policies\" cannot be an object: a list is expected\n");
  EXPECT_EQ(said(R"({"policies": [5]})"),
            "P0013 error 1:15-16 policies[0]: a policy cannot be a number: an object is expected\n");
}

TEST(Document, may_name_its_schema) {
  const std::string document = R"({"$schema": {"any": ["thing"]}, "policies": [)" + std::string(kPolicy) + "]}";
  EXPECT_EQ(said(document), "");
}

TEST(Document, has_no_other_members) {
  EXPECT_EQ(said(R"({"polices": [], "policies": [)" + std::string(kPolicy) + "]}"),
            "P0015 error 1:2-11 \"polices\" is no member of a document: \"$schema\", \"version\" or \"policies\" is "
            "expected\n");
}

TEST(Document, takes_members_in_another_case) {
  const std::string document = R"({"Policies": [)" + std::string(kPolicy) + "]}";
  EXPECT_EQ(said(document), "P0020 error 1:2-12 \"Policies\" is written \"policies\"\n  certain: write \"policies\"\n");
  EXPECT_TRUE(readDocument(document).policies);
}

TEST(Document, does_not_take_a_member_twice_in_two_cases) {
  EXPECT_EQ(said(R"({"Policies": [], "policies": [)" + std::string(kPolicy) + "]}"),
            "P0015 error 1:2-12 \"Policies\" is no member of a document: \"$schema\", \"version\" or \"policies\" is "
            "expected\n");
}

TEST(Document, has_400_policies_at_most) {
  EXPECT_EQ(said(withPolicies(400)), "");
  const auto result = readDocument(withPolicies(401));
  ASSERT_EQ(result.findings.size(), 1U);
  EXPECT_EQ(result.findings[0].rule, Rule::kTooManyPolicies);
  EXPECT_EQ(result.findings[0].path, "policies[400]");
  EXPECT_EQ(result.findings[0].sentence, "401 policies: a policy binary has 400 at most");
  EXPECT_EQ(result.policies.value().policies.size(), 401U);
}

TEST(Document, without_a_record_that_holds_it_has_no_policies) {
  EXPECT_FALSE(readDocument(withMembers(R"("flag0": 256)")).policies);
  EXPECT_FALSE(readDocument(withCondition(R"({"Sun": 1})")).policies);
  EXPECT_TRUE(readDocument(withCondition(R"({"Power Source": 5})")).policies);
  EXPECT_TRUE(readDocument(withMembers(R"("sun": 1)")).policies);
}

TEST(Document, that_is_no_json_has_no_policies) {
  EXPECT_FALSE(readDocument(R"({"policies": [)" + std::string(kPolicy) + "}").policies);
  EXPECT_FALSE(readDocument("").policies);
}

TEST(Document, has_its_findings_in_the_order_of_their_places) {
  EXPECT_EQ(
      said("{\"policies\": [\n"
           "  {\"id\": 0, \"when\": []},\n"
           "  {\"id\": 0, \"when\": [{\"Lid State\": \"Ajar\"}] \"flag0\": 1},\n"
           "]}"),
      "P0105 warning 2:10-11 policies[0].id: the id 0 is that of records that were given none: a number from 1 to "
      "4294967295 is expected\n"
      "P0030 error 2:21-23 policies[0].when: the policy has no conditions: 1 to 15 are expected\n"
      "P0033 error 3:10-11 policies[1].id: 0 is the id of policies[0] already: one that no other policy has is "
      "expected\n"
      "P0105 warning 3:10-11 policies[1].id: the id 0 is that of records that were given none: a number from 1 to "
      "4294967295 is expected\n"
      "P0012 error 3:36-42 policies[1].when[0].value: \"Ajar\" is no option of \"Lid State\": \"Open\" (0) or "
      "\"Closed\" (1) is expected\n"
      "P0001 error 3:45-52 a comma or \"}\" is expected\n"
      "  certain: insert a comma\n");
}

TEST(Document, that_is_broken_is_checked_for_what_is_left) {
  EXPECT_EQ(said("{\"policies\": [{\"id\": 1, \"when\": [{\"Lid State\" \"Ajar\"}, {\"Sun\": }]}]}"),
            "P0001 error 1:47-53 a colon is expected\n"
            "  certain: insert a colon\n"
            "P0012 error 1:47-53 policies[0].when[0].value: \"Ajar\" is no option of \"Lid State\": \"Open\" (0) or "
            "\"Closed\" (1) is expected\n"
            "P0019 error 1:57-62 policies[0].when[1]: \"Sun\" is no condition: a name of the catalogue, or \"#\" and a "
            "number, is expected\n"
            "P0001 error 1:64-65 a value is expected\n");
}

TEST(Document, that_is_broken_does_not_lack_what_may_be_in_what_was_left_out) {
  for (const char* document : {"{\"policies\": [{: 1}]}", "{\"policies\": [{\"id\": 1, \"when\": [:]}]}", "{\"pol",
                               "{\"policies\": [{\"id\": 1, \"when\": [{\"Lid State\":", "{\"policies\": [", "{: []}",
                               "{\"policies\": [{\"id\": 1, \"when\": [{:}]}]}", "{\"policies\": [:]}",
                               "{\"policies\": [{\"id\": x, \"when\": [{\"Lid State\": y}]}]}"}) {
    for (const Finding& finding : readDocument(document).findings)
      EXPECT_LT(finding.rule, Rule::kNoSuchOption) << document << ": " << finding.sentence;
  }
}

TEST(Document, has_no_more_findings_than_there_is_room_for) {
  std::string list;
  for (int i = 0; i < 5000; ++i) list += "{\"id\": 1, \"when\": [{\"Pwr Surce\": \"DC\"}]},\n";
  const auto result = readDocument("{\"policies\": [" + list + "]}");
  ASSERT_EQ(result.findings.size(), kMostFindings);
  EXPECT_EQ(result.findings.back().rule, Rule::kTooManyFindings);
  EXPECT_FALSE(result.policies);
}

TEST(Document, that_no_record_holds_has_no_policies_even_where_nothing_is_said) {
  std::string list;
  for (int i = 0; i < 2000; ++i) list += "{\"id\": 1, \"when\": []},\n";
  EXPECT_FALSE(readDocument("{\"policies\": [" + list + "{\"id\": -1, \"when\": []}]}").policies);
  EXPECT_TRUE(readDocument("{\"policies\": [" + list + "{\"id\": 1, \"when\": []}]}").policies);
}

}  // namespace
}  // namespace documents
