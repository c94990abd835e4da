// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>
#include <optional>

#include <vqs/platform.h>
#include "tests/support/results.h"
#include "tests/support/session_test.h"
#include "tests/support/windows_calls.h"

namespace {

/// What waiting gives instead of its own result.
std::optional<DWORD> waitResult;

}  // namespace

extern "C" {
DWORD __real_WaitForSingleObject(HANDLE, DWORD);

DWORD __wrap_WaitForSingleObject(HANDLE handle, DWORD milliseconds) {
  const DWORD result = __real_WaitForSingleObject(handle, milliseconds);
  return waitResult.value_or(result);
}
}

namespace test {
namespace {

constexpr char16_t kEventName[] = u"Global\\VexoQtfAppOutputEvent";

struct Wait {
  const char* name;
  vqsStatus (*call)(QtfSession*, HANDLE, std::uint32_t);
};

class WaitResult : public FrugalSessionTest, public ::testing::WithParamInterface<Wait> {
 protected:
  WaitResult() {
    host::createEvent(kEventName);
    host::signalEvent(kEventName);
    event = OpenEventW(SYNCHRONIZE, FALSE, kEventName);
  }
  ~WaitResult() override {
    waitResult.reset();
    CloseHandle(event);
    host::removeEvent(kEventName);
  }
  vqsStatus wait() { return GetParam().call(session, event, 0); }

  HANDLE event = nullptr;
};

TEST_P(WaitResult, is_success_for_a_signal_only) {
  EXPECT_EQ(wait(), kDone);
  waitResult = 0;
  EXPECT_EQ(wait(), kDone);
}

TEST_P(WaitResult, is_failure_for_an_abandoned_object_a_timeout_and_anything_else) {
  for (const DWORD result : {0x80U, 258U, 0xC0U, 1U, 2U, 0x10000U, 0x80000000U, 0xFFFFFFFFU}) {
    waitResult = result;
    EXPECT_EQ(wait(), kFailed) << result;
  }
}

TEST_P(WaitResult, leaves_every_handle_open) {
  const WindowsCalls calls;
  for (const DWORD result : {0U, 0x80U, 258U, 0xFFFFFFFFU}) {
    waitResult = result;
    wait();
  }
  EXPECT_EQ(calls.of("WaitForSingleObject").size(), 4U);
  EXPECT_TRUE(calls.of("CloseHandle").empty());
  EXPECT_TRUE(calls.of("DeviceIoControl").empty());
}

INSTANTIATE_TEST_SUITE_P(
    Of, WaitResult,
    ::testing::Values(Wait{"AppOutput", [](QtfSession* session, HANDLE,
                                           std::uint32_t time) { return vqsWaitAppOutput(session, time); }},
                      Wait{"ExAppOutput", [](QtfSession* session, HANDLE,
                                             std::uint32_t time) { return vqsExWaitAppOutput(session, time); }},
                      Wait{"TaskbarIcon", vqsWaitTaskbarIcon}),
    caseName);

}  // namespace
}  // namespace test
