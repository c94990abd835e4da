// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <span>

#include "tests/performance/byte_work.h"

// Takes the place of format/bytes.h where format/ is compiled a second time, for the tests that count what it copies
// and searches: the shipped one has nothing to count with. What it declares must be what that one declares.

namespace vqs {

inline void copyBytes(void* destination, const void* source, std::size_t size) {
  ++test::byteWork.copies;
  test::byteWork.copiedBytes += size;
  std::memcpy(destination, source, size);
}

template <class Unit>
std::size_t unitsBeforeZero(std::span<const Unit> text) {
  const auto units = static_cast<std::size_t>(std::ranges::find(text, Unit{0}) - text.begin());
  ++test::byteWork.scans;
  test::byteWork.scannedBytes += std::min(units + 1, text.size()) * sizeof(Unit);
  return units;
}

}  // namespace vqs
