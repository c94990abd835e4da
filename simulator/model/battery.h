// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/model/request.h"
#include "simulator/model/settings.h"

namespace simulator {

/// Charge rate, temperature and limits of the battery.
Answer controlBattery(const Request& request, Settings& settings);

}  // namespace simulator
