// SPDX-License-Identifier: Apache-2.0
#include <fmt/format.h>

#include <array>

#include <vqs/platform.h>
#include "tool/commands/command.h"
#include "tool/driver/telemetry_log.h"
#include "tool/terminal/errors.h"
#include "tool/terminal/render.h"
#include "tool/terminal/text_table.h"

namespace tool {
namespace {

struct Battery {
  std::uint32_t temperature = 0;
  std::array<std::uint16_t, 4> limits{};
  std::int64_t chargeLevel = 0;
  std::int64_t chargeRate = 0;
  std::int64_t fullCapacity = 0;
  std::int64_t designedCapacity = 0;
};

Battery readBattery(const Session& session) {
  Battery battery;
  require(vqsGetBatteryTemperature(&battery.temperature), "the battery's temperature cannot be read");
  auto& limits = battery.limits;
  require(vqsGetBatteryLimits(session.get(), limits.data(), &limits[1], &limits[2], &limits[3]),
          "the battery's limits cannot be read");
  const KeyTable table{LogGeneration::kPlain};
  const auto reading = TelemetryLog{session, LogGeneration::kPlain, table}.read();
  const auto numberOf = [&](const char* name) { return reading.number(table.named(name)); };
  battery.chargeLevel = numberOf("BatteryChargeLevel");
  battery.chargeRate = numberOf("BatteryChargeRate");
  battery.fullCapacity = numberOf("FullBatteryCapacity");
  battery.designedCapacity = numberOf("DesignedBatteryCapacity");
  return battery;
}

std::string batteryAsJson(const Battery& battery) {
  return renderJson({{"temperature", battery.temperature},
                     {"limits", battery.limits},
                     {"chargeLevel", battery.chargeLevel},
                     {"chargeRate", battery.chargeRate},
                     {"fullCapacity", battery.fullCapacity},
                     {"designedCapacity", battery.designedCapacity}});
}

std::string batteryAsText(const Battery& battery) {
  return fmt::format(
      "charge level       {} %\n"
      "charge rate        {} mW\n"
      "full capacity      {} mWh\n"
      "designed capacity  {} mWh\n"
      "temperature        {}\n"
      "limits             {}\n",
      battery.chargeLevel, battery.chargeRate, battery.fullCapacity, battery.designedCapacity, battery.temperature,
      fmt::join(battery.limits, ", "));
}

void showBattery(Context& context, bool json) {
  Battery battery;
  withDriver(context, [&](const Session& session) { battery = readBattery(session); });
  context.out = json ? batteryAsJson(battery) : batteryAsText(battery);
}

}  // namespace

void setUpBattery(CLI::App& command, Context& context) {
  const auto json = std::make_shared<bool>(false);
  command.add_flag("--json", *json, "Print JSON instead of text");
  addOutputOption(command, context);
  command.footer(
      "Temperature and limits are shown as the driver answers them. The simulated driver's are\n"
      "hundredths of a degree Celsius, and two windows: of the charge in %, of the temperature\n"
      "in degrees Celsius. Charge and capacities are those of the telemetry log.");
  command.callback([&context, json] { showBattery(context, *json); });
}

}  // namespace tool
