// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <string>

#include "documents/vocabulary/vocabulary.h"
#include "tests/support/listings.h"

namespace documents {
namespace {

/// The columns of the two listings that words are made of.
struct Columns {
  std::size_t least, most, units, enabled;
};
constexpr Columns kConditionColumns{.least = 4, .most = 5, .units = 6, .enabled = 7};
constexpr Columns kActionColumns{.least = 3, .most = 4, .units = 5, .enabled = 6};

void expectListed(WordKind kind, const std::string& file, const Columns& columns) {
  const auto rows = test::readListing(file);
  const auto words = wordsOf(kind);
  ASSERT_EQ(words.size(), rows.size());
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const Word& word = words[i];
    SCOPED_TRACE(rows[i].text(1));
    EXPECT_EQ(word.kind, kind);
    EXPECT_EQ(word.id, i);
    EXPECT_EQ(word.name, rows[i].text(1));
    EXPECT_EQ(word.least, rows[i].number(columns.least));
    EXPECT_EQ(word.most, rows[i].number(columns.most));
    EXPECT_EQ(word.units, rows[i].text(columns.units));
    EXPECT_EQ(word.isEnabled, rows[i].number(columns.enabled) == 1);
  }
}

TEST(Words, of_conditions_are_those_of_the_listing) {
  expectListed(WordKind::kCondition, test::kConditionListing, kConditionColumns);
}

TEST(Words, of_actions_are_those_of_the_listing) {
  expectListed(WordKind::kAction, test::kActionListing, kActionColumns);
}

TEST(Words, of_conditions_have_the_comparisons_of_the_listing) {
  const auto rows = test::readListing(test::kConditionListing);
  for (std::size_t i = 0; i < rows.size(); ++i) EXPECT_EQ(conditionWords()[i].operators, rows[i].word(3));
  for (const Word& word : actionWords()) EXPECT_EQ(word.operators, 0U);
}

TEST(Words, are_found_by_their_ids) {
  EXPECT_EQ(wordOf(WordKind::kCondition, 0U)->name, "Power Source");
  EXPECT_EQ(wordOf(WordKind::kCondition, 72U)->name, "ASM Supported");
  EXPECT_EQ(wordOf(WordKind::kCondition, 73U), nullptr);
  EXPECT_EQ(wordOf(WordKind::kAction, 167U)->name, "PPM WPSMINEFFTHRESH");
  EXPECT_EQ(wordOf(WordKind::kAction, 168U), nullptr);
  EXPECT_EQ(wordOf(WordKind::kAction, 0xFFFFFFFFU), nullptr);
}

std::string withOtherCase(std::string text) {
  std::ranges::transform(text, text.begin(), [](char character) {
    const auto byte = static_cast<unsigned char>(character);
    return static_cast<char>(std::islower(byte) ? std::toupper(byte) : std::tolower(byte));
  });
  return text;
}

void expectFoundByName(WordKind kind, const std::string& file) {
  for (const auto& row : test::readListing(file)) {
    const std::string& name = row.text(1);
    const std::string otherCase = withOtherCase(name);
    SCOPED_TRACE(name);
    ASSERT_NE(wordOf(kind, name), nullptr);
    EXPECT_EQ(wordOf(kind, name)->id, row.word(0));
    ASSERT_NE(foldedWord(kind, otherCase), nullptr);
    EXPECT_EQ(foldedWord(kind, otherCase)->id, row.word(0));
    EXPECT_EQ(wordOf(kind, otherCase), nullptr);
    EXPECT_EQ(foldedWord(kind, name + "!"), nullptr);
    EXPECT_EQ(foldedWord(kind, "!" + name), nullptr);
  }
}

TEST(Words, of_conditions_are_found_by_their_names) {
  expectFoundByName(WordKind::kCondition, test::kConditionListing);
}

TEST(Words, of_actions_are_found_by_their_names) { expectFoundByName(WordKind::kAction, test::kActionListing); }

TEST(Words, are_not_found_by_what_is_no_name) {
  EXPECT_EQ(wordOf(WordKind::kCondition, ""), nullptr);
  EXPECT_EQ(foldedWord(WordKind::kCondition, ""), nullptr);
  EXPECT_EQ(wordOf(WordKind::kCondition, "SPL"), nullptr);
  EXPECT_EQ(wordOf(WordKind::kAction, "Power Source"), nullptr);
  EXPECT_EQ(foldedWord(WordKind::kAction, "\xC3\x84"), nullptr);
}

TEST(Words, have_the_form_of_their_kind) {
  EXPECT_EQ(wordOf(WordKind::kCondition, "Power Source")->form, ValueForm::kOption);
  EXPECT_EQ(wordOf(WordKind::kCondition, "App State")->form, ValueForm::kBits);
  EXPECT_EQ(wordOf(WordKind::kCondition, "Skin Temperature")->form, ValueForm::kUnsigned);
  EXPECT_EQ(wordOf(WordKind::kCondition, "Battery Drain Rate")->form, ValueForm::kSigned);
  EXPECT_EQ(wordOf(WordKind::kAction, "SPL")->form, ValueForm::kUnsigned);
}

TEST(Words, with_options_take_them_whatever_their_kind_is_called) {
  EXPECT_EQ(wordOf(WordKind::kCondition, "User Presence")->form, ValueForm::kOption);
  EXPECT_EQ(wordOf(WordKind::kCondition, "Docking State")->form, ValueForm::kOption);
  EXPECT_EQ(wordOf(WordKind::kAction, "APP EFFICIENCY MODE")->form, ValueForm::kOption);
}

TEST(Words, of_an_enumeration_without_options_take_a_number) {
  EXPECT_EQ(wordOf(WordKind::kAction, "Custom Workload")->form, ValueForm::kUnsigned);
  EXPECT_EQ(wordOf(WordKind::kCondition, "ASM Supported")->form, ValueForm::kUnsigned);
}

TEST(Words, with_templates_take_a_number) {
  for (const char* name : {"App Detection", "Reg key", "Background Active App"}) {
    const Word* word = wordOf(WordKind::kCondition, name);
    EXPECT_EQ(word->form, ValueForm::kUnsigned) << name;
    EXPECT_TRUE(word->options.empty()) << name;
  }
}

TEST(Words, have_a_comparison_that_need_not_be_written_when_there_is_one) {
  EXPECT_EQ(wordOf(WordKind::kCondition, "Power Source")->onlyOperator(), 2U);
  EXPECT_EQ(wordOf(WordKind::kCondition, "App State")->onlyOperator(), std::nullopt);
  EXPECT_EQ(wordOf(WordKind::kCondition, "Skin Temperature")->onlyOperator(), std::nullopt);
  EXPECT_EQ(wordOf(WordKind::kAction, "SPL")->onlyOperator(), std::nullopt);
}

TEST(Words, of_bit_sets_have_all_bits_of_their_options) {
  EXPECT_EQ(wordOf(WordKind::kCondition, "App State")->allBits(), 63U);
  EXPECT_EQ(wordOf(WordKind::kCondition, "Skin Temperature")->allBits(), 0U);
}

}  // namespace
}  // namespace documents
