// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <utility>

#include "documents/documents.h"
#include "documents/syntax/tree.h"

namespace documents {
namespace {

Finding withEdits(std::vector<Edit> edits, bool isCertain = true) {
  return {.rule = Rule::kUnexpected,
          .severity = Severity::kError,
          .span = {},
          .sentence = "",
          .suggestions = {{.sentence = "", .edits = std::move(edits), .isCertain = isCertain}}};
}

Edit replace(std::size_t offset, std::size_t length, std::string replacement) {
  return {.span = {.offset = offset, .length = length}, .replacement = std::move(replacement)};
}

TEST(ApplyCertainFixes, changes_nothing_without_findings) { EXPECT_EQ(applyCertainFixes("abc", {}), "abc"); }

TEST(ApplyCertainFixes, applies_edits_by_their_places) {
  EXPECT_EQ(applyCertainFixes("abcdef",
                              {withEdits({replace(4, 1, "E")}), withEdits({replace(0, 1, "AA"), replace(6, 0, "!")})}),
            "AAbcdEf!");
}

TEST(ApplyCertainFixes, leaves_out_what_is_not_certain) {
  EXPECT_EQ(applyCertainFixes("abc", {withEdits({replace(0, 1, "A")}, false)}), "abc");
}

TEST(ApplyCertainFixes, takes_the_first_certain_suggestion_of_a_finding) {
  Finding finding = withEdits({replace(0, 1, "x")}, false);
  finding.suggestions.push_back({.sentence = "", .edits = {replace(0, 1, "y")}, .isCertain = true});
  finding.suggestions.push_back({.sentence = "", .edits = {replace(1, 1, "z")}, .isCertain = true});
  EXPECT_EQ(applyCertainFixes("abc", {finding}), "ybc");
}

TEST(ApplyCertainFixes, leaves_out_whole_suggestions_that_overlap) {
  EXPECT_EQ(applyCertainFixes("abcdef",
                              {withEdits({replace(1, 2, "X")}), withEdits({replace(2, 2, "Y"), replace(5, 1, "Z")})}),
            "aXdef");
  EXPECT_EQ(applyCertainFixes("abc", {withEdits({replace(0, 3, "X")}), withEdits({replace(1, 0, "Y")})}), "X");
  EXPECT_EQ(applyCertainFixes("abc", {withEdits({replace(1, 0, "X")}), withEdits({replace(1, 0, "X")})}), "aXbc");
  EXPECT_EQ(applyCertainFixes("abc", {withEdits({replace(0, 2, "X"), replace(1, 1, "Y")})}), "abc") << "itself";
}

TEST(ApplyCertainFixes, applies_edits_side_by_side) {
  EXPECT_EQ(applyCertainFixes("abc", {withEdits({replace(1, 1, "X")}), withEdits({replace(2, 1, "Y")})}), "aXY");
  EXPECT_EQ(applyCertainFixes("abc", {withEdits({replace(1, 0, "Y")}), withEdits({replace(0, 1, "X")})}), "XYbc");
}

TEST(ApplyCertainFixes, leaves_out_what_lies_behind_the_text) {
  EXPECT_EQ(applyCertainFixes("abc", {withEdits({replace(2, 2, "X")}), withEdits({replace(4, 0, "Y")})}), "abc");
}

TEST(ApplyCertainFixes, mends_what_is_certain_in_a_text) {
  const std::string_view text = "{ a: +1 'b': True\n \"c\" 0x10, \"d\" = \"x\ty\" }";
  Findings findings;
  parse(text, findings);
  // 'b' is no name as long as the comma before it is missing: that is left to the writer.
  EXPECT_EQ(applyCertainFixes(text, findings), "{ \"a\": 1 'b': True\n \"c\": 16, \"d\" : \"x\\ty\" }");
}

}  // namespace
}  // namespace documents
