// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/model/wire.h"

namespace simulator {

/// True for a policy that a store may hold: counts within their limits, known comparisons and text flags, text lengths
/// that fit their texts, and zero wherever a caller has nothing to say.
bool isWellFormed(const PackedPolicy& policy);

}  // namespace simulator
