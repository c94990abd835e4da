// SPDX-License-Identifier: Apache-2.0
#include "format/policy/conversion.h"

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

std::optional<std::uint32_t> wholeBodyVersion(const VqsVersionedPolicy& record, std::uint64_t size) {
  constexpr std::size_t kHead = offsetof(VqsVersionedPolicy, policy);
  if (size <= kHead) return std::nullopt;
  const std::uint32_t version = record.structureVersion;
  const auto bodySize = policyBodySize(version);
  return bodySize && size - kHead >= *bodySize ? std::optional{version} : std::nullopt;
}

bool packVersionedPolicy(const VqsVersionedPolicy& record, std::uint64_t size, PackedPolicy& destination,
                         const TextConversion& text) {
  const auto version = wholeBodyVersion(record, size);
  return version && packPolicyBody(*version, &record.policy, &destination, text);
}

}  // namespace vqs
