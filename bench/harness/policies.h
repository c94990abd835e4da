// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include <vqs/policy_binary_records.h>
#include <vqs/policy_records.h>
#include <vqs/session.h>
#include "format/policy/packed_policy.h"

namespace bench {

inline constexpr std::size_t kFleetSize = VQS_POLICY_BINARY_MAX_POLICIES;

/// Everyday policies: two or three conditions and a few actions each, a text here and there.
std::vector<VqsPolicyV2> fleetPolicies(QtfSession* session);
/// Policies that are full: every list, every text, and a value of its own in every field.
std::vector<VqsPolicyV2> fullPolicies(std::size_t count);

/// The same in the driver's form.
std::vector<vqs::PackedPolicy> packed(std::span<const VqsPolicyV2> policies);

/// Writes a policy binary of revision 5.
void writeBinary(QtfSession* session, std::span<const VqsPolicyV2> policies, const std::string& path);
/// Writes one of revision 4, which may have more policies, until there are so many.
void writeOldBinary(std::span<const VqsPolicyV2> policies, std::size_t count, const std::string& path);

/// What a reader of a policy binary fills, touched before.
struct Result {
  explicit Result(std::size_t policies) : bytes(sizeof(VqsPolicyBinary) + policies * sizeof(VqsPolicyV2), 0xA5) {}

  [[nodiscard]] VqsPolicyBinary* head() { return reinterpret_cast<VqsPolicyBinary*>(bytes.data()); }
  [[nodiscard]] std::span<const VqsPolicyV2> policies() const {
    const std::span bodies = std::span{bytes}.subspan(sizeof(VqsPolicyBinary));
    return {reinterpret_cast<const VqsPolicyV2*>(bodies.data()), bodies.size() / sizeof(VqsPolicyV2)};
  }

  std::vector<unsigned char> bytes;
};

/// Reads a policy binary through the export.
void readThroughExport(QtfSession* session, const std::string& path, Result& result);

}  // namespace bench
