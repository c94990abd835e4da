// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace vqs {

/// What can be wrong with a policy binary.
enum class DefectKind : std::uint8_t {
  kNone,
  /// the file ends inside its header
  kHeaderCut,
  kUnknownFormatVersion,
  kUnknownRevision,
  kNoMagic,
  /// the number of policies: none, more than the file has room for, more than a file may have
  kNoPolicies,
  kNoRoom,
  kTooManyPolicies,
  /// the file ends inside a policy
  kPolicyCut,
  // Outside their limits, in a policy:
  kNameLength,
  kDescriptionLength,
  kConditionCount,
  kTextCount,
  kTextLength,
  kActionCount,
  /// a text of one character, which is its terminator
  kTextWithoutCharacters,
  // Comparisons and flags that do not exist. The file can be read all the same, but such a policy fits no structure
  // version.
  kUnknownComparison,
  kUnknownTextFlag
};

/// The first thing that is wrong with a policy binary.
struct Defect {
  DefectKind kind = DefectKind::kNone;
  /// where the field begins, in bytes from the file's start; the file's size when it ends too early
  std::uint64_t offset = 0;
  /// the policy, from 0 on; its condition, text or action likewise, where it is in one
  std::uint32_t policy = 0;
  std::uint32_t entry = 0;
  /// what stands there, and what may
  std::uint64_t value = 0;
  std::uint64_t least = 0;
  std::uint64_t most = 0;
};

}  // namespace vqs
