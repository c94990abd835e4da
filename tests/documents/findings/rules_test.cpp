// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <optional>

#include "documents/findings/rules.h"

namespace documents {
namespace {

/// Numbers that no rule has, and none will get: their rules were given up.
constexpr std::uint16_t kGivenUp[] = {38};

TEST(Rules, have_codes_of_four_digits) {
  EXPECT_EQ(codeOf(Rule::kUnexpected), "P0001");
  EXPECT_EQ(codeOf(Rule::kNoSuchOption), "P0012");
  EXPECT_EQ(codeOf(Rule::kNotEnabled), "P0104");
}

TEST(Rules, are_found_by_their_codes) {
  EXPECT_EQ(ruleOf("P0012"), Rule::kNoSuchOption);
  EXPECT_EQ(ruleOf("p0104"), Rule::kNotEnabled);
  for (const RuleRow& row : allRules()) EXPECT_EQ(ruleOf(codeOf(row.rule)), row.rule);
}

TEST(Rules, are_not_found_by_anything_else) {
  for (const char* code :
       {"", "P", "P12", "P012", "P00012", "P0000", "P9999", "Q0012", "P-012", "P+012", "P00 2", "0012"})
    EXPECT_EQ(ruleOf(code), std::nullopt) << code;
  for (const std::uint16_t number : kGivenUp) EXPECT_EQ(ruleOf("P00" + std::to_string(number)), std::nullopt);
}

TEST(Rules, have_words) {
  for (const RuleRow& row : allRules()) {
    EXPECT_EQ(&rowOf(row.rule), &row);
    EXPECT_FALSE(row.title.empty()) << codeOf(row.rule);
    EXPECT_TRUE(row.explanation.ends_with('.')) << codeOf(row.rule);
  }
}

TEST(Rules, below_a_hundred_are_errors_and_the_others_warnings) {
  for (const RuleRow& row : allRules()) {
    const bool isError = static_cast<unsigned>(row.rule) < 100;
    EXPECT_EQ(row.severity, isError ? Severity::kError : Severity::kWarning) << codeOf(row.rule);
  }
}

}  // namespace
}  // namespace documents
