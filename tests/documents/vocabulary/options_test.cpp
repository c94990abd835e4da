// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <map>
#include <string>

#include "documents/vocabulary/vocabulary.h"
#include "tests/support/listings.h"

namespace documents {
namespace {

/// The two conditions whose options are templates.
bool hasTemplates(WordKind kind, const std::string& name) {
  return kind == WordKind::kCondition && (name == "App Detection" || name == "Reg key");
}

void expectListed(WordKind kind, const std::string& file, std::size_t column) {
  for (const auto& row : test::readListing(file)) {
    const Word& word = *wordOf(kind, row.word(0));
    const auto listed = row.options(column);
    SCOPED_TRACE(word.name);
    EXPECT_EQ(word.options.size(), hasTemplates(kind, row.text(1)) ? 0 : listed.size());
    std::map<std::uint32_t, std::string> firstTexts;
    for (const auto& [text, number] : listed) {
      if (hasTemplates(kind, row.text(1))) continue;
      const auto value = static_cast<std::uint32_t>(number);
      firstTexts.emplace(value, text);
      EXPECT_EQ(optionValue(word, text), value);
      EXPECT_EQ(optionText(word, value), firstTexts[value]);
    }
  }
}

TEST(Options, of_conditions_are_those_of_the_listing) {
  expectListed(WordKind::kCondition, test::kConditionListing, 13);
}

TEST(Options, of_actions_are_those_of_the_listing) { expectListed(WordKind::kAction, test::kActionListing, 9); }

TEST(Options, of_one_value_are_all_understood_and_the_first_is_said) {
  const Word& word = *wordOf(WordKind::kAction, "Taskbar Icon Colour");
  EXPECT_EQ(optionValue(word, "Blue"), 5U);
  EXPECT_EQ(optionValue(word, "Purple"), 5U);
  EXPECT_EQ(optionValue(word, "Pink"), 5U);
  EXPECT_EQ(optionText(word, 5), "Blue");
}

TEST(Options, below_zero_are_the_32_bits_of_their_values) {
  const Word& word = *wordOf(WordKind::kCondition, "Display Type");
  EXPECT_EQ(optionValue(word, "Uninit"), 0xFFFFFFFEU);
  EXPECT_EQ(optionValue(word, "Internal"), 0x80000000U);
  EXPECT_EQ(optionText(word, 0xFFFFFFFF), "Other");
}

TEST(Options, that_there_are_not_have_no_value_and_no_text) {
  const Word& word = *wordOf(WordKind::kCondition, "Power Source");
  EXPECT_EQ(optionValue(word, "Wall"), std::nullopt);
  EXPECT_EQ(optionValue(word, "ac power"), std::nullopt);
  EXPECT_EQ(optionValue(word, ""), std::nullopt);
  EXPECT_EQ(optionText(word, 2), std::nullopt);
  EXPECT_EQ(optionText(*wordOf(WordKind::kAction, "SPL"), 0), std::nullopt);
}

TEST(Options, are_found_in_any_case) {
  const Word& word = *wordOf(WordKind::kCondition, "Power Source");
  ASSERT_NE(foldedOption(word, "dC pOWER"), nullptr);
  EXPECT_EQ(textOf(*foldedOption(word, "dC pOWER")), "DC Power");
  EXPECT_EQ(foldedOption(word, "DC Powe"), nullptr);
}

}  // namespace
}  // namespace documents
