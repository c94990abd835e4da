// SPDX-License-Identifier: Apache-2.0
#include "tool/policies/sarif.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>

#include "tool/system/paths.h"

namespace tool {
namespace {

using documents::Finding;
using documents::Rule;
using documents::Severity;
using Json = nlohmann::ordered_json;
using Lines = std::optional<documents::LineTable>;

constexpr const char* kSchema =
    "https://docs.oasis-open.org/sarif/sarif/v2.1.0/errata01/os/schemas/sarif-schema-2.1.0.json";

Json message(std::string_view text) { return {{"text", text}}; }

/// A finding's sentence has no full stop.
Json sentence(std::string_view text) { return message(fmt::format("{}.", text)); }

const char* levelOf(Severity severity) { return severity == Severity::kError ? "error" : "warning"; }

constexpr bool isUnreserved(char character) {
  const bool isLetter = (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
  return isLetter || (character >= '0' && character <= '9') || character == '-' || character == '.' ||
         character == '_' || character == '~';
}

/// The address of a file. A relative one is relative to where the log is read, as code hosts take it.
std::string uriOf(const std::string& typed) {
  const auto path = toPath(typed).lexically_normal();
  std::string uri;
  for (const char8_t byte : path.generic_u8string()) {
    const auto character = static_cast<char>(byte);
    // Only an absolute path may have a colon, behind its drive.
    if (isUnreserved(character) || character == '/' || (character == ':' && path.is_absolute()))
      uri += character;
    else
      uri += fmt::format("%{:02X}", static_cast<unsigned>(static_cast<unsigned char>(character)));
  }
  if (!path.is_absolute()) return uri;
  return (uri.starts_with('/') ? "file://" : "file:///") + uri;
}

/// Lines and columns from 1 on, in units of UTF-16; the end is behind the last one.
Json regionOf(const documents::LineTable& lines, const documents::Span& span) {
  const auto start = lines.positionOf(span.offset);
  const auto end = lines.positionOf(span.end());
  return {
      {"startLine", start.line}, {"startColumn", start.unit + 1}, {"endLine", end.line}, {"endColumn", end.unit + 1}};
}

class Log {
 public:
  explicit Log(const std::vector<SarifFile>& files) {
    for (const SarifFile& file : files) addRules(*file.findings);
    std::ranges::sort(rules_);
    for (const SarifFile& file : files) addFile(file);
  }

  [[nodiscard]] Json run() {
    Json driver = {{"name", "vqs"}, {"version", VQS_TOOL_VERSION}, {"rules", Json::array()}};
    for (const Rule rule : rules_) driver["rules"].push_back(ruleAsJson(rule));
    return {{"tool", {{"driver", std::move(driver)}}},
            {"columnKind", "utf16CodeUnits"},
            {"artifacts", std::move(artifacts_)},
            {"results", std::move(results_)}};
  }

 private:
  void addRules(const documents::Findings& findings) {
    for (const Finding& finding : findings)
      if (std::ranges::find(rules_, finding.rule) == rules_.end()) rules_.push_back(finding.rule);
  }

  void addFile(const SarifFile& file) {
    const Json location = {{"uri", uriOf(file.path)}, {"index", artifacts_.size()}};
    artifacts_.push_back({{"location", {{"uri", uriOf(file.path)}}}});
    const Lines lines = file.hasLines ? Lines{file.text} : std::nullopt;
    for (const Finding& finding : *file.findings) results_.push_back(resultOf(location, lines, finding));
  }

  [[nodiscard]] Json resultOf(const Json& artifact, const Lines& lines, const Finding& finding) const {
    Json physical = {{"artifactLocation", artifact}};
    if (lines) physical["region"] = regionOf(*lines, finding.span);
    Json location = {{"physicalLocation", std::move(physical)}};
    if (!finding.path.empty()) location["logicalLocations"] = {{{"fullyQualifiedName", finding.path}}};
    Json result = {{"ruleId", documents::codeOf(finding.rule)},
                   {"ruleIndex", std::ranges::lower_bound(rules_, finding.rule) - rules_.begin()},
                   {"level", levelOf(finding.severity)},
                   {"message", sentence(finding.sentence)},
                   {"locations", Json::array({std::move(location)})}};
    Json fixes = lines ? fixesOf(artifact, *lines, finding) : Json::array();
    if (!fixes.empty()) result["fixes"] = std::move(fixes);
    return result;
  }

  static Json fixesOf(const Json& artifact, const documents::LineTable& lines, const Finding& finding) {
    Json fixes = Json::array();
    for (const auto& suggestion : finding.suggestions) {
      Json replacements = Json::array();
      for (const auto& edit : suggestion.edits)
        replacements.push_back(
            {{"deletedRegion", regionOf(lines, edit.span)}, {"insertedContent", message(edit.replacement)}});
      if (replacements.empty()) continue;
      Json change = {{"artifactLocation", artifact}, {"replacements", std::move(replacements)}};
      fixes.push_back(
          {{"description", sentence(suggestion.sentence)}, {"artifactChanges", Json::array({std::move(change)})}});
    }
    return fixes;
  }

  static Json ruleAsJson(Rule rule) {
    const auto& row = documents::rowOf(rule);
    const std::string code = documents::codeOf(rule);
    const std::string help = fmt::format("{}\n\n\"vqs policy explain {}\" shows an example.", row.explanation, code);
    return {{"id", code},
            {"shortDescription", message(row.title)},
            {"fullDescription", message(row.explanation)},
            {"help", message(help)},
            {"defaultConfiguration", {{"level", levelOf(row.severity)}}}};
  }

  /// by their numbers, once all are there
  std::vector<Rule> rules_;
  Json artifacts_ = Json::array();
  Json results_ = Json::array();
};

}  // namespace

Json asSarif(const std::vector<SarifFile>& files) {
  return {{"$schema", kSchema}, {"version", "2.1.0"}, {"runs", Json::array({Log{files}.run()})}};
}

}  // namespace tool
