// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "format/policy/packed_policy.h"
#include "format/policy/text.h"

namespace vqs {

/// The size of one caller body of a structure version; nothing for a version that does not exist.
std::optional<std::size_t> policyBodySize(std::uint32_t structureVersion);

// Caller's form to driver's form; false for a null pointer, content that is malformed, or text that cannot be
// converted. The destination is filled with zeros beforehand; a failure leaves it partly written. A count above its
// limit is copied as it is, with as many entries as there is room for (compatibility.md: count-above-limit).
bool packPolicyV0(const VqsPolicyV0* source, PackedPolicy* destination, const TextConversion& text);
bool packPolicyV1(const VqsPolicyV1* source, PackedPolicy* destination, const TextConversion& text);
bool packPolicyV2(const VqsPolicyV2* source, PackedPolicy* destination);

/// Packs a body of a structure version; false for a version that does not exist, too.
bool packPolicyBody(std::uint32_t structureVersion, const void* body, PackedPolicy* destination,
                    const TextConversion& text);

// Driver's form to caller's form; false as above. A failure leaves the destination partly written.
bool unpackPolicyV0(const PackedPolicy* source, VqsPolicyV0* destination, const TextConversion& text);
bool unpackPolicyV1(const PackedPolicy* source, VqsPolicyV1* destination, const TextConversion& text);
bool unpackPolicyV2(const PackedPolicy* source, VqsPolicyV2* destination);

/// Unpacks into a body of a structure version; false for a version that does not exist, too.
bool unpackPolicyBody(std::uint32_t structureVersion, const PackedPolicy* source, void* body,
                      const TextConversion& text);

/// Unpacks `count` policies into bodies of a structure version, back to back; stops at the first failure. False for no
/// policies, and for bodies that do not fit, before any is written.
bool unpackPolicyArray(void* destination, std::uint64_t destinationSize, std::uint32_t structureVersion,
                       const PackedPolicy* policies, std::uint32_t count, const TextConversion& text);

/// The structure version of a record of `size` bytes, if these hold a whole body of that version. To be called once per
/// record: another thread that changes the version meanwhile must not have more read or written than there is.
std::optional<std::uint32_t> wholeBodyVersion(const VqsVersionedPolicy& record, std::uint64_t size);

/// Packs a versioned record of `size` bytes; true when it is whole and well-formed.
bool packVersionedPolicy(const VqsVersionedPolicy& record, std::uint64_t size, PackedPolicy& destination,
                         const TextConversion& text);

}  // namespace vqs
