// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>

#include "documents/documents.h"
#include "documents/syntax/tree.h"
#include "tests/documents/syntax/random_document.h"

namespace documents {
namespace {

#ifdef __SANITIZE_ADDRESS__
constexpr double kMostSeconds = 10;
#else
constexpr double kMostSeconds = 1;
#endif

double processorSeconds() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

std::string repeated(std::string_view piece, std::size_t bytes) {
  std::string text{piece};
  while (text.size() < bytes)
    text += text.substr(0, (bytes - text.size()) / piece.size() * piece.size() + piece.size());
  text.resize(bytes / piece.size() * piece.size());
  return text;
}

/// What must hold of the findings of every text: all of them inside of it, and none of them long.
void expectSound(std::string_view text, const Findings& findings) {
  ASSERT_LE(findings.size(), kMostFindings);
  for (const Finding& finding : findings) {
    ASSERT_LE(finding.span.end(), std::max(text.size(), finding.span.offset));
    ASSERT_LE(finding.span.offset, text.size());
    ASSERT_LT(finding.sentence.size(), 500U);
    ASSERT_LE(finding.suggestions.size(), 1U);
  }
}

/// Reads a text, at once and in little memory.
Findings read(std::string_view text) {
  Findings findings;
  const double start = processorSeconds();
  const Tree tree = parse(text, findings);
  EXPECT_LT(processorSeconds() - start, kMostSeconds);
  expectSound(text, findings);
  EXPECT_LE(tree.nodes.size(), text.size() / 2 + 2 + kMostFindings);
  EXPECT_LE(tree.comments.size(), text.size() / 2 + 1);
  return findings;
}

constexpr std::string_view kPieces[] = {
    "[",      "{",    "{\"a\":",      "\"",           "/*",          "//",        "\\",  "1",        "-",
    "1e",     "\xFF", "\xC3",         "\xED\xA0\x80", "\xF0\x9F",    "{\"a\":1,", ",",   ":",        "]",
    "}",      "'",    "\"\\",         "\"\\u",        "\"\\ud800",   "[1 ",       "tru", "/* */",    "\n",
    "\"a\":", "[]",   "{}",           "\"a\"",        "[[[[{\"a\":", "]]]}",      "0",   "\"a\":1,", "\x01",
    "\"\t",   "[1,",  "1,",           "\"a\" ",       "+",           "0x",        "nul", "\"\xFF\"", "//\n",
    "/**/,",  "\r",   "\xEF\xBB\xBF", "999e99999,",   "'a' "};

TEST(HostileDocuments, ten_thousand_end_at_once_with_a_finding) {
  for (unsigned seed = 0; seed < 10000; ++seed) {
    RandomDocument random{seed};
    // A list that nothing in the right place ends.
    std::string text = "[";
    for (std::size_t count = 1 + random.below(4); count > 0; --count)
      text +=
          repeated(kPieces[random.below(std::size(kPieces))], 1 + random.below(random.below(20) == 0 ? 20000 : 200));
    text += "[{:";
    ASSERT_FALSE(read(text).empty()) << text;
    ASSERT_FALSE(HasFailure()) << text;
  }
}

TEST(HostileDocuments, megabytes_of_one_piece_end_at_once_with_a_finding) {
  for (const std::string_view piece : kPieces) {
    EXPECT_FALSE(read("[" + repeated(piece, 1000000)).empty()) << piece;
    EXPECT_FALSE(formatDocument("{\"a\":" + repeated(piece, 300000)).text) << piece;
  }
}

TEST(HostileDocuments, the_largest_end_at_once_with_a_finding) {
  for (const std::string_view piece :
       {"[", "{\"a\":", "\"", "/*", "//\n", "\\", "\"\\", "1,", "\n", "\xFF", "tru", "1"})
    EXPECT_FALSE(read("[" + repeated(piece, kMostBytes - 1)).empty()) << piece;
}

TEST(HostileDocuments, larger_ones_are_not_looked_at) {
  const std::string text(std::size_t{100} << 20, '[');
  const double start = processorSeconds();
  Findings findings;
  EXPECT_TRUE(parse(text, findings).nodes.empty());
  EXPECT_LT(processorSeconds() - start, 0.01);
  ASSERT_EQ(findings.size(), 1U);
  EXPECT_EQ(findings[0].rule, Rule::kTooLarge);
}

TEST(HostileDocuments, long_names) {
  const std::string name = repeated("\\u0041", 8000000);
  EXPECT_TRUE(read("{\"" + name + name.substr(6) + "\":1}").empty());
  const auto findings = read("{\"" + name + "\":1,\"" + name + "\":2}");
  ASSERT_EQ(findings.size(), 1U);
  EXPECT_EQ(findings[0].rule, Rule::kDuplicateMember);
  EXPECT_LT(findings[0].sentence.size(), 200U);
}

/// An object of members with these names: number after number, behind a beginning.
std::string members(std::string_view beginning, std::size_t count, std::size_t names) {
  std::string text = "{";
  for (std::size_t i = 0; i < count; ++i)
    text.append("\"").append(beginning).append(std::to_string(i % names)).append("\":1,\n");
  return text + "}";
}

TEST(HostileDocuments, a_million_members) {
  EXPECT_TRUE(read(members("", 1000000, 1000000)).empty());
  const auto findings = read(members("", 1000000, 999999));
  ASSERT_EQ(findings.size(), 1U);
  EXPECT_EQ(findings[0].rule, Rule::kDuplicateMember);
  EXPECT_EQ(read(members("", 1000000, 1)).size(), kMostFindings);
  EXPECT_EQ(read(members("", 1000000, 1000)).size(), kMostFindings);
}

TEST(HostileDocuments, members_of_one_long_beginning) {
  EXPECT_TRUE(read(members(std::string(1000, 'x'), 15000, 15000)).empty());
  EXPECT_TRUE(read(members(std::string(100, 'x'), 130000, 130000)).empty());
}

TEST(HostileDocuments, duplicates_in_many_objects) {
  std::string text = "[";
  while (text.size() + 20 < kMostBytes) text += R"({"a":1,"a":2},)";
  EXPECT_EQ(read(text + "1]").size(), kMostFindings);
}

TEST(HostileDocuments, what_is_large_and_right_is_read_and_laid_out) {
  for (const std::string_view element :
       {"1,", "\"\",", "[],", "{\"a\":[{\"b\":{}}]},\n", "// a\n1,", "/**/1/**/,\n\n", "\"\\ud800\","}) {
    const std::string text = "[" + repeated(element, 4000000) + "]";
    EXPECT_TRUE(read(text).empty()) << element;
    const double start = processorSeconds();
    const auto result = formatDocument(text);
    EXPECT_LT(processorSeconds() - start, kMostSeconds) << element;
    ASSERT_TRUE(result.text) << element;
  }
}

TEST(HostileDocuments, places_in_a_line_of_megabytes_are_found_at_once) {
  std::string text = "[";
  while (text.size() + 20 < kMostBytes) text += "\"\xC3\xA4\",";
  const LineTable table{text};
  const double start = processorSeconds();
  for (std::size_t i = 0; i < 1000; ++i) EXPECT_EQ(table.positionOf(text.size() - 1 - 5 * i).line, 1U);
  EXPECT_LT(processorSeconds() - start, kMostSeconds);
}

}  // namespace
}  // namespace documents
