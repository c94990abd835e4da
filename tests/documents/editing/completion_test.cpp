// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>

#include "documents/documents.h"
#include "documents/editing/completion.h"
#include "tests/documents/editing/marked_text.h"
#include "tests/support/listings.h"

namespace test {
namespace {

using documents::Completion;
using documents::Proposal;
using Labels = std::vector<std::string>;

Completion completionIn(const std::string& marked) {
  const MarkedText text{marked};
  return documents::completionAt(text.text, text.offset);
}

Labels labelsIn(const std::string& marked) {
  Labels labels;
  for (const auto& proposal : completionIn(marked).proposals) labels.push_back(proposal.label);
  return labels;
}

/// The proposal of a label.
Proposal proposalIn(const std::string& marked, const std::string& label) {
  const auto completion = completionIn(marked);
  const auto found = std::ranges::find(completion.proposals, label, &Proposal::label);
  if (found != completion.proposals.end()) return *found;
  ADD_FAILURE() << label << " is not proposed in " << marked;
  return {};
}

/// The text after a proposal was taken.
std::string taken(const std::string& marked, const std::string& label) {
  std::string text = MarkedText{marked}.text;
  const auto span = completionIn(marked).span;
  return text.replace(span.offset, span.length, proposalIn(marked, label).text);
}

TEST(CompletionAt, proposes_the_members_that_a_document_has_not_yet) {
  EXPECT_EQ(labelsIn("{ | }"), (Labels{"$schema", "version", "policies"}));
  EXPECT_EQ(labelsIn(R"({ "version": "1.0", | })"), (Labels{"$schema", "policies"}));
  EXPECT_EQ(labelsIn(R"({ |, "policies": [] })"), (Labels{"$schema", "version"}));
}

TEST(CompletionAt, proposes_the_members_that_a_policy_has_not_yet) {
  EXPECT_EQ(labelsIn(R"({ "policies": [ { "id": 1, "name": "a", "|" } ] })"),
            (Labels{"description", "when", "do", "texts", "flag0", "flag1", "flag2", "param0", "param1", "param2"}));
}

TEST(CompletionAt, proposes_every_condition_and_action_once) {
  EXPECT_EQ(labelsIn(inWhen(R"({ "|)")).size(), listedIn(kConditionListing));
  EXPECT_EQ(labelsIn(inDo(R"({ "|" })")).size(), listedIn(kActionListing));
  EXPECT_EQ(labelsIn(inDo(R"({ "|": 1 })")).size(), listedIn(kActionListing));
}

TEST(CompletionAt, proposes_no_second_member_for_a_condition) {
  EXPECT_EQ(labelsIn(inWhen(R"({ "Power Source": "DC Power", | })")), Labels{});
}

TEST(CompletionAt, proposes_the_options_of_a_type) {
  EXPECT_EQ(labelsIn(inWhen(R"({ "Power Source": | })")), (Labels{"AC Power", "DC Power"}));
  EXPECT_EQ(labelsIn(inWhen(R"({ "Power Source": "|)")), (Labels{"AC Power", "DC Power"}));
  EXPECT_EQ(labelsIn(inWhen(R"({ "Power Source": { "value": "|" } })")), (Labels{"AC Power", "DC Power"}));
}

TEST(CompletionAt, proposes_the_options_that_a_list_has_not_yet) {
  EXPECT_EQ(labelsIn(inWhen(R"({ "App State": { "op": 2, "value": [ "Foreground", "|" ] } })")),
            (Labels{"Background", "Full Screen", "Windowed", "Encode", "Decode"}));
}

TEST(CompletionAt, proposes_the_comparisons_that_a_condition_admits) {
  EXPECT_EQ(labelsIn(inWhen(R"({ "Skin Temperature": { "op": | } })")), (Labels{"0", "1", "2", "3", "4"}));
  EXPECT_EQ(labelsIn(inWhen(R"({ "App State": { "op": | } })")), (Labels{"2", "3"}));
}

TEST(CompletionAt, proposes_the_ends_of_a_range) {
  EXPECT_EQ(labelsIn(inWhen(R"({ "Average C0 Residency": { "value": |)")), (Labels{"0", "100"}));
  EXPECT_EQ(labelsIn(inDo(R"({ "Indirect Policy": | })")), Labels{"0"});
}

TEST(CompletionAt, proposes_the_fields_of_conditions_and_of_actions) {
  EXPECT_EQ(labelsIn(inWhen(R"({ "Skin Temperature": { | } })")), (Labels{"op", "value", "value2"}));
  EXPECT_EQ(labelsIn(inDo(R"({ "SPL": { "value": 1, | } })")),
            (Labels{"value2", "value3", "value4", "option1", "option2", "option3"}));
}

TEST(CompletionAt, proposes_nothing_in_comments_numbers_and_texts_of_ones_own) {
  for (const std::string& marked :
       {std::string{"{ // |\n }"}, std::string{R"({ "policies": [ { "id": | } ] })"},
        std::string{R"({ "policies": [ { "name": "|" } ] })"}, inWhen(R"({ "Nothing": "|" })"), std::string{"|"},
        std::string{R"({ |"version": 1 })"}, inWhen(R"({ "Power Source": |"AC Power" })")}) {
    EXPECT_EQ(labelsIn(marked), Labels{}) << marked;
  }
}

TEST(CompletionAt, writes_what_is_missing_of_a_name) {
  EXPECT_EQ(taken("{ | }", "version"), R"({ "version": "1.0" })");
  EXPECT_EQ(taken("{ ver| }", "version"), R"({ "version": "1.0" })");
  EXPECT_EQ(taken(R"({ "ver| })", "version"), R"({ "version": "1.0" })");
  EXPECT_EQ(taken(R"({ "ver|" })", "version"), R"({ "version": "1.0" })");
  EXPECT_EQ(taken(R"({ "ver|": "2.0" })", "version"), R"({ "version": "2.0" })");
  EXPECT_EQ(taken(R"({ ver|: "2.0" })", "version"), R"({ "version": "2.0" })");
}

TEST(CompletionAt, writes_what_is_missing_of_an_option) {
  EXPECT_EQ(taken(inWhen(R"({ "Power Source": | })"), "DC Power"), inWhen(R"({ "Power Source": "DC Power" })"));
  EXPECT_EQ(taken(inWhen(R"({ "Power Source": "A| })"), "DC Power"), inWhen(R"({ "Power Source": "DC Power" })"));
  EXPECT_EQ(taken(inWhen(R"({ "Power Source": "AC| Power" })"), "DC Power"),
            inWhen(R"({ "Power Source": "DC Power" })"));
  EXPECT_EQ(taken(inWhen(R"({ "Power Source": D| })"), "DC Power"), inWhen(R"({ "Power Source": "DC Power" })"));
}

TEST(CompletionAt, writes_a_condition_whole) {
  EXPECT_EQ(taken(inWhen("{ | }"), "Power Source"), inWhen(R"({ "Power Source": "AC Power" })"));
  EXPECT_EQ(taken(inWhen("{ | }"), "Skin Temperature"), inWhen(R"({ "Skin Temperature": { "op": 0, "value": 0 } })"));
  EXPECT_EQ(taken(inWhen("|"), "App State"), inWhen(R"({ "App State": { "op": 2, "value": ["Foreground"] } })"));
}

/// The document that a list of conditions or actions with one proposal makes, with whatever else a policy needs.
std::string documentOf(const Proposal& proposal) {
  const std::string entries = "[ { " + proposal.text + " } ]";
  const std::string rest = proposal.kind == Proposal::Kind::kAction
                               ? R"("when": [ { "Power Source": "AC Power" } ], "do": )" + entries
                               : R"("when": )" + entries;
  return R"({ "policies": [ { "id": 1, )" + rest + " } ] }";
}

TEST(CompletionAt, writes_nothing_that_the_check_refuses) {
  for (const std::string& marked : {inWhen("{ | }"), inDo("{ | }")}) {
    for (const auto& proposal : completionIn(marked).proposals) {
      const auto findings = documents::readDocument(documentOf(proposal)).findings;
      EXPECT_FALSE(documents::hasErrors(findings)) << documentOf(proposal) << findings.front().sentence;
      // What is not enabled is all that there is to be said.
      EXPECT_EQ(findings.size(), proposal.isRare ? 1U : 0U) << proposal.label;
    }
  }
}

TEST(CompletionAt, has_stops_for_the_cursor) {
  EXPECT_EQ(proposalIn(inWhen("{ | }"), "Power Source").snippet, R"("Power Source": ${1|"AC Power","DC Power"|})");
  EXPECT_EQ(proposalIn(inWhen(R"({ "|" })"), "Skin Temperature").snippet,
            R"(Skin Temperature": { "op": ${1|0,1,2,3,4|}, "value": ${2:0} \})");
  EXPECT_EQ(proposalIn(inDo("{ | }"), "SPL").snippet, R"("SPL": ${1:0})");
  EXPECT_EQ(proposalIn(R"({ "policies": [ | ] })", "policy").snippet,
            R"({ "id": ${1:1}, "name": "$2", "when": [{ $3 \}], "do": [{ $4 \}] \})");
}

TEST(CompletionAt, says_what_a_proposal_means) {
  const auto source = proposalIn(inWhen("{ | }"), "Power Source");
  EXPECT_EQ(source.kind, Proposal::Kind::kCondition);
  EXPECT_EQ(source.explanation.detail, "condition 0, one of 2 options");
  EXPECT_EQ(source.explanation.paragraphs, Labels{R"(Comparison 2: "op" may be left out.)"});
  EXPECT_EQ(source.explanation.items, (Labels{R"("AC Power" (0))", R"("DC Power" (1))"}));
  EXPECT_FALSE(source.isRare);
  EXPECT_EQ(proposalIn(inWhen(R"({ "Power Source": | })"), "DC Power").explanation.detail,
            R"(1, option of the condition "Power Source")");
}

TEST(CompletionAt, puts_what_the_catalogue_has_not_enabled_last) {
  const auto docking = proposalIn(inWhen("{ | }"), "Docking State");
  EXPECT_TRUE(docking.isRare);
  EXPECT_EQ(docking.explanation.paragraphs.front(), "It is not enabled in the catalogue.");
}

}  // namespace
}  // namespace test
