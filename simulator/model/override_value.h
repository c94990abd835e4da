// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/model/request.h"
#include "simulator/model/signals.h"

namespace simulator {

/// The value of a key that can be overridden, as it is in force, and whether it is overridden.
Answer answerOverrideValue(const Request& request, const Sources& sources);

}  // namespace simulator
