// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <vqs/policy_records.h>
#include "format/binary/layout.h"

namespace tool {

/// What a policy binary holds.
struct PolicyFile {
  std::uint16_t version1;
  std::uint16_t version2;
  std::vector<VqsPolicyV2> policies;
};

/// How much a policy binary holds.
struct PolicyFileSummary {
  vqs::BinaryVersions versions;
  std::size_t policyCount;
};

/// The bytes of a regular file that is not empty. Throws a Failure with the reason.
std::vector<std::byte> readBytes(const std::string& path);

/// Reads a policy binary. Throws a Failure that names the file and what is wrong with it.
PolicyFile readPolicyFile(const std::string& path);

/// What bytes that are a policy binary hold; nothing when they are none.
std::optional<PolicyFileSummary> summarize(const std::vector<std::byte>& bytes);

/// The last part of a path.
std::string fileName(const std::string& path);

}  // namespace tool
