// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <span>

#include "tests/performance/byte_work.h"

// Takes the place of format/bytes.h where format/ is compiled a second time, for the tests that count what it copies
// and searches: the shipped one has nothing to count with. It does the same, in the plainest way, and must declare
// whatever format/ uses of the other.

namespace vqs {

inline void copyBytes(void* destination, const void* source, std::size_t size) {
  ++test::byteWork.copies;
  test::byteWork.copiedBytes += size;
  std::memcpy(destination, source, size);
}

template <class Unit>
std::size_t unitsBeforeZero(std::span<const std::byte> text) {
  const std::size_t most = text.size() / sizeof(Unit);
  const Unit zero{};
  std::size_t units = 0;
  while (units < most && std::memcmp(&text[units * sizeof(Unit)], &zero, sizeof(zero)) != 0) ++units;
  ++test::byteWork.scans;
  test::byteWork.scannedBytes += std::min(units + 1, most) * sizeof(Unit);
  return units;
}

template <class Unit>
std::size_t unitsBeforeZero(std::span<const Unit> text) {
  return unitsBeforeZero<Unit>(std::as_bytes(text));
}

template <class Unit>
std::size_t copyTerminated(std::span<std::byte> destination, std::span<const std::byte> text) {
  const std::size_t size = (unitsBeforeZero<Unit>(text) + 1) * sizeof(Unit);
  if (size > text.size() || size > destination.size()) return 0;
  copyBytes(destination.data(), text.data(), size);
  return size;
}

}  // namespace vqs
