// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "binary/format.h"
#include "policy/packed_policy.h"

namespace vqs {

/// The number of policies that a file's header announces; 0 for a file that is not a policy binary.
std::uint32_t announcedPolicyCount(std::span<const std::byte> file);

/// The most bytes of a file that its policies can take up, header included, judged by the file's first bytes; 0 for a
/// file that is not a policy binary. What lies behind them is never looked at.
std::uint64_t mostUsefulBytes(std::span<const std::byte> head);

/// False when the file is too short for the policies that it announces, whatever they are.
bool mayHold(std::span<const std::byte> file, std::uint32_t policyCount);

// Parse a file of one revision into zero-filled packed policies, as many as the header announces. False at the first
// field that lies outside the file, breaks a limit of the format, or does not fit the packed policy.
bool parsePolicyBinaryRev3(std::span<const std::byte> file, std::span<VqsPackedPolicy> policies,
                           BinaryVersions& versions);
bool parsePolicyBinaryRev4(std::span<const std::byte> file, std::span<VqsPackedPolicy> policies,
                           BinaryVersions& versions);
bool parsePolicyBinaryRev5(std::span<const std::byte> file, std::span<VqsPackedPolicy> policies,
                           BinaryVersions& versions);

/// Parses a file of whatever revision it says.
bool parsePolicyBinary(std::span<const std::byte> file, std::span<VqsPackedPolicy> policies, BinaryVersions& versions);

}  // namespace vqs
