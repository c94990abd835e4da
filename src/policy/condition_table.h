// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>

#include <vqs/catalogue.h>

namespace vqs {

/// The condition types, in the order of their ids. Their driver flags are the only thing that may be written.
std::span<QtfConditionInfo, VQS_CONDITION_TYPES> conditionTable();

}  // namespace vqs
