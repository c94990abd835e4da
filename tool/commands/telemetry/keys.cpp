// SPDX-License-Identifier: Apache-2.0
#include "tool/commands/command.h"
#include "tool/driver/key_table.h"
#include "tool/terminal/render.h"
#include "tool/terminal/text_table.h"

namespace tool {
namespace {

struct TelemetryKeysArguments {
  LogGeneration generation = LogGeneration::kPlain;
  bool json = false;
};

std::string keysAsJson(const KeyTable& table) {
  auto keys = nlohmann::ordered_json::array();
  for (const auto& key : table.keys())
    keys.push_back({{"KeyId", key.id},
                    {"ElementType", key.type},
                    {"ElementCount", key.count},
                    {"Param", key.param},
                    {"Name", key.name}});
  return renderJson({{"keys", keys}});
}

std::string keysAsText(const KeyTable& table) {
  TextTable text{{{"ID", Align::kRight},
                  {"NAME", Align::kLeft},
                  {"TYPE", Align::kLeft},
                  {"COUNT", Align::kRight},
                  {"PARAM", Align::kRight}}};
  for (const auto& key : table.keys())
    text.add({std::to_string(key.id), key.name, describeElementType(key.type), std::to_string(key.count),
              std::to_string(key.param)});
  return text.render();
}

void listKeys(Context& context, const TelemetryKeysArguments& arguments) {
  const KeyTable table{arguments.generation};
  context.out = arguments.json ? keysAsJson(table) : keysAsText(table);
}

}  // namespace

void setUpTelemetryKeys(CLI::App& command, Context& context) {
  const auto arguments = std::make_shared<TelemetryKeysArguments>();
  addExFlag(command, arguments->generation);
  command.add_flag("--json", arguments->json, "Print JSON with every field of every key instead of a table");
  addOutputOption(command, context);
  command.footer(
      "A key's value is COUNT elements of TYPE. The driver is not asked.\n\n"
      "Examples:\n"
      "  vqs telemetry keys\n"
      "  vqs telemetry keys --ex --json");
  command.callback([&context, arguments] { listKeys(context, *arguments); });
}

}  // namespace tool
