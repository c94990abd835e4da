// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "format/binary/layout.h"
#include "format/policy/packed_policy.h"

namespace vqs {

/// The length of the file that holds these policies; 0 when there are none, or when one of them has more conditions,
/// texts or actions than a policy can hold, or text that leads beyond its own record: no reader would take such a file.
std::uint64_t policyBinarySize(std::span<const PackedPolicy> policies);

/// Lays the policies into a zero-filled buffer; false when it is too small or there is nothing to lay out.
bool buildPolicyBinary(std::span<std::byte> buffer, std::span<const PackedPolicy> policies, BinaryVersions versions);

}  // namespace vqs
