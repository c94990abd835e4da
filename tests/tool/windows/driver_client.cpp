// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/support/results.h"
#include "tests/tool/driver_client.h"

namespace test {

void useDriver(const Tool& /*tool*/, const std::function<void(QtfSession*)>& work) {
  QtfSession* session = nullptr;
  ASSERT_EQ(vqsInitialize(&session), kDone);
  work(session);
  EXPECT_EQ(vqsUninitialize(session), kDone);
}

}  // namespace test
