// SPDX-License-Identifier: Apache-2.0
#include "simulator/model/sensors.h"

#include "simulator/model/context.h"
#include "simulator/model/simulated_platform.h"

namespace simulator {
namespace {

struct SensorUpdate {
  std::uint32_t sensor;
  std::uint32_t words[3];
};
static_assert(sizeof(SensorUpdate) == 16);

enum Sensor : std::uint32_t { kLight = 0, kAcceleration = 1, kHinge = 2 };

/// A laptop at rest: 1 g downwards, opened to 110 degrees.
constexpr std::uint32_t kOneG = 1000;
constexpr std::uint32_t kOpenAngle = 110;

SensorReading ownReading(const Settings& settings, std::uint32_t sensor) {
  const Platform platform{settings};
  switch (sensor) {
    case kLight:
      return {.status = 1, .words = {static_cast<std::uint32_t>(platform.ambientLight()), 0, 0}};
    case kAcceleration:
      return {.status = 1, .words = {0, 0, 0 - kOneG}};
    case kHinge:
      return {.status = 1, .words = {platform.lidClosed() ? 0 : kOpenAngle, 0, 0}};
    default:
      return {};
  }
}

}  // namespace

SensorReading readSensor(const Settings& settings, std::uint32_t sensor) {
  const auto& sensors = settings.sensors;
  if (sensors.isSimulated[sensor] == 0) return ownReading(settings, sensor);
  const auto& words = sensors.words[sensor];
  return {.status = 1, .words = {words[0], words[1], words[2]}};
}

Answer answerSensorData(const Context& context, const Request& request) {
  if (!request.hasLengths(0, kSensors * sizeof(SensorReading))) return failed(Outcome::kWrongLength);
  for (std::uint32_t sensor = 0; sensor < kSensors; ++sensor)
    request.store(sensor * sizeof(SensorReading), readSensor(context.settings, sensor));
  return succeeded(kSensors * sizeof(SensorReading));
}

Answer updateSensor(const Context& context, const Request& request) {
  if (!request.hasLengths(sizeof(SensorUpdate), 0)) return failed(Outcome::kWrongLength);
  const auto update = request.load<SensorUpdate>(0);
  if (update.sensor >= kSensors) return failed(Outcome::kMalformed);
  context.settings.sensors.isSimulated[update.sensor] = 1;
  std::ranges::copy(update.words, context.settings.sensors.words[update.sensor]);
  return succeeded(0);
}

bool areSound(const SensorSettings& sensors) {
  for (std::size_t i = 0; i < kSensors; ++i)
    if (sensors.isSimulated[i] > 1 || (sensors.isSimulated[i] == 0 && !isZeroFilled(sensors.words[i]))) return false;
  return true;
}

}  // namespace simulator
