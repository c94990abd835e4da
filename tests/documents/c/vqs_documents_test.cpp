// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "documents/c/vqs_documents.h"
#include "tests/support/bytes.h"

namespace {

struct Releaser {
  void operator()(VqsDocumentsResult* result) const { vqsDocumentsRelease(result); }
};
using Result = std::unique_ptr<VqsDocumentsResult, Releaser>;

constexpr std::string_view kDocument =
    "{ \"version\": \"3.41\", \"policies\": [ { \"id\": 1, \"name\": \"One\",\n"
    "  \"when\": [ { \"Power Source\": \"DC Power\" } ], \"do\": [ { \"SPL\": 15000 } ] } ] }";

VqsDocumentsOptions options() { return {.structureVersion = 2, .allowUnknown = 0, .target = 0, .encoding = 0}; }

Result compile(std::string_view text, const VqsDocumentsOptions& taken = options()) {
  return Result{vqsDocumentsCompile(text.data(), text.size(), &taken)};
}

std::string outputOf(const Result& result) {
  return {static_cast<const char*>(vqsDocumentsOutput(result.get())), vqsDocumentsOutputSize(result.get())};
}

nlohmann::json findingsOf(const Result& result) { return nlohmann::json::parse(vqsDocumentsFindings(result.get())); }

TEST(DocumentsInC, check_says_nothing_about_a_good_document) {
  const Result result{vqsDocumentsCheck(kDocument.data(), kDocument.size(), nullptr)};
  EXPECT_EQ(vqsDocumentsStatus(result.get()), VQS_DOCUMENTS_DONE);
  EXPECT_STREQ(vqsDocumentsFindings(result.get()), "[]");
  EXPECT_EQ(vqsDocumentsOutputSize(result.get()), 0U);
}

TEST(DocumentsInC, a_finding_has_its_place_its_path_and_what_mends_it) {
  constexpr std::string_view kWrong =
      "{ \"policies\": [ { \"id\": 1, \"name\": \"One\",\n"
      "  \"when\": [ { \"power Source\": 0 } ] } ] }";
  const Result result{vqsDocumentsCheck(kWrong.data(), kWrong.size(), nullptr)};
  EXPECT_EQ(vqsDocumentsStatus(result.get()), VQS_DOCUMENTS_ERRORS);
  const auto findings = findingsOf(result);
  ASSERT_EQ(findings.size(), 1U);
  const auto& finding = findings[0];
  EXPECT_EQ(finding["code"], "P0020");
  EXPECT_EQ(finding["severity"], "error");
  EXPECT_EQ(finding["line"], 2);
  EXPECT_EQ(finding["column"], 15);
  EXPECT_EQ(finding["endLine"], 2);
  EXPECT_EQ(finding["endColumn"], 29);
  EXPECT_EQ(finding["path"], "policies[0].when[0]");
  ASSERT_EQ(finding["suggestions"].size(), 1U);
  EXPECT_EQ(finding["suggestions"][0]["certain"], true);
  EXPECT_EQ(finding["suggestions"][0]["edits"][0]["replacement"], "\"Power Source\"");
}

TEST(DocumentsInC, compile_makes_a_policy_binary_that_decompiles_to_the_same_policies) {
  const auto binary = compile(kDocument);
  ASSERT_EQ(vqsDocumentsStatus(binary.get()), VQS_DOCUMENTS_DONE);
  const auto bytes = outputOf(binary);
  EXPECT_EQ(bytes.substr(0, 12), std::string("\x01\x00\x05\x00\x03\x00\x29\x00$QTF", 12));
  const Result document{vqsDocumentsDecompile(bytes.data(), bytes.size())};
  ASSERT_EQ(vqsDocumentsStatus(document.get()), VQS_DOCUMENTS_DONE);
  EXPECT_EQ(outputOf(document),
            "{\n"
            "  \"version\": \"3.41\",\n"
            "  \"policies\": [\n"
            "    {\n"
            "      \"id\": 1,\n"
            "      \"name\": \"One\",\n"
            "      \"when\": [\n"
            "        { \"Power Source\": \"DC Power\" }\n"
            "      ],\n"
            "      \"do\": [\n"
            "        { \"SPL\": 15000 }\n"
            "      ]\n"
            "    }\n"
            "  ]\n"
            "}\n");
  EXPECT_EQ(outputOf(compile(outputOf(document))), bytes);
}

TEST(DocumentsInC, compile_makes_registry_text_in_either_encoding) {
  auto taken = options();
  taken.target = VQS_DOCUMENTS_REGISTRY_ASM;
  const auto narrow = outputOf(compile(kDocument, taken));
  EXPECT_EQ(narrow.substr(0, 38), "Windows Registry Editor Version 5.00\n\n");
  EXPECT_NE(narrow.find("\"AsmCurrentRegkeyPolicy\"=hex:01,00,05,00,03,00,29,00,"), narrow.npos);
  taken.target = VQS_DOCUMENTS_REGISTRY_BALANCE_PROFILE;
  taken.encoding = VQS_DOCUMENTS_UTF16;
  const auto wide = outputOf(compile(kDocument, taken));
  EXPECT_EQ(wide.substr(0, 6), std::string("\xFF\xFEW\0i\0", 6));
}

TEST(DocumentsInC, compile_gives_nothing_of_a_document_with_errors) {
  const auto result = compile(R"({ "policies": [ { "id": 1, "when": [ { "#77": 0 } ] } ] })");
  EXPECT_EQ(vqsDocumentsStatus(result.get()), VQS_DOCUMENTS_ERRORS);
  EXPECT_EQ(vqsDocumentsOutputSize(result.get()), 0U);
  EXPECT_EQ(findingsOf(result)[0]["code"], "P0021");
}

TEST(DocumentsInC, compile_takes_what_no_catalogue_knows_when_told_so) {
  auto taken = options();
  taken.allowUnknown = 1;
  const auto result =
      compile(R"({ "policies": [ { "id": 1, "name": "a", "when": [ { "#77": { "op": 2, "value": 0 } } ] } ] })", taken);
  EXPECT_EQ(vqsDocumentsStatus(result.get()), VQS_DOCUMENTS_DONE);
  EXPECT_EQ(findingsOf(result)[0]["severity"], "warning");
}

TEST(DocumentsInC, what_is_not_in_words_is_checked_against_the_catalogue_too) {
  auto taken = options();
  taken.allowUnknown = 1;
  const auto binary = outputOf(compile(
      R"({ "policies": [ { "id": 1, "name": "a", "when": [ { "#77": { "op": 2, "value": 0 } } ] } ] })", taken));
  ASSERT_FALSE(binary.empty());
  const Result checked{vqsDocumentsCheck(binary.data(), binary.size(), nullptr)};
  EXPECT_EQ(vqsDocumentsStatus(checked.get()), VQS_DOCUMENTS_ERRORS);
  const auto findings = findingsOf(checked);
  ASSERT_EQ(findings.size(), 1U);
  EXPECT_EQ(findings[0]["code"], "P0021");
  EXPECT_EQ(findings[0]["path"], "policies[0].when[0]");
  const auto compiled = compile(binary);
  EXPECT_EQ(vqsDocumentsStatus(compiled.get()), VQS_DOCUMENTS_ERRORS);
  EXPECT_EQ(vqsDocumentsOutputSize(compiled.get()), 0U);
}

TEST(DocumentsInC, places_in_registry_text_of_utf_16_are_in_its_lines) {
  std::string wide;
  for (const char character : std::string_view{"Windows Registry Editor Version 5.00\r\n\r\nwhat is this\r\n"})
    wide.append({character, '\0'});
  const Result result{vqsDocumentsCheck(wide.data(), wide.size(), nullptr)};
  EXPECT_EQ(vqsDocumentsStatus(result.get()), VQS_DOCUMENTS_ERRORS);
  const auto findings = findingsOf(result);
  ASSERT_EQ(findings.size(), 1U);
  EXPECT_EQ(findings[0]["code"], "P0064");
  EXPECT_EQ(findings[0]["line"], 3);
  EXPECT_EQ(findings[0]["column"], 1);
}

TEST(DocumentsInC, format_keeps_comments) {
  constexpr std::string_view kText = "{\"policies\":[] // none yet\n}";
  const Result result{vqsDocumentsFormat(kText.data(), kText.size())};
  ASSERT_EQ(vqsDocumentsStatus(result.get()), VQS_DOCUMENTS_DONE);
  EXPECT_EQ(outputOf(result), "{\n  \"policies\": [] // none yet\n}\n");
}

TEST(DocumentsInC, format_says_what_cannot_be_read) {
  const Result result{vqsDocumentsFormat("{", 1)};
  EXPECT_EQ(vqsDocumentsStatus(result.get()), VQS_DOCUMENTS_ERRORS);
  EXPECT_EQ(findingsOf(result).size(), 1U);
}

TEST(DocumentsInC, diff_says_what_differs) {
  std::string other{kDocument};
  other.replace(other.find("15000"), 5, "16000");
  const Result same{vqsDocumentsDiff(kDocument.data(), kDocument.size(), kDocument.data(), kDocument.size())};
  EXPECT_EQ(nlohmann::json::parse(outputOf(same))["same"], true);
  const Result result{vqsDocumentsDiff(kDocument.data(), kDocument.size(), other.data(), other.size())};
  ASSERT_EQ(vqsDocumentsStatus(result.get()), VQS_DOCUMENTS_DONE);
  const auto difference = nlohmann::json::parse(outputOf(result));
  EXPECT_EQ(difference["same"], false);
  ASSERT_EQ(difference["policies"].size(), 1U);
  EXPECT_EQ(difference["policies"][0]["change"], "changed");
  EXPECT_EQ(difference["policies"][0]["id"], 1);
  ASSERT_EQ(difference["policies"][0]["fields"].size(), 1U);
}

TEST(DocumentsInC, diff_says_which_of_the_two_cannot_be_read) {
  const Result result{vqsDocumentsDiff(kDocument.data(), kDocument.size(), "{", 1)};
  EXPECT_EQ(vqsDocumentsStatus(result.get()), VQS_DOCUMENTS_ERRORS);
  EXPECT_EQ(findingsOf(result).size(), 1U);
}

TEST(DocumentsInC, schema_is_json) {
  const Result result{vqsDocumentsSchema()};
  EXPECT_EQ(nlohmann::json::parse(outputOf(result))["$schema"], "http://json-schema.org/draft-07/schema#");
}

TEST(DocumentsInC, refuses_null_bytes_with_a_size) {
  const Result results[] = {
      Result{vqsDocumentsCheck(nullptr, 1, nullptr)}, Result{vqsDocumentsCompile(nullptr, 1, nullptr)},
      Result{vqsDocumentsDecompile(nullptr, 1)},      Result{vqsDocumentsFormat(nullptr, 1)},
      Result{vqsDocumentsDiff(nullptr, 1, "", 0)},    Result{vqsDocumentsDiff("", 0, nullptr, 1)}};
  for (const auto& result : results) {
    EXPECT_EQ(vqsDocumentsStatus(result.get()), VQS_DOCUMENTS_INVALID_PARAMETER);
    EXPECT_STREQ(vqsDocumentsFindings(result.get()), "[]");
    EXPECT_EQ(vqsDocumentsOutputSize(result.get()), 0U);
  }
}

TEST(DocumentsInC, refuses_options_that_do_not_exist) {
  VqsDocumentsOptions wrong[] = {options(), options(), options()};
  wrong[0].structureVersion = 3;
  wrong[1].target = 3;
  wrong[2].encoding = 2;
  for (const auto& taken : wrong)
    EXPECT_EQ(vqsDocumentsStatus(compile(kDocument, taken).get()), VQS_DOCUMENTS_INVALID_PARAMETER);
}

TEST(DocumentsInC, nothing_at_all_is_an_empty_document) {
  const Result result{vqsDocumentsCheck(nullptr, 0, nullptr)};
  EXPECT_EQ(vqsDocumentsStatus(result.get()), VQS_DOCUMENTS_ERRORS);
  EXPECT_EQ(findingsOf(result)[0]["line"], 1);
}

TEST(DocumentsInC, a_null_result_has_nothing_and_can_be_released) {
  EXPECT_EQ(vqsDocumentsStatus(nullptr), VQS_DOCUMENTS_INVALID_PARAMETER);
  EXPECT_STREQ(static_cast<const char*>(vqsDocumentsOutput(nullptr)), "");
  EXPECT_EQ(vqsDocumentsOutputSize(nullptr), 0U);
  EXPECT_STREQ(vqsDocumentsFindings(nullptr), "[]");
  vqsDocumentsRelease(nullptr);
}

}  // namespace
