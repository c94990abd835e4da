// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "format/binary/defect.h"
#include "format/binary/layout.h"
#include "format/policy/packed_policy.h"

namespace vqs {

/// The number of policies that a file's header announces; 0 for a file that is not a policy binary.
std::uint32_t announcedPolicyCount(std::span<const std::byte> file);

/// The most bytes of a file that its policies can take up, header included, judged by the file's first bytes; 0 for a
/// file that is not a policy binary. What lies behind them is never looked at.
std::uint64_t mostUsefulBytes(std::span<const std::byte> head);

/// Reads a file into zero-filled packed policies, as many as its header announces. False at the first field that lies
/// outside the file, breaks a limit of the format, or does not fit the packed policy; a defect, when one is asked for,
/// says which. A file that was read may have a defect as well: a value that no policy can have, or no policies at all.
/// The versions are handed out as far as the file has them, whatever else it holds.
bool readBinary(std::span<const std::byte> file, std::span<PackedPolicy> policies, BinaryVersions& versions,
                Defect* defect = nullptr);

/// What is wrong with the header, before any policy is looked at; a defect of no kind when nothing is.
Defect headerDefect(std::span<const std::byte> file);

}  // namespace vqs
