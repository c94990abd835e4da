// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "format/policy/packed_policy.h"
#include "format/policy/text.h"

namespace vqs {

/// What packing and unpacking end with.
enum : int {
  kConverted = 0,
  kMalformed = 1,
  kNullPointer = 2,
  kTooSmall = 3,
  /// a text could not be converted, or there was nothing to convert
  kNotConverted = -1
};

/// The size of one caller body of a structure version; nothing for a version that does not exist.
std::optional<std::size_t> policyBodySize(std::uint32_t structureVersion);

// Caller's form to driver's form. The destination is filled with zeros beforehand; a failure leaves it partly written.
// A count above its limit is copied as it is, with as many entries as there is room for (compatibility.md:
// count-above-limit).
int packPolicyV0(const VqsPolicyV0* source, VqsPackedPolicy* destination, const TextConversion& text);
int packPolicyV1(const VqsPolicyV1* source, VqsPackedPolicy* destination, const TextConversion& text);
int packPolicyV2(const VqsPolicyV2* source, VqsPackedPolicy* destination);

/// Packs a body of a structure version; kMalformed for a version that does not exist.
int packPolicyBody(std::uint32_t structureVersion, const void* body, VqsPackedPolicy* destination,
                   const TextConversion& text);

// Driver's form to caller's form. A failure leaves the destination partly written.
int unpackPolicyV0(const VqsPackedPolicy* source, VqsPolicyV0* destination, const TextConversion& text);
int unpackPolicyV1(const VqsPackedPolicy* source, VqsPolicyV1* destination, const TextConversion& text);
int unpackPolicyV2(const VqsPackedPolicy* source, VqsPolicyV2* destination);

/// Unpacks into a body of a structure version; kMalformed for a version that does not exist.
int unpackPolicyBody(std::uint32_t structureVersion, const VqsPackedPolicy* source, void* body,
                     const TextConversion& text);

/// Unpacks `count` policies into bodies of a structure version, back to back; stops at the first failure.
int unpackPolicyArray(void* destination, std::uint64_t destinationSize, std::uint32_t structureVersion,
                      const VqsPackedPolicy* policies, std::uint32_t count, const TextConversion& text);

/// The structure version of a record of `size` bytes, if these hold a whole body of that version. To be called once per
/// record: another thread that changes the version meanwhile must not have more read or written than there is.
std::optional<std::uint32_t> wholeBodyVersion(const VqsVersionedPolicy& record, std::uint64_t size);

/// Packs a versioned record of `size` bytes; true when it is whole and well-formed.
bool packVersionedPolicy(const VqsVersionedPolicy& record, std::uint64_t size, VqsPackedPolicy& destination,
                         const TextConversion& text);

}  // namespace vqs
