// SPDX-License-Identifier: Apache-2.0
#include "tool/commands/command.h"
#include "tool/policies/difference_text.h"
#include "tool/terminal/errors.h"
#include "tool/terminal/render.h"

namespace tool {
namespace {

struct PolicyDiffArguments {
  std::string first;
  std::string second;
  bool json = false;
};

void runDiff(Context& context, const PolicyDiffArguments& arguments) {
  if (arguments.first == "-" && arguments.second == "-")
    throw UsageError{"\"-\" is there twice, standard input can be read once"};
  const auto first = readAnyPolicies(context, arguments.first);
  const auto second = readAnyPolicies(context, arguments.second);
  const DifferenceScope scope;
  const auto difference = compare(first, second);
  context.out = arguments.json ? renderJson(differenceAsJson(first, second, difference, scope))
                               : renderDifference(first, second, difference, scope);
  context.exitCode = isSame(difference, scope) ? ExitCode::kDone : ExitCode::kNo;
}

}  // namespace

void setUpPolicyDiff(CLI::App& command, Context& context) {
  const auto arguments = std::make_shared<PolicyDiffArguments>();
  command
      .add_option("A", arguments->first,
                  "A document, a policy binary or registry text; - for standard input, store:asm for a store")
      ->required()
      ->type_name("");
  command.add_option("B", arguments->second, "What to compare it with, in any of these forms")
      ->required()
      ->type_name("");
  command.add_flag("--json", arguments->json, "Print JSON instead of words");
  addOutputOption(command, context);
  command.footer(
      "The exit code is 0 when both say the same, and 1 when they differ. Versions are compared\n"
      "where both sides have one: of the stores, asm has.\n\n"
      "Examples:\n"
      "  vqs policy diff old.json new.json\n"
      "  vqs policy diff laptop.json store:asm");
  command.callback([&context, arguments] { runDiff(context, *arguments); });
}

}  // namespace tool
