// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <functional>
#include <iosfwd>

namespace test {

/// What format/ has done to bytes.
struct ByteWork {
  std::size_t copies = 0;
  std::size_t copiedBytes = 0;
  std::size_t scans = 0;
  /// up to the zero that was found, and with it
  std::size_t scannedBytes = 0;

  bool operator==(const ByteWork&) const = default;
};

std::ostream& operator<<(std::ostream& stream, const ByteWork& work);

/// Of this process, since it began.
extern ByteWork byteWork;

/// Of one call.
ByteWork byteWorkOf(const std::function<void()>& call);

}  // namespace test
