// SPDX-License-Identifier: Apache-2.0
#include <fmt/format.h>

#include <algorithm>
#include <optional>

#include "tool/commands/command.h"
#include "tool/driver/stores.h"
#include "tool/policies/finding_json.h"
#include "tool/policies/policy_text.h"
#include "tool/terminal/errors.h"
#include "tool/terminal/numbers.h"
#include "tool/terminal/render.h"
#include "tool/terminal/text.h"

namespace tool {
namespace {

struct StoreShowArguments {
  std::string store;
  std::optional<std::string> id;
  bool json = false;
};

std::optional<std::uint32_t> parseId(const std::optional<std::string>& text) {
  if (!text) return std::nullopt;
  const auto id = parseNumber<std::uint32_t>(*text);
  if (!id)
    throw UsageError{
        fmt::format("{} is not the id of a policy, which is a number of 0 to 4294967295", inQuotes(*text))};
  return id;
}

/// The policies of a store, or the one of an id.
documents::PolicySet selectPolicies(const Store& store, std::span<const VqsPolicyV2> stored,
                                    std::optional<std::uint32_t> id) {
  documents::PolicySet set;
  for (const auto& record : stored)
    if (!id || record.id == *id) set.policies.push_back(documents::fromRecord(record));
  if (id && set.policies.empty()) throw Failure{fmt::format("the {} store has no policy of id {}", store.title, *id)};
  return set;
}

std::string storeInWords(const Store& store, const documents::PolicySet& set) {
  if (set.policies.empty()) return fmt::format("The {} store is empty.\n", store.title);
  return fmt::format("{} store: {}\n", store.title, countOfPolicies(set.policies.size())) + renderInWords(set);
}

void showStore(Context& context, const StoreShowArguments& arguments) {
  const auto& store = storeNamed(arguments.store);
  const auto id = parseId(arguments.id);
  StoredPolicies stored{0};
  withDriver(context, [&](const Session& session) { stored = readPolicies(session, store); });
  const auto set = selectPolicies(store, stored.policies(), id);
  if (arguments.json)
    context.out = renderJson({{"schema", kJsonSchema}, {"store", store.name}, {"policies", policiesAsJson(set)}});
  else
    context.out = id ? renderInWords(set.policies.front()) : storeInWords(store, set);
}

}  // namespace

void setUpStoreShow(CLI::App& command, Context& context) {
  const auto arguments = std::make_shared<StoreShowArguments>();
  addStoreArgument(command, arguments->store);
  command.add_option("ID", arguments->id, "The id of one policy; all are shown when it is left out")->type_name("");
  command.add_flag("--json", arguments->json, "Print JSON with every field instead of words");
  addOutputOption(command, context);
  command.footer(
      "Examples:\n"
      "  vqs store show asm\n"
      "  vqs store show asm 10 --json");
  command.callback([&context, arguments] { showStore(context, *arguments); });
}

}  // namespace tool
