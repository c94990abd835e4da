// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "format/binary/layout.h"
#include "format/policy/packed_policy.h"

namespace vqs {

/// The length of the file that holds these policies; 0 when there are none, or when one of them has more conditions,
/// texts or actions than a policy can hold, or text that has no zero up to the end of its record.
std::uint64_t policyBinarySize(std::span<const VqsPackedPolicy> policies);

/// Writes the file into a zero-filled buffer; false when the buffer is too small or there are no policies.
bool buildPolicyBinary(std::span<std::byte> buffer, std::span<const VqsPackedPolicy> policies, BinaryVersions versions);

}  // namespace vqs
