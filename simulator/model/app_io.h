// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/model/request.h"
#include "simulator/model/settings.h"

namespace simulator {

/// The value of an application input in force: the override if there is one, or else what a client has set.
std::uint32_t inputInForce(const Settings& settings, std::uint32_t index);
/// The outputs follow the inputs.
std::uint32_t outputOf(const Settings& settings, std::uint32_t index);

/// Sessions announced, inputs set, outputs read. Outputs that are read are no longer unread, and the event of their
/// change is reset.
Answer controlAppIo(const Context& context, const Request& request);

}  // namespace simulator
