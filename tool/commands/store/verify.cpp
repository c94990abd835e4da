// SPDX-License-Identifier: Apache-2.0
#include "tool/commands/command.h"
#include "tool/driver/stores.h"
#include "tool/policies/difference_text.h"
#include "tool/policies/finding_json.h"
#include "tool/terminal/render.h"

namespace tool {
namespace {

struct StoreVerifyArguments {
  std::string store;
  std::string file;
  bool order = false;
  bool json = false;
};

void runVerify(Context& context, const StoreVerifyArguments& arguments) {
  const auto& store = storeNamed(arguments.store);
  const auto wanted = readAnyPolicies(context, arguments.file);
  AnyPolicies held;
  withDriver(context, [&](const Session& session) { held = readStorePolicies(session, store); });
  const DifferenceScope scope{.withOrder = arguments.order};
  const auto difference = compare(wanted, held);
  if (arguments.json) {
    nlohmann::ordered_json json = {{"schema", kJsonSchema}};
    json.update(differenceAsJson(wanted, held, difference, scope));
    context.out = renderJson(json);
  } else {
    context.out = renderDifference(wanted, held, difference, scope);
  }
  context.exitCode = isSame(difference, scope) ? ExitCode::kDone : ExitCode::kNo;
}

}  // namespace

void setUpStoreVerify(CLI::App& command, Context& context) {
  const auto arguments = std::make_shared<StoreVerifyArguments>();
  addStoreArgument(command, arguments->store);
  command
      .add_option("FILE", arguments->file,
                  "What the store should hold: a document, a policy binary or registry text; - for standard input")
      ->required()
      ->type_name("");
  command.add_flag("--order", arguments->order, "Another order of the same policies is a difference too");
  command.add_flag("--json", arguments->json, "Print JSON instead of words");
  addOutputOption(command, context);
  command.footer(
      "The exit code is 0 when the store holds what the file says, and 1 when they differ. Another\n"
      "order is mentioned. Only the Asm store has a version to compare, unless it is empty.\n\n"
      "Examples:\n"
      "  vqs store verify asm laptop.json\n"
      "  vqs store verify pb laptop-r5.bin --order");
  command.callback([&context, arguments] { runVerify(context, *arguments); });
}

}  // namespace tool
