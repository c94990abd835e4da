// SPDX-License-Identifier: Apache-2.0
#include "tests/performance/byte_work.h"

#include <ostream>

namespace test {

ByteWork byteWork;

std::ostream& operator<<(std::ostream& stream, const ByteWork& work) {
  return stream << work.copies << " copies of " << work.copiedBytes << " bytes, " << work.scans << " scans of "
                << work.scannedBytes;
}

ByteWork byteWorkOf(const std::function<void()>& call) {
  byteWork = {};
  call();
  return byteWork;
}

}  // namespace test
