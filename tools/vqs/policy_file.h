// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "session.h"
#include "vqs/policy_binary.h"

namespace tool {

/// What a policy binary holds.
struct PolicyFile {
  std::uint16_t version1;
  std::uint16_t version2;
  std::vector<VqsPolicyV2> policies;
};

/// The bytes of a regular file that is not empty. Throws a Failure with the reason.
std::vector<std::byte> readBytes(const std::string& path);

/// Throws the Failure of a file that cannot be read at all, before a driver is needed.
void requireReadable(const std::string& path);

/// Reads a policy binary. Throws a Failure that names the file and what is wrong with it.
PolicyFile readPolicyFile(const Session& session, const std::string& path);

/// Reads a policy binary as the library does, without looking for the reason when it refuses the file.
std::optional<PolicyFile> tryReadPolicyFile(const Session& session, const std::string& path, std::size_t fileSize);

/// The last part of a path.
std::string fileName(const std::string& path);

}  // namespace tool
