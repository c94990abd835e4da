// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/model/policy_store.h"
#include "simulator/model/request.h"

namespace simulator {

/// The number of a store's policies, or one status entry for each of them.
Answer answerPolicyStatus(const PolicyStore& store, const Request& request);

}  // namespace simulator
