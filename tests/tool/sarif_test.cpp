// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <filesystem>

#include "tool/policies/sarif.h"

namespace tool {
namespace {

using documents::Finding;
using documents::Findings;
using documents::Rule;
using documents::Severity;
using Json = nlohmann::ordered_json;

Finding finding(Rule rule, documents::Span span, std::vector<documents::Suggestion> suggestions = {}) {
  return {.rule = rule,
          .severity = rule == Rule::kNotEnabled ? Severity::kWarning : Severity::kError,
          .span = span,
          .path = "policies[0].id",
          .sentence = "something is wrong",
          .suggestions = std::move(suggestions)};
}

Json logOf(const std::string& path, std::string_view text, const Findings& findings) {
  return asSarif({{.path = path, .text = text, .findings = &findings}});
}

std::string uriOf(const std::string& path) { return logOf(path, "", {})["runs"][0]["artifacts"][0]["location"]["uri"]; }

TEST(SarifLog, says_what_was_found_where) {
  const Findings findings = {finding(Rule::kNoSuchOption, {3, 2})};
  EXPECT_EQ(logOf("a b.json", "12\n3456\n", findings)["runs"][0]["results"], Json::parse(R"([{
    "ruleId": "P0012", "ruleIndex": 0, "level": "error", "message": { "text": "something is wrong." },
    "locations": [{
      "physicalLocation": {
        "artifactLocation": { "uri": "a%20b.json", "index": 0 },
        "region": { "startLine": 2, "startColumn": 1, "endLine": 2, "endColumn": 3 }
      },
      "logicalLocations": [{ "fullyQualifiedName": "policies[0].id" }]
    }]
  }])"));
}

TEST(SarifLog, names_the_tool_and_the_version_of_the_format) {
  const Json log = logOf("a.json", "", {});
  EXPECT_EQ(log["version"], "2.1.0");
  ASSERT_EQ(log["runs"].size(), 1U);
  EXPECT_EQ(log["runs"][0]["tool"]["driver"], Json::parse(R"({ "name": "vqs", "version": "9.8.7", "rules": [] })"));
  EXPECT_EQ(log["runs"][0]["columnKind"], "utf16CodeUnits");
  // Without the list of results nobody could tell that there are none.
  EXPECT_EQ(log["runs"][0]["results"], Json::array());
}

TEST(SarifLog, counts_columns_in_units_of_utf_16) {
  // The battery has four bytes and two units, the letter two bytes and one.
  const std::string_view text = "\xF0\x9F\x94\x8B\xC3\xA9 77";
  const Findings findings = {finding(Rule::kNoSuchOption, {7, 2})};
  EXPECT_EQ(logOf("a.json", text, findings)["runs"][0]["results"][0]["locations"][0]["physicalLocation"]["region"],
            Json::parse(R"({ "startLine": 1, "startColumn": 5, "endLine": 1, "endColumn": 7 })"));
}

TEST(SarifLog, lists_the_rules_of_its_results_once_and_by_their_numbers) {
  const Findings first = {finding(Rule::kNotEnabled, {}), finding(Rule::kNoSuchOption, {})};
  const Findings second = {finding(Rule::kUnexpected, {}), finding(Rule::kNotEnabled, {})};
  const Json run = asSarif(
      {{.path = "a", .text = "", .findings = &first}, {.path = "b", .text = "", .findings = &second}})["runs"][0];
  std::vector<std::string> rules;
  for (const Json& rule : run["tool"]["driver"]["rules"]) rules.push_back(rule["id"]);
  EXPECT_EQ(rules, (std::vector<std::string>{"P0001", "P0012", "P0104"}));
  std::vector<std::string> results;
  for (const Json& result : run["results"]) {
    results.push_back(result["ruleId"]);
    EXPECT_EQ(run["tool"]["driver"]["rules"][result["ruleIndex"].get<std::size_t>()]["id"], result["ruleId"]);
  }
  EXPECT_EQ(results, (std::vector<std::string>{"P0104", "P0012", "P0001", "P0104"}));
  EXPECT_EQ(run["results"][3]["locations"][0]["physicalLocation"]["artifactLocation"]["index"], 1);
}

TEST(SarifLog, describes_a_rule_and_its_level) {
  const Json log = logOf("a", "", {finding(Rule::kNotEnabled, {})});
  const Json& rule = log["runs"][0]["tool"]["driver"]["rules"][0];
  EXPECT_EQ(rule["defaultConfiguration"]["level"], "warning");
  EXPECT_FALSE(rule["shortDescription"]["text"].get<std::string>().empty());
  EXPECT_FALSE(rule["fullDescription"]["text"].get<std::string>().empty());
  EXPECT_NE(rule["help"]["text"].get<std::string>().find("vqs policy explain P0104"), std::string::npos);
  EXPECT_EQ(log["runs"][0]["results"][0]["level"], "warning");
}

TEST(SarifLog, offers_each_suggestion_as_a_fix) {
  const documents::Suggestion one{.sentence = "write \"b\"", .edits = {{{1, 1}, "b"}}, .isCertain = true};
  const documents::Suggestion two{.sentence = "write \"c\"", .edits = {{{0, 0}, "c"}, {{2, 1}, ""}}};
  const documents::Suggestion none{.sentence = "think", .edits = {}};
  const Findings findings = {finding(Rule::kNoSuchOption, {1, 1}, {one, two, none})};
  EXPECT_EQ(logOf("x", "\naz", findings)["runs"][0]["results"][0]["fixes"], Json::parse(R"([
    {
      "description": { "text": "write \"b\"." },
      "artifactChanges": [{
        "artifactLocation": { "uri": "x", "index": 0 },
        "replacements": [{
          "deletedRegion": { "startLine": 2, "startColumn": 1, "endLine": 2, "endColumn": 2 },
          "insertedContent": { "text": "b" }
        }]
      }]
    },
    {
      "description": { "text": "write \"c\"." },
      "artifactChanges": [{
        "artifactLocation": { "uri": "x", "index": 0 },
        "replacements": [
          {
            "deletedRegion": { "startLine": 1, "startColumn": 1, "endLine": 1, "endColumn": 1 },
            "insertedContent": { "text": "c" }
          },
          {
            "deletedRegion": { "startLine": 2, "startColumn": 2, "endLine": 2, "endColumn": 3 },
            "insertedContent": { "text": "" }
          }
        ]
      }]
    }
  ])"));
}

TEST(SarifLog, gives_no_region_of_what_has_no_lines) {
  const documents::Suggestion fix{.sentence = "write 0", .edits = {{{0, 1}, "0"}}};
  const Findings findings = {finding(Rule::kNotEnabled, {}, {fix})};
  const Json result =
      asSarif({{.path = "a.bin", .text = "$QTF", .hasLines = false, .findings = &findings}})["runs"][0]["results"][0];
  EXPECT_FALSE(result["locations"][0]["physicalLocation"].contains("region"));
  EXPECT_EQ(result["locations"][0]["logicalLocations"][0]["fullyQualifiedName"], "policies[0].id");
  EXPECT_FALSE(result.contains("fixes"));
}

TEST(SarifUri, is_relative_and_has_no_character_that_an_address_may_not_have) {
  EXPECT_EQ(uriOf("fleet.json"), "fleet.json");
  EXPECT_EQ(uriOf("./fleet/../laptop.json"), "laptop.json");
  EXPECT_EQ(uriOf("../fleet.json"), "../fleet.json");
  EXPECT_EQ(uriOf("a/b c.json"), "a/b%20c.json");
  EXPECT_EQ(uriOf("50%#1?.json"), "50%25%231%3F.json");
  EXPECT_EQ(uriOf("a:b.json"), "a%3Ab.json");
  EXPECT_EQ(uriOf("caf\xC3\xA9.json"), "caf%C3%A9.json");
}

TEST(SarifUri, of_an_absolute_path_names_its_scheme) {
  const auto folder = std::filesystem::current_path().root_path() / "a b.json";
  const std::string uri = uriOf(folder.string());
  EXPECT_TRUE(uri.starts_with("file:///")) << uri;
  EXPECT_TRUE(uri.ends_with("/a%20b.json")) << uri;
}

}  // namespace
}  // namespace tool
