// SPDX-License-Identifier: Apache-2.0
#include <fmt/format.h>

#include <array>

#include <vqs/platform.h>
#include "tool/commands/command.h"
#include "tool/driver/driver_session.h"
#include "tool/terminal/errors.h"
#include "tool/terminal/numbers.h"
#include "tool/terminal/render.h"
#include "tool/terminal/text_table.h"

namespace tool {
namespace {

struct Sensor {
  std::uint32_t status;
  std::array<std::uint32_t, 3> words;
};

using Sensors = std::array<Sensor, 4>;

constexpr std::size_t kSensorSize = 16;
static_assert(sizeof(VqsSensorData) == kSensorSize * 4);

Sensors readSensors(const Session& session) {
  VqsSensorData data{};
  require(vqsGetSensorData(session.get(), &data), "the sensors cannot be read");
  Sensors sensors{};
  for (std::size_t i = 0; i < sensors.size(); ++i) {
    const auto record = std::span{data.data}.subspan(i * kSensorSize, kSensorSize);
    sensors[i].status = numberAt<std::uint32_t>(record, 0);
    for (std::size_t word = 0; word < 3; ++word)
      sensors[i].words[word] = numberAt<std::uint32_t>(record, 4 + word * sizeof(std::uint32_t));
  }
  return sensors;
}

/// A word whose highest bit is set may be a negative number.
std::string describeWord(std::uint32_t word) {
  const auto number = static_cast<std::int32_t>(word);
  return number < 0 ? fmt::format("{} ({})", word, number) : std::to_string(word);
}

std::string sensorsAsJson(const Sensors& sensors) {
  auto array = nlohmann::ordered_json::array();
  for (const auto& sensor : sensors) array.push_back({{"status", sensor.status}, {"words", sensor.words}});
  return renderJson({{"sensors", array}});
}

std::string sensorsAsText(const Sensors& sensors) {
  TextTable table{{{"SENSOR", Align::kRight},
                   {"STATUS", Align::kRight},
                   {"WORD 0", Align::kRight},
                   {"WORD 1", Align::kRight},
                   {"WORD 2", Align::kRight}}};
  for (std::size_t i = 0; i < sensors.size(); ++i)
    table.add({std::to_string(i), std::to_string(sensors[i].status), describeWord(sensors[i].words[0]),
               describeWord(sensors[i].words[1]), describeWord(sensors[i].words[2])});
  return table.render();
}

void showSensors(Context& context, bool json) {
  Sensors sensors{};
  withDriver(context, [&](const Session& session) { sensors = readSensors(session); });
  context.out = json ? sensorsAsJson(sensors) : sensorsAsText(sensors);
}

}  // namespace

void setUpSensors(CLI::App& command, Context& context) {
  const auto json = std::make_shared<bool>(false);
  command.add_flag("--json", *json, "Print JSON instead of a table");
  addOutputOption(command, context);
  command.footer("A word that may be negative is followed by the negative number in the table.");
  command.callback([&context, json] { showSensors(context, *json); });
}

}  // namespace tool
