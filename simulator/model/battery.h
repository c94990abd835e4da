// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/model/request.h"
#include "simulator/model/settings.h"

namespace simulator {

/// Charge rate, temperature and limits of the battery.
Answer controlBattery(const Context& context, const Request& request);

/// False for what could not have been set.
bool isBatterySound(const Settings& settings);

}  // namespace simulator
