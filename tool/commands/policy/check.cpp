// SPDX-License-Identifier: Apache-2.0
#include <fmt/format.h>

#include <algorithm>
#include <optional>

#include "tool/commands/command.h"
#include "tool/policies/any_policies.h"
#include "tool/policies/checked_policies.h"
#include "tool/policies/finding_json.h"
#include "tool/policies/sarif.h"
#include "tool/terminal/errors.h"
#include "tool/terminal/render.h"
#include "tool/terminal/text.h"

namespace tool {
namespace {

struct PolicyCheckArguments {
  std::vector<std::string> files;
  std::string format = "text";
  std::string failOn = "error";
  std::string structureVersion = "2";
  bool fix = false;
  bool allowUnknown = false;
};

FindingCount countAll(const std::vector<AnyPolicies>& checked) {
  FindingCount all;
  for (const auto& any : checked) {
    const auto count = countFindings(any.read.findings);
    all.errors += count.errors;
    all.warnings += count.warnings;
  }
  return all;
}

/// Nothing when there is a document whose policies could not be counted.
std::optional<std::size_t> countAllPolicies(const std::vector<AnyPolicies>& checked) {
  std::size_t all = 0;
  for (const auto& any : checked) {
    if (!any.read.policies) return std::nullopt;
    all += any.read.policies->policies.size();
  }
  return all;
}

/// "1 error, 1 warning in 16 policies"
std::string summaryOf(const std::vector<AnyPolicies>& checked) {
  std::string text = describe(countAll(checked));
  if (const auto policies = countAllPolicies(checked)) text += " in " + countOfPolicies(*policies);
  if (checked.size() > 1) text += fmt::format(", {} files", checked.size());
  return text + '\n';
}

std::string checkedAsText(const std::vector<AnyPolicies>& checked, const std::vector<std::string>& corrected) {
  std::string text;
  for (const auto& name : corrected) text += fmt::format("{} was corrected\n", printable(name));
  for (const auto& any : checked) text += renderFindings(any.source(), any.read.findings);
  return text + summaryOf(checked);
}

std::string checkedAsJson(const std::vector<AnyPolicies>& checked, const std::vector<std::string>& corrected) {
  auto files = nlohmann::ordered_json::array();
  for (const auto& any : checked) {
    const auto policies = policyCountOf(any);
    files.push_back({{"file", any.name},
                     {"form", any.form()},
                     {"policies", policies ? nlohmann::ordered_json(*policies) : nlohmann::ordered_json(nullptr)},
                     {"corrected", std::ranges::find(corrected, any.name) != corrected.end()},
                     {"findings", findingsAsJson(any.source(), any.read.findings)}});
  }
  const auto all = countAll(checked);
  return renderJson(
      {{"schema", kJsonSchema}, {"errors", all.errors}, {"warnings", all.warnings}, {"files", std::move(files)}});
}

std::string checkedAsAnnotations(const std::vector<AnyPolicies>& checked,
                                 const std::vector<std::string>& /*corrected*/) {
  std::string text;
  for (const auto& any : checked) text += renderAnnotations(any.source(), any.read.findings);
  return text;
}

std::string checkedAsSarif(const std::vector<AnyPolicies>& checked, const std::vector<std::string>& /*corrected*/) {
  std::vector<SarifFile> files;
  files.reserve(checked.size());
  for (const auto& any : checked)
    files.push_back({.path = any.input.isStandardInput() ? "stdin" : any.input.path,
                     .text = any.source().text,
                     .hasLines = any.source().hasLines,
                     .findings = &any.read.findings});
  return renderJson(asSarif(files));
}

struct CheckFormat {
  const char* name;
  std::string (*render)(const std::vector<AnyPolicies>& checked, const std::vector<std::string>& corrected);
};

constexpr CheckFormat kCheckFormats[] = {
    {.name = "text", .render = checkedAsText},
    {.name = "json", .render = checkedAsJson},
    {.name = "sarif", .render = checkedAsSarif},
    {.name = "github", .render = checkedAsAnnotations},
};

void runCheck(Context& context, const PolicyCheckArguments& arguments) {
  const auto& format = *std::ranges::find(kCheckFormats, arguments.format, &CheckFormat::name);
  const documents::ReadOptions options{.structureVersion = structureVersionOf(arguments.structureVersion),
                                       .allowUnknown = arguments.allowUnknown};
  std::vector<AnyPolicies> checked;
  std::vector<std::string> corrected;
  for (auto& input : readInputs(arguments.files)) checked.push_back(readChecked(std::move(input), options));
  if (arguments.fix) corrected = correct(checked, options);
  context.out = format.render(checked, corrected);
  const auto all = countAll(checked);
  const bool isGood = all.errors == 0 && (arguments.failOn == "error" || all.warnings == 0);
  context.exitCode = isGood ? ExitCode::kDone : ExitCode::kNo;
}

}  // namespace

void setUpPolicyCheck(CLI::App& command, Context& context) {
  const auto arguments = std::make_shared<PolicyCheckArguments>();
  command.add_option("DOC", arguments->files, "Documents, policy binaries or registry text; - for standard input")
      ->required()
      ->type_name("");
  addChoice(command, "--format", arguments->format, {"text", "json", "sarif", "github"},
            "How to print the findings: text (when left out), json, sarif (2.1.0) or github (workflow commands)");
  command.add_flag("--fix", arguments->fix, "First make the corrections that are certain, in the documents themselves");
  addChoice(command, "--fail-on", arguments->failOn, {"error", "warning"},
            "What makes the exit code 1: error (when left out) or warning");
  addReadOptions(command, arguments->structureVersion, arguments->allowUnknown);
  addOutputOption(command, context);
  command.footer(
      "Each finding has a code: \"vqs policy explain P0012\" tells more about it.\n\n"
      "Examples:\n"
      "  vqs policy check quiet.json\n"
      "  vqs policy check --fix --fail-on warning *.json\n"
      "  vqs policy check --format sarif -o findings.sarif fleet.json");
  command.callback([&context, arguments] { runCheck(context, *arguments); });
}

}  // namespace tool
