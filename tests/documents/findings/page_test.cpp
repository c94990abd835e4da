// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

#include "documents/text/utf.h"
#include "tests/documents/findings/said.h"

namespace documents {
namespace {

constexpr char kHead[] =
    "# Findings about policy documents\n"
    "\n"
    "What `vqs policy check` says, by its codes, each with a document that it is said about, what is said, and the\n"
    "document mended. Codes never change. Errors are P0001 to P0099, warnings P0101 on.\n"
    "\n"
    "A line of what is said has the code, the place as line, column and the column behind the end, the path where "
    "there is\n"
    "one, and the sentence. `certain` is a suggestion that `--fix` applies, `maybe` is one that it does not. Documents "
    "here\n"
    "are made of as little as shows the finding; long ones go on to the right. A byte that is no UTF-8 is shown as "
    "U+FFFD.\n"
    "\n"
    "This page is made by the tests: see [Where a new part goes](contributing.md#a-finding-about-policy-documents).\n";

/// What a page of UTF-8 can show of a document.
std::string shown(std::string_view document) {
  std::string text;
  while (!document.empty()) {
    const std::size_t plain = validUtf8(document);
    text += document.substr(0, plain);
    document.remove_prefix(plain);
    if (document.empty()) break;
    text += "\xEF\xBF\xBD";
    document.remove_prefix(1);
  }
  return text;
}

std::string block(std::string_view language, std::string_view text) {
  std::string result = "\n```" + std::string(language) + '\n' + std::string(text);
  if (!text.ends_with('\n')) result += '\n';
  return result + "```\n";
}

/// A rule's part of the page.
std::string partOf(const RuleRow& row) {
  std::string text =
      "\n## " + codeOf(row.rule) + ": " + std::string(row.title) + "\n\n" + std::string(row.explanation) + '\n';
  if (row.example.empty()) return text;
  if (row.structureVersion != 2) text += "\nWith `--structure-version " + std::to_string(row.structureVersion) + "`:\n";
  text += block("jsonc", shown(row.example));
  text += block("text", said(row.example, {.structureVersion = row.structureVersion}));
  return text + "\nMended:\n" + block("jsonc", row.mended);
}

std::string makePage() {
  std::string page = kHead;
  page += "\n| code | what | |\n| --- | --- | --- |\n";
  for (const RuleRow& row : allRules()) {
    const bool isError = row.severity == Severity::kError;
    page += "| " + codeOf(row.rule) + " | " + std::string(row.title) + (isError ? " | error |\n" : " | warning |\n");
  }
  for (const RuleRow& row : allRules()) page += partOf(row);
  return page;
}

/// With VQS_WRITE_PAGES set the page is written anew; otherwise it has to be as it would be written.
TEST(FindingsPage, says_what_the_rules_say) {
  const std::string file = VQS_FINDINGS_PAGE;
  const std::string page = makePage();
  if (std::getenv("VQS_WRITE_PAGES") != nullptr) std::ofstream{file, std::ios::binary} << page;
  std::ifstream stream{file, std::ios::binary};
  const std::string stored{std::istreambuf_iterator<char>{stream}, {}};
  EXPECT_TRUE(stored == page) << "docs/findings.md is out of date: run documents_tests --gtest_filter='FindingsPage.*' "
                                 "with VQS_WRITE_PAGES=1";
}

}  // namespace
}  // namespace documents
