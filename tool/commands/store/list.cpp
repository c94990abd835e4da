// SPDX-License-Identifier: Apache-2.0
#include <fmt/format.h>

#include "tool/commands/command.h"
#include "tool/driver/stores.h"
#include "tool/terminal/render.h"
#include "tool/terminal/text.h"

namespace tool {
namespace {

struct StoreListArguments {
  std::string store;
  bool json = false;
};

std::string asText(const Store& store, std::span<const VqsPolicyV2> policies) {
  if (policies.empty()) return fmt::format("The {} store is empty.\n", store.title);
  return fmt::format("{} store: {}\n\n{}", store.title, countOfPolicies(policies.size()), renderTable(policies));
}

void list(Context& context, const StoreListArguments& arguments) {
  const auto& store = storeNamed(arguments.store);
  StoredPolicies stored{0};
  withDriver(context, [&](const Session& session) { stored = readPolicies(session, store); });
  const auto policies = stored.policies();
  context.out =
      arguments.json ? renderJson({{"store", store.name}, {"policies", toJson(policies)}}) : asText(store, policies);
}

}  // namespace

void setUpStoreList(CLI::App& command, Context& context) {
  const auto arguments = std::make_shared<StoreListArguments>();
  addStoreArgument(command, arguments->store);
  command.add_flag("--json", arguments->json, "Print JSON with every field of every policy instead of a table");
  addOutputOption(command, context);
  command.footer(
      "Examples:\n"
      "  vqs store list asm\n"
      "  vqs store list pb --json");
  command.callback([&context, arguments] { list(context, *arguments); });
}

}  // namespace tool
