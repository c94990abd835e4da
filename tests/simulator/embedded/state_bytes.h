// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/simulator/model/client.h"

namespace test {

/// An image with its checksum: FNV-1a, written down a second time.
inline Bytes sealed(Bytes content) {
  std::uint64_t hash = 14695981039346656037U;
  for (const std::uint8_t byte : content) {
    hash ^= byte;
    hash *= 1099511628211U;
  }
  for (int i = 0; i < 8; ++i) content.push_back(static_cast<std::uint8_t>(hash >> (8 * i)));
  return content;
}

inline constexpr std::size_t kSettingsSize = 3056;
inline constexpr std::size_t kPoliciesOffset = 32 + kSettingsSize;

/// An image of format 2, without its checksum, of a driver whose platform has just started, at moment 12345.
inline Record stateContent(std::size_t policies) {
  Record image = Record{kPoliciesOffset + 3972 * policies}.text(0, "VQSSTATE").u32(8, 2);
  // The clock; started, on battery; the charge in mW seconds; three temperatures in thousandths of a degree.
  image.u64(32 + 8, 12345).u32(32 + 24, 1).u32(32 + 28, 1).u32(32 + 32, 164160000);
  return image.u32(32 + 36, 38000).u32(32 + 40, 29000).u32(32 + 44, 27000);
}

/// The content of the state file of a driver that holds policy 7 in the Asm store and version words 3 and 5.
inline Record smallContent() {
  return stateContent(1).u32(16, 1).u32(24, 3).u32(28, 5).put(kPoliciesOffset, simplePolicy(7).bytes());
}
inline Bytes smallState() { return sealed(smallContent()); }

/// The same policy and version words as format 1 had them.
inline Bytes oldState() {
  Record image = Record{32 + 3972 + 8}.text(0, "VQSSTATE").u32(8, 1).u32(16, 1).u32(24, 3).u32(28, 5);
  return image.put(32, simplePolicy(7).bytes()).put(4004, hex("b3 78 a8 4f 50 76 28 da"));
}

/// A file of format 3 as a simulator wrote it that did not have the last block.
inline Bytes withoutLastBlock(const Bytes& file) {
  const std::uint32_t count = word(file, 12);
  const std::size_t row = 16 + 12 * (std::size_t{count} - 1);
  const std::size_t end = 4096 + word(file, row + 4);
  return Record{(end + 7) / 8 * 8}.put(0, part(file, 0, end)).u32(12, count - 1).fill(row, 12, 0);
}

}  // namespace test
