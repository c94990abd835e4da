// SPDX-License-Identifier: Apache-2.0
#include <fmt/format.h>

#include <optional>

#include "tool/commands/command.h"
#include "tool/driver/override_keys.h"
#include "tool/terminal/errors.h"
#include "tool/terminal/render.h"
#include "tool/terminal/text.h"
#include "tool/terminal/text_table.h"

namespace tool {
namespace {

struct OverrideArguments {
  std::optional<std::string> key;
  std::optional<std::string> value;
  bool clear = false;
  bool json = false;
};

std::string overridesAsJson(const std::vector<OverrideKey>& keys) {
  auto array = nlohmann::ordered_json::array();
  for (const auto& key : keys)
    array.push_back({{"key", key.key},
                     {"name", key.name},
                     {"type", key.type},
                     {"lowest", key.lowest},
                     {"highest", key.highest},
                     {"value", key.value},
                     {"overridden", key.overridden}});
  return renderJson({{"keys", array}});
}

std::string overridesAsText(const std::vector<OverrideKey>& keys) {
  if (keys.empty()) return "The driver has no keys that can be overridden.\n";
  TextTable table{{{"KEY", Align::kRight},
                   {"NAME", Align::kLeft},
                   {"RANGE", Align::kLeft},
                   {"VALUE", Align::kRight},
                   {"OVERRIDDEN", Align::kLeft}}};
  for (const auto& key : keys)
    table.add({std::to_string(key.key), printable(key.name), fmt::format("{} to {}", key.lowest, key.highest),
               std::to_string(key.value), yesOrNo(key.overridden)});
  return table.render();
}

std::string list(const std::vector<OverrideKey>& keys, bool json) {
  return json ? overridesAsJson(keys) : overridesAsText(keys);
}

std::string lift(const Session& session, const OverrideKey& key) {
  liftOverride(session, key);
  return fmt::format("{} {} overridden.\n", printable(key.name), key.overridden ? "is no longer" : "was not");
}

std::string set(const Session& session, const OverrideKey& key, const std::string& text) {
  const auto value = parseOverrideValue(key, text);
  setOverride(session, key, value);
  return fmt::format("{} is overridden with {} now.\n", printable(key.name), value);
}

std::string workOnOverrides(const Session& session, const OverrideArguments& arguments) {
  if (!arguments.key) return list(readOverrideKeys(session), arguments.json);
  const auto key = readOverrideKeyNamed(session, *arguments.key);
  if (arguments.clear) return lift(session, key);
  if (arguments.value) return set(session, key, *arguments.value);
  return list({key}, arguments.json);
}

void runOverride(Context& context, const OverrideArguments& arguments) {
  if (arguments.clear && !arguments.key) throw UsageError{"--clear needs a KEY"};
  withDriver(context, [&](const Session& session) { context.out = workOnOverrides(session, arguments); });
}

}  // namespace

void setUpOverride(CLI::App& command, Context& context) {
  const auto arguments = std::make_shared<OverrideArguments>();
  command.add_option("KEY", arguments->key, "The input, by name or id")->type_name("");
  auto* value =
      command.add_option("VALUE", arguments->value, "The value to set, decimal or 0x and hexadecimal")->type_name("");
  auto* clear =
      command.add_flag("--clear", arguments->clear, "Let the input have its own value again")->excludes(value);
  command.add_flag("--json", arguments->json, "List as JSON")->excludes(value)->excludes(clear);
  addOutputOption(command, context)->excludes(value)->excludes(clear);
  command.footer(
      "Without VALUE or --clear the inputs are listed, or KEY alone. An override stays in force\n"
      "until it is cleared.\n\n"
      "Examples:\n"
      "  vqs override\n"
      "  vqs override PowerSource 1\n"
      "  vqs override BatteryChargeRate -15000\n"
      "  vqs override PowerSource --clear");
  command.callback([&context, arguments] { runOverride(context, *arguments); });
}

}  // namespace tool
