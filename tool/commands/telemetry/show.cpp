// SPDX-License-Identifier: Apache-2.0
#include "tool/commands/command.h"
#include "tool/driver/telemetry_log.h"
#include "tool/terminal/render.h"
#include "tool/terminal/text_table.h"

namespace tool {
namespace {

struct TelemetryShowArguments {
  LogGeneration generation = LogGeneration::kPlain;
  bool json = false;
};

std::string readingAsJson(const Reading& reading) {
  auto values = nlohmann::ordered_json::object();
  for (const auto& value : reading.values) values[value.key().name] = value.json();
  return renderJson({{"values", values}});
}

std::string readingAsText(const Reading& reading) {
  if (reading.values.empty()) return reading.fault.empty() ? "The driver's log holds no keys.\n" : "";
  TextTable table{{{"ID", Align::kRight}, {"NAME", Align::kLeft}, {"VALUE", Align::kLeft}}};
  for (const auto& value : reading.values) table.add({std::to_string(value.key().id), value.key().name, value.text()});
  return table.render();
}

void showReading(Context& context, const TelemetryShowArguments& arguments) {
  const KeyTable table{arguments.generation};
  Reading reading;
  withDriver(context,
             [&](const Session& session) { reading = TelemetryLog{session, arguments.generation, table}.read(); });
  // What could be read is shown, whether it is all or not.
  context.output.write(arguments.json ? readingAsJson(reading) : readingAsText(reading));
  reading.requireWhole();
}

}  // namespace

void setUpTelemetryShow(CLI::App& command, Context& context) {
  const auto arguments = std::make_shared<TelemetryShowArguments>();
  addExFlag(command, arguments->generation);
  command.add_flag("--json", arguments->json, "Print JSON instead of a table");
  addOutputOption(command, context);
  command.footer(
      "Bytes are shown as text, or else in hexadecimal; 97*0 stands for 97 zeros in a row. A log\n"
      "that cannot be read to its end is shown as far as it goes, and the exit code is 2.\n\n"
      "Examples:\n"
      "  vqs telemetry show\n"
      "  vqs telemetry show --ex --json");
  command.callback([&context, arguments] { showReading(context, *arguments); });
}

}  // namespace tool
