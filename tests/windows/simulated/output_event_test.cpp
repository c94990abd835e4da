// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <windows.h>

#include <vqs/vqs.h>

#include "tests/support/results.h"

namespace test {
namespace {

TEST(SimulatedOutputEvent, has_its_name_where_no_other_object_has_it) {
  const HANDLE event = OpenEventA(SYNCHRONIZE, FALSE, "Global\\VexoQtfAppOutputEvent");
  ASSERT_NE(event, nullptr);
  QtfSession* session = nullptr;
  ASSERT_EQ(vqsInitialize(&session), kDone);
  std::uint32_t first = 99;
  std::uint32_t second = 99;
  ASSERT_EQ(vqsGetAppOutput(session, &first, &second), kDone);
  EXPECT_EQ(WaitForSingleObject(event, 0), DWORD{WAIT_TIMEOUT});
  ASSERT_EQ(vqsSetAppInputs(session, first + 1, 7), kDone);
  EXPECT_EQ(WaitForSingleObject(event, 0), WAIT_OBJECT_0);
  EXPECT_EQ(vqsWaitAppOutput(session, 0), kDone);
  EXPECT_EQ(vqsGetAppOutput(session, &first, &second), kDone);
  EXPECT_EQ(second, 7U);
  EXPECT_EQ(vqsWaitAppOutput(session, 0), kFailed);
  EXPECT_EQ(vqsUninitialize(session), kDone);
  EXPECT_TRUE(CloseHandle(event));
}

}  // namespace
}  // namespace test
