// SPDX-License-Identifier: Apache-2.0
#include "policy/conversion.h"

namespace vqs {

std::optional<std::size_t> policyBodySize(std::uint32_t structureVersion) {
  switch (structureVersion) {
    case 0:
      return sizeof(VqsPolicyV0);
    case 1:
      return sizeof(VqsPolicyV1);
    case 2:
      return sizeof(VqsPolicyV2);
    default:
      return std::nullopt;
  }
}

bool holdsWholeBody(const VqsVersionedPolicy& record, std::uint64_t size) {
  constexpr std::size_t kHead = offsetof(VqsVersionedPolicy, policy);
  if (size <= kHead) return false;
  const auto bodySize = policyBodySize(record.structureVersion);
  return bodySize && size - kHead >= *bodySize;
}

bool packVersionedPolicy(const VqsVersionedPolicy& record, std::uint64_t size, VqsPackedPolicy& destination) {
  return holdsWholeBody(record, size) &&
         packPolicyBody(record.structureVersion, &record.policy, &destination) == kConverted;
}

}  // namespace vqs
