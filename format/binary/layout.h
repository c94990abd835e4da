// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace vqs {

inline constexpr std::uint16_t kFormatVersion = 1;
inline constexpr std::uint16_t kRevision3 = 3;
inline constexpr std::uint16_t kRevision4 = 4;
inline constexpr std::uint16_t kRevision5 = 5;

inline constexpr std::array<char, 4> kMagic = {'$', 'Q', 'T', 'F'};

/// Where the fields of a header begin. The number of policies has another place in the older revisions.
inline constexpr std::size_t kRevisionOffset = 2;
inline constexpr std::size_t kVersionsOffset = 4;
inline constexpr std::size_t kMagicOffset = 8;
inline constexpr std::size_t kCountOffset = 12;
inline constexpr std::size_t kOldCountOffset = 8;

/// What every revision's header has.
inline constexpr std::size_t kSmallestHead = 12;

/// Header sizes: revision 5, and the older ones.
inline constexpr std::size_t kHeaderSize = 16;
inline constexpr std::size_t kOldHeaderSize = 64;

/// No entry of any revision is shorter: one byte of name and of description, one condition, no text, no action.
inline constexpr std::size_t kSmallestEntry = (4 + 1) + (4 + 1) + 19 + 8 + 16 + 4;

/// No entry of any revision that a reader takes is longer: every field, list and text at its limit.
inline constexpr std::size_t kLargestEntry = (4 + 128) + (4 + 32) + 19 + 8 + 15 * 16 + 5 * (4 + 512 + 1) + 4 + 32 * 23;

/// The two version numbers of a file.
struct BinaryVersions {
  std::uint16_t first;
  std::uint16_t second;
};

}  // namespace vqs
