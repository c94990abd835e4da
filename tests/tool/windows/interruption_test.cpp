// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <windows.h>
#include <array>

#include "tool/system/process.h"

namespace {

PHANDLER_ROUTINE handler = nullptr;

BOOL WINAPI keepHandler(PHANDLER_ROUTINE routine, BOOL isAdded) {
  handler = routine;
  return isAdded;
}

DWORD WINAPI callHandler(void* control) {
  return handler(static_cast<DWORD>(*static_cast<const int*>(control))) ? 1 : 0;
}

/// The system calls handlers in a thread of their own.
HANDLE interrupt(const int& control) {
  return CreateThread(nullptr, 0, callHandler, const_cast<int*>(&control), 0, nullptr);
}

}  // namespace

// The call goes through this pointer, which the linker would otherwise take from the system's import library.
extern "C" {
extern const decltype(&SetConsoleCtrlHandler) __imp_SetConsoleCtrlHandler = keepHandler;
}

namespace test {
namespace {

namespace platform = tool::platform;
constexpr std::chrono::hours kLong{1};

TEST(Interruption, by_a_key_ends_the_waiting_alone) {
  for (const int control : {CTRL_C_EVENT, CTRL_BREAK_EVENT}) {
    platform::catchInterruptions();
    const HANDLE thread = interrupt(control);
    EXPECT_FALSE(platform::waitUnlessInterrupted(kLong)) << control;
    DWORD isHandled = 0;
    EXPECT_EQ(WaitForSingleObject(thread, INFINITE), WAIT_OBJECT_0);
    EXPECT_TRUE(GetExitCodeThread(thread, &isHandled) && isHandled == 1) << control;
    CloseHandle(thread);
  }
}

TEST(Interruption, by_the_end_of_the_window_or_the_user_leaves_time_for_the_command_to_end) {
  // The threads that never end keep their control.
  static const std::array<int, 3> kControls = {CTRL_CLOSE_EVENT, CTRL_LOGOFF_EVENT, CTRL_SHUTDOWN_EVENT};
  for (const int& control : kControls) {
    platform::catchInterruptions();
    const HANDLE thread = interrupt(control);
    EXPECT_FALSE(platform::waitUnlessInterrupted(kLong)) << control;
    // The system ends the process when the handler comes back.
    EXPECT_EQ(WaitForSingleObject(thread, 100), static_cast<DWORD>(WAIT_TIMEOUT)) << control;
    CloseHandle(thread);
  }
}

TEST(Interruption, that_does_not_come_is_waited_for) {
  platform::catchInterruptions();
  EXPECT_TRUE(platform::waitUnlessInterrupted(std::chrono::milliseconds{1}));
}

}  // namespace
}  // namespace test
