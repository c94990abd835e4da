// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdlib>

#include "tests/support/results.h"
#include "tests/tool/driver_client.h"

namespace test {

void useDriver(const Tool& tool, const std::function<void(QtfSession*)>& work) {
  setenv("VEXOQTF_SIMULATOR_STATE", tool.path(kDriverState).c_str(), 1);
  setenv("VEXOQTF_SIMULATOR_OPTIONS", "time=0", 1);
  QtfSession* session = nullptr;
  ASSERT_EQ(vqsInitialize(&session), kDone);
  work(session);
  EXPECT_EQ(vqsUninitialize(session), kDone);
  unsetenv("VEXOQTF_SIMULATOR_STATE");
  unsetenv("VEXOQTF_SIMULATOR_OPTIONS");
}

}  // namespace test
