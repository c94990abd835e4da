// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/model/request.h"

namespace simulator {

/// The value of a key that can be overridden, as it is in force, and whether it is overridden.
Answer answerOverrideValue(const Context& context, const Request& request);

}  // namespace simulator
