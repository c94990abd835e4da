// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

#include "format/binary/defect.h"

namespace documents {

/// What is wrong with a policy binary that announces so many policies, and where: "offset 61: policy 1 of 1: its number
/// of conditions is 0, 1 to 15 are possible".
std::string describe(const vqs::Defect& defect, std::uint32_t policyCount);

}  // namespace documents
