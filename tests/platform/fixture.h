// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <cstring>

#include <vqs/platform.h>
#include "tests/support/faults.h"
#include "tests/support/locale.h"
#include "tests/support/scripted_driver.h"

namespace test {

/// A session on a scripted driver; none of these services allocates on it, or ends the process on Windows.
class PlatformTest : public ::testing::Test {
 protected:
  void TearDown() override {
    EXPECT_EQ(faults.calls(Fault::kAllocation), 0);
    EXPECT_EQ(driver.openHandles(), 1);
  }

  ScriptedDriver driver;
  OpenSession session{driver};
  QtfSession closed{};
  NoInvalidParameter strict;
  Faults faults;
};

/// A pointer that only travels; nobody follows it.
inline void* marker() { return reinterpret_cast<void*>(0x1122334455667788); }

/// A caller's record of a wire type, made of these bytes.
template <class T>
T recordOf(const Bytes& bytes) {
  EXPECT_EQ(bytes.size(), sizeof(T));
  T record{};
  std::memcpy(&record, bytes.data(), sizeof(T));
  return record;
}

}  // namespace test
