// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "documents/documents.h"
#include "documents/editing/symbols.h"
#include "tests/documents/editing/marked_text.h"

namespace test {
namespace {

using documents::EntrySymbol;
using documents::Span;

documents::Tree treeOf(const std::string& text) {
  documents::Findings findings;
  return documents::parse(text, findings);
}

std::optional<std::uint32_t> idIn(const std::string& marked) {
  const MarkedText text{marked};
  return documents::idAt(treeOf(text.text), text.offset);
}

/// What a stretch of a text is.
std::string at(const std::string& text, Span span) { return text.substr(span.offset, span.length); }

TEST(SymbolsOf, has_policies_with_their_conditions_actions_and_texts) {
  const std::string text = R"({ "policies": [ { "id": 10, "name": "Quiet", "description": "low noise",
    "when": [ { "Power Source": "DC Power" } ], "do": [ { "SPL": {
      "value":   3 } } ], "texts": [ "a.exe", { "text": "b.exe", "flag": 1 } ] }, { "id": -1 }, 5 ] })";
  const auto policies = documents::symbolsOf(treeOf(text));
  ASSERT_EQ(policies.size(), 2U);
  EXPECT_EQ(policies[0].id, 10U);
  EXPECT_EQ(policies[0].name, "Quiet");
  EXPECT_EQ(policies[0].description, "low noise");
  EXPECT_EQ(at(text, policies[0].idSpan), "10");
  EXPECT_EQ(at(text, policies[0].nameSpan), R"("Quiet")");
  EXPECT_EQ(policies[0].span.offset, 16U);
  EXPECT_TRUE(at(text, policies[0].span).ends_with(R"("flag": 1 } ] })"));
  ASSERT_EQ(policies[0].entries.size(), 4U);
  EXPECT_EQ(policies[0].entries[0].kind, EntrySymbol::Kind::kCondition);
  EXPECT_EQ(policies[0].entries[0].name, "Power Source");
  EXPECT_EQ(policies[0].entries[0].value, R"("DC Power")");
  EXPECT_EQ(at(text, policies[0].entries[0].span), R"({ "Power Source": "DC Power" })");
  EXPECT_EQ(at(text, policies[0].entries[0].nameSpan), R"("Power Source")");
  EXPECT_EQ(policies[0].entries[1].kind, EntrySymbol::Kind::kAction);
  EXPECT_EQ(policies[0].entries[1].value, R"({ "value": 3 })");
  EXPECT_EQ(policies[0].entries[2].kind, EntrySymbol::Kind::kText);
  EXPECT_EQ(policies[0].entries[2].name, "a.exe");
  EXPECT_EQ(policies[0].entries[3].name, "b.exe");
  EXPECT_EQ(at(text, policies[0].entries[3].nameSpan), R"("b.exe")");
  EXPECT_FALSE(policies[1].id);
}

TEST(SymbolsOf, takes_what_there_is_of_a_broken_document) {
  const auto policies = documents::symbolsOf(treeOf(R"({ "policies": [ { "id": 7, "when": [ { "Power Source": )"));
  ASSERT_EQ(policies.size(), 1U);
  EXPECT_EQ(policies[0].id, 7U);
  for (const std::string text : {"", "[]", "5", "{", R"({ "policies": 5 })", R"({ "policies": {} })"})
    EXPECT_TRUE(documents::symbolsOf(treeOf(text)).empty()) << text;
}

TEST(PolicyOf, is_the_first_one_of_an_id) {
  const auto policies = documents::symbolsOf(
      treeOf(R"({ "policies": [ { "id": 7, "name": "a" }, { "id": 8 }, { "id": 7, "name": "b" } ] })"));
  ASSERT_NE(documents::policyOf(policies, 7), nullptr);
  EXPECT_EQ(documents::policyOf(policies, 7)->name, "a");
  EXPECT_EQ(documents::policyOf(policies, 9), nullptr);
}

TEST(IdAt, is_what_a_place_speaks_of) {
  EXPECT_EQ(idIn(R"({ "policies": [ { "id": 12|0 } ] })"), 120U);
  EXPECT_EQ(idIn("{ // before |120\n }"), 120U);
  EXPECT_EQ(idIn("{ /* 120|, and 7 */ }"), 120U);
  EXPECT_EQ(idIn(R"({ "policies": [ { "description": "as 120|, louder" } ] })"), 120U);
  EXPECT_EQ(idIn(R"({ "policies": [ { "name": "not 1|20" } ] })"), 120U);
  EXPECT_EQ(idIn(inDo(R"({ "Indirect Policy": 12|0 })")), 120U);
  EXPECT_EQ(idIn(inWhen(R"({ "Indirect Policy": { "op": 2, "value": |120 } })")), 120U);
}

TEST(IdAt, is_no_number_that_means_something_else) {
  for (const std::string& marked :
       {inDo(R"({ "SPL": 12|0 })"), inWhen(R"({ "Indirect Policy": { "op": |2, "value": 120 } })"),
        std::string{R"({ "version": "12|0.0" })"}, std::string{R"({ "policies": [ { "flag0": 12|0 } ] })"},
        std::string{R"({ "policies": [ { "name": "abc|" } ] })"}, std::string{"12|0"}, std::string{"|"},
        std::string{R"({ "policies": [ { "id": 99999999999| } ] })"}}) {
    EXPECT_EQ(idIn(marked), std::nullopt) << marked;
  }
}

struct RelatedCase {
  std::string text;
  documents::Rule rule;
  std::size_t offset;
  std::string sentence;
};

TEST(RelatedPlaces, are_the_first_of_two) {
  const std::string when = R"("when": [ { "Power Source": "DC Power" } ])";
  const std::vector<RelatedCase> cases = {
      {R"({ "policies": [ { "id": 7, )" + when + R"( }, { "id": 7, )" + when + " } ] }", documents::Rule::kDuplicateId,
       24, "the first policy with this id"},
      {R"({ "policies": [ { "id": 7, "name": "a", )" + when + R"( }, { "id": 8, "name": "a", )" + when + " } ] }",
       documents::Rule::kDuplicateName, 35, "the first policy with this name"},
      {R"({ "policies": [ { "id": 7, )" + when + R"(, "do": [ { "SPL": 1 }, { "SPL": 2 } ] } ] })",
       documents::Rule::kActionTwice, 81, "it is set here first"},
      {inWhen(R"({ "Power Source": "AC Power" }, { "Power Source": "DC Power" } ] } ] })"),
       documents::Rule::kContradiction, 39, "here it has to be something else"},
      {R"({ "policies": [ { "id": 7, "id": 8, )" + when + " } ] }", documents::Rule::kDuplicateMember, 18,
       "the first member of this name"}};
  for (const auto& [text, rule, offset, sentence] : cases) {
    const auto findings = documents::readDocument(text).findings;
    const auto places = documents::relatedPlaces(treeOf(text), findings);
    ASSERT_EQ(places.size(), findings.size());
    ASSERT_EQ(findings.size(), 1U) << text;
    EXPECT_EQ(findings[0].rule, rule) << text;
    ASSERT_TRUE(places[0]) << text;
    EXPECT_EQ(places[0]->span.offset, offset) << text;
    EXPECT_EQ(places[0]->sentence, sentence) << text;
  }
}

TEST(RelatedPlaces, are_none_for_what_stands_alone) {
  const std::string text = R"({ "policies": [ { "id": 0 } ] })";
  const auto findings = documents::readDocument(text).findings;
  EXPECT_EQ(findings.size(), 2U);
  for (const auto& place : documents::relatedPlaces(treeOf(text), findings)) EXPECT_FALSE(place);
}

}  // namespace
}  // namespace test
