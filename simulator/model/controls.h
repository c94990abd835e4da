// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/model/request.h"
#include "simulator/model/settings.h"

namespace simulator {

inline constexpr const char* kOemId = "VEXO01";

Answer controlPolling(const Context& context, const Request& request);
Answer programSe1(const Context& context, const Request& request);
Answer controlTa(const Context& context, const Request& request);
Answer answerTaskbarIcon(const Context& context, const Request& request);
Answer answerDebugOutput(const Context& context, const Request& request);
Answer answerOemId(const Context& context, const Request& request);
/// Firmware events are counted, each version for itself.
Answer notifyFirmwareEvent(const Context& context, const Request& request);
Answer notifyFirmwareEventV2(const Context& context, const Request& request);

/// False for words that could not have been sent.
bool areControlsSound(const Settings& settings);

}  // namespace simulator
