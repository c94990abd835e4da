// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/model/request.h"
#include "simulator/model/settings.h"

namespace simulator {

inline constexpr const char* kOemId = "VEXO01";

Answer controlPolling(const Request& request);
Answer programSe1(const Request& request, Settings& settings);
Answer controlTa(const Request& request, Settings& settings);
Answer answerTaskbarIcon(const Request& request, const Settings& settings);
Answer answerDebugOutput(const Request& request, const Settings& settings);
Answer answerOemId(const Request& request);
/// Firmware events are counted, each version for itself.
Answer notifyFirmwareEvent(const Request& request, Settings& settings);

}  // namespace simulator
