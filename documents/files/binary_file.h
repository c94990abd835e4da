// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <optional>
#include <span>

#include "documents/findings/finding.h"
#include "documents/policies/policy_set.h"

namespace documents {

/// True for bytes that are a policy binary or were one before they were damaged. No text begins with them.
bool isPolicyBinary(std::span<const std::byte> bytes);

/// The policies of a policy binary of any revision; nothing, and a finding, when it is not valid. The finding's place
/// is in the binary. What the format lets pass and no record can be written with is cut, with a warning.
std::optional<PolicySet> readBinaryFile(std::span<const std::byte> file, Findings& findings);

}  // namespace documents
