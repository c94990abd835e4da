// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "documents/documents.h"
#include "documents/editing/hover.h"
#include "tests/documents/editing/marked_text.h"

namespace test {
namespace {

using documents::Explanation;
using documents::Hover;
using Texts = std::vector<std::string>;

std::optional<Hover> hoverIn(const std::string& marked) {
  const MarkedText text{marked};
  return documents::hoverAt(text.text, text.offset, {});
}

/// The title and the detail of all that is said about a place.
Texts saidIn(const std::string& marked) {
  Texts said;
  if (const auto hover = hoverIn(marked))
    for (const auto& explanation : hover->explanations) said.push_back(explanation.title + ": " + explanation.detail);
  return said;
}

TEST(HoverAt, explains_conditions_and_actions) {
  EXPECT_EQ(saidIn(inWhen(R"({ "Power| Source": "AC Power" })")), Texts{"Power Source: condition 0, one of 2 options"});
  EXPECT_EQ(saidIn(inDo(R"({ |"SPL": 1 })")), Texts{"SPL: action 2, 0 to 4294967295, in mW"});
}

TEST(HoverAt, explains_options_by_text_and_by_number) {
  const Texts expected{R"(DC Power: 1, option of the condition "Power Source")"};
  EXPECT_EQ(saidIn(inWhen(R"({ "Power Source": "DC| Power" })")), expected);
  EXPECT_EQ(saidIn(inWhen(R"({ "Power Source": |1 })")), expected);
  EXPECT_EQ(saidIn(inWhen(R"({ "Power Source": { "value": 1| } })")), expected);
  EXPECT_EQ(saidIn(inWhen(R"({ "App State": [ "Full Screen|" ] })")),
            Texts{R"(Full Screen: 4, option of the condition "App State")"});
}

TEST(HoverAt, explains_what_a_value_that_is_no_option_has_to_be) {
  EXPECT_EQ(saidIn(inWhen(R"({ "Power Source": "Solar|" })")), Texts{"Power Source: condition 0, one of 2 options"});
  EXPECT_EQ(saidIn(inDo(R"({ "SPL": 150|00 })")), Texts{"SPL: action 2, 0 to 4294967295, in mW"});
}

TEST(HoverAt, explains_members) {
  const auto hover = hoverIn(R"({ "policies": [ { "id|": 1 } ] })");
  ASSERT_TRUE(hover);
  EXPECT_EQ(hover->span, (documents::Span{.offset = 18, .length = 4}));
  ASSERT_EQ(hover->explanations.size(), 1U);
  EXPECT_EQ(hover->explanations[0].title, "id");
  EXPECT_EQ(hover->explanations[0].detail, "a number from 0 to 4294967295");
  EXPECT_EQ(hover->explanations[0].paragraphs,
            Texts{"What the policy is known by: no two policies have the same. It is required."});
}

TEST(HoverAt, explains_findings_behind_what_stands_there) {
  const MarkedText text{inWhen(R"({ "Power Source": "So|lar" } ] } ] })")};
  const auto findings = documents::readDocument(text.text).findings;
  const auto hover = documents::hoverAt(text.text, text.offset, findings);
  ASSERT_TRUE(hover);
  ASSERT_EQ(hover->explanations.size(), 2U);
  EXPECT_EQ(hover->explanations[0].title, "Power Source");
  EXPECT_EQ(hover->explanations[1].title, "P0012");
  EXPECT_EQ(hover->explanations[1].detail, "no such option");
  EXPECT_FALSE(hover->explanations[1].paragraphs.front().empty());
}

TEST(HoverAt, has_the_place_of_a_finding_where_nothing_else_is) {
  const MarkedText text{R"({ "policies": [|] })"};
  const auto findings = documents::readDocument(text.text).findings;
  const auto hover = documents::hoverAt(text.text, text.offset, findings);
  ASSERT_TRUE(hover);
  EXPECT_EQ(hover->span, (documents::Span{.offset = 14, .length = 2}));
  ASSERT_EQ(hover->explanations.size(), 1U);
  EXPECT_EQ(hover->explanations[0].title, "P0031");
}

TEST(HoverAt, has_nothing_to_say_about_ones_own_texts_and_the_space_between) {
  for (const std::string& marked :
       {std::string{R"({ "policies": [ { "name": "a|" } ] })"}, std::string{"{ | }"}, std::string{"{ // |id\n }"},
        std::string{"|"}, inWhen(R"({ "Nothing|": 1 })"), inWhen(R"({ "Nothing": "a|" })")}) {
    EXPECT_EQ(saidIn(marked), Texts{}) << marked;
  }
}

}  // namespace
}  // namespace test
