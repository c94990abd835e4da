// SPDX-License-Identifier: Apache-2.0
#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <optional>

#include "tool/commands/command.h"
#include "tool/driver/telemetry_log.h"
#include "tool/system/process.h"
#include "tool/terminal/errors.h"
#include "tool/terminal/live_output.h"
#include "tool/terminal/numbers.h"
#include "tool/terminal/text.h"

namespace tool {
namespace {

struct TelemetryWatchArguments {
  std::vector<std::string> keys;
  LogGeneration generation = LogGeneration::kPlain;
  std::string every = "1000";
  std::optional<std::string> count;
};

struct WatchPlan {
  KeyTable table;
  std::vector<vqs::KeyRow> keys;
  std::chrono::milliseconds interval;
  /// 0 for no end
  std::uint32_t readings;
};

std::vector<std::string> usualKeys(LogGeneration generation) {
  if (generation == LogGeneration::kEx)
    return {"PowerSource", "BatChargeLevel", "BatChargeRate", "PowerSliderPosition",
            "LidState",    "UserPresent",    "AmbientLight",  "DisplayBrightness",
            "SkinTemp",    "ApuPower"};
  return {"PowerSource", "BatteryChargeLevel", "BatteryChargeRate", "PowerMode", "LidClosed",
          "UserPresent", "ambientLight",       "DisplayBrightness", "skinTemp",  "apuPower"};
}

std::uint32_t parseWithin(const char* option, const std::string& text, std::uint32_t lowest, std::uint32_t highest) {
  const auto number = parseNumber<std::uint32_t>(text);
  if (number && *number >= lowest && *number <= highest) return *number;
  throw UsageError{fmt::format("{} {}: a number of {} to {} is expected", option, inQuotes(text), lowest, highest)};
}

WatchPlan planWatch(const TelemetryWatchArguments& arguments) {
  WatchPlan plan{.table = KeyTable{arguments.generation}, .keys = {}, .interval = {}, .readings = 0};
  const auto names = arguments.keys.empty() ? usualKeys(arguments.generation) : arguments.keys;
  for (const auto& name : names) plan.keys.push_back(plan.table.named(name));
  plan.interval = std::chrono::milliseconds{parseWithin("--every", arguments.every, 10, 3600000)};
  if (arguments.count) plan.readings = parseWithin("--count", *arguments.count, 1, 0xFFFFFFFF);
  return plan;
}

std::vector<ShownValue> shownValues(const Reading& reading, const std::vector<vqs::KeyRow>& keys) {
  std::vector<ShownValue> values;
  for (const auto& key : keys) {
    const auto* found = reading.find(key.id);
    values.push_back({.name = key.name, .value = found != nullptr ? std::optional{found->text()} : std::nullopt});
  }
  return values;
}

void watchLog(const Session& session, Output& target, LogGeneration generation, const WatchPlan& plan) {
  const TelemetryLog log{session, generation, plan.table};
  LiveOutput output{target};
  for (std::uint64_t number = 1;; ++number) {
    const auto reading = log.read();
    output.show(shownValues(reading, plan.keys));
    reading.requireWhole();
    if (number == plan.readings) return;
    if (platform::waitUnlessInterrupted(plan.interval)) continue;
    output.leave();
    return;
  }
}

void watchKeys(Context& context, const TelemetryWatchArguments& arguments) {
  const auto plan = planWatch(arguments);
  // Before the driver is opened, whose threads are to leave the interruption alone.
  platform::catchInterruptions();
  withDriver(context, [&](const Session& session) { watchLog(session, context.output, arguments.generation, plan); });
}

}  // namespace

void setUpTelemetryWatch(CLI::App& command, Context& context) {
  const auto arguments = std::make_shared<TelemetryWatchArguments>();
  command.add_option("KEY", arguments->keys, "Keys to show, by name or id; ten of general interest when left out")
      ->type_name("");
  addExFlag(command, arguments->generation);
  command.add_option("--every", arguments->every, "Milliseconds between readings, 10 to 3600000; 1000 when left out")
      ->type_name("MS");
  command.add_option("--count", arguments->count, "End after so many readings")->type_name("N");
  addOutputOption(command, context);
  command.footer(
      "On a terminal the values change in place. Elsewhere each reading is a line, as in\n"
      "PowerSource=DC BatteryChargeLevel=80, where - stands for a key that the log does not hold.\n"
      "The simulated driver serves one process at a time: other commands wait, ten seconds at most.\n\n"
      "Examples:\n"
      "  vqs telemetry watch\n"
      "  vqs telemetry watch PowerSource BatteryChargeLevel --every 5000\n"
      "  vqs telemetry watch skinTemp --count 60 -o skin.txt");
  command.callback([&context, arguments] { watchKeys(context, *arguments); });
}

}  // namespace tool
