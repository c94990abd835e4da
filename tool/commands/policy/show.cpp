// SPDX-License-Identifier: Apache-2.0
#include <fmt/format.h>

#include "tool/commands/command.h"
#include "tool/policies/any_policies.h"
#include "tool/policies/finding_json.h"
#include "tool/policies/policy_text.h"
#include "tool/terminal/render.h"
#include "tool/terminal/text.h"

namespace tool {
namespace {

struct PolicyShowArguments {
  std::string file;
  bool json = false;
};

std::string shownAsJson(const AnyPolicies& any) {
  const auto& policies = any.policies();
  return renderJson(
      {{"schema", kJsonSchema},
       {"name", any.name},
       {"form", any.form()},
       {"version", any.hasVersion ? nlohmann::ordered_json(versionOf(policies)) : nlohmann::ordered_json(nullptr)},
       {"policies", policiesAsJson(policies)}});
}

void showPolicies(Context& context, const PolicyShowArguments& arguments) {
  const auto any = readAnyPolicies(context, arguments.file);
  context.out = arguments.json ? shownAsJson(any) : renderHeadline(any) + renderInWords(any.policies());
}

}  // namespace

void setUpPolicyShow(CLI::App& command, Context& context) {
  const auto arguments = std::make_shared<PolicyShowArguments>();
  command
      .add_option("FILE", arguments->file,
                  "A document, a policy binary or registry text; - for standard input, store:asm for a store")
      ->required()
      ->type_name("");
  command.add_flag("--json", arguments->json, "Print JSON with every field instead of words");
  addOutputOption(command, context);
  command.footer(
      "Comparisons have numbers, \"op 3\"; where only one is possible it is said as \"is\".\n\n"
      "Examples:\n"
      "  vqs policy show laptop-r5.bin\n"
      "  vqs policy show store:asm --json");
  command.callback([&context, arguments] { showPolicies(context, *arguments); });
}

}  // namespace tool
