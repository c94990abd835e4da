// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/model/request.h"
#include "simulator/model/settings.h"

namespace simulator {

/// A sensor as clients see it.
struct SensorReading {
  /// 0 absent, 1 present
  std::uint32_t status;
  std::uint32_t words[3];
};
static_assert(sizeof(SensorReading) == 16);

SensorReading readSensor(const Settings& settings, std::uint32_t sensor);

Answer answerSensorData(const Context& context, const Request& request);
/// From now on, the sensor shows what the request says.
Answer updateSensor(const Context& context, const Request& request);

bool areSound(const SensorSettings& sensors);

}  // namespace simulator
