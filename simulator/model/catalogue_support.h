// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/model/request.h"

namespace simulator {

/// Which conditions and actions of policies the platform supports.
Answer answerCatalogueSupport(const Context& context, const Request& request);

}  // namespace simulator
