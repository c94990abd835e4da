// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>

#include <vqs/vqs.h>
#include "tests/support/results.h"
#include "tests/support/temporary_folder.h"

namespace test {
namespace {

constexpr const char* kOutputEvent = "Global\\VexoQtfAppOutputEvent";

/// What the driver takes from its caller besides a request's bytes: memory and events.
class DriverCaller : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(vqsInitialize(&session_), kDone); }
  void TearDown() override {
    EXPECT_EQ(vqsExClearDynamicPolicy(session_), kDone);
    EXPECT_EQ(vqsUninitialize(session_), kDone);
  }

  vqsStatus loadFrom(std::uint64_t address, std::uint64_t size) {
    return vqsExLoadDynamicPolicy(session_, size, reinterpret_cast<void*>(address), nullptr, nullptr);
  }

  /// Output 1 follows input 1, so that the driver has to tell of it.
  void changeOutput() {
    std::uint32_t outputs[2] = {};
    EXPECT_EQ(vqsGetAppOutput(session_, &outputs[0], &outputs[1]), kDone);
    EXPECT_EQ(vqsSetAppInput(session_, 1, outputs[0] + 1), kDone);
  }

  QtfSession* session_ = nullptr;
};

TEST_F(DriverCaller, s_memory_is_read) {
  const Bytes policies = sample("laptop-r5.bin");
  std::uint32_t result = 9;
  std::uint32_t count = 9;
  ASSERT_EQ(vqsExLoadDynamicPolicy(session_, policies.size(), policies.data(), &result, &count), kDone);
  EXPECT_EQ(result, 0U);
  EXPECT_EQ(count, 16U);
  std::uint32_t versions[2] = {};
  ASSERT_EQ(vqsExGetPolicyBinaryVersion(session_, &versions[0], &versions[1]), kDone);
  EXPECT_EQ(versions[0], 3U);
  EXPECT_EQ(versions[1], 41U);
}

TEST_F(DriverCaller, may_give_any_address) {
  for (const std::uint64_t address :
       {0x1ULL, 0x10ULL, 0xFFFFULL, 0x7FFFFFFEFFFFULL, 0x7FFFFFFF0000ULL, 0x7FFFFFFFFFFFULL, 0x800000000000ULL,
        0xFFFF800000000000ULL, 0xFFFFF78000000000ULL, 0xFFFFFFFFFFFFFFFFULL})
    for (const std::uint64_t size : {1ULL, 16ULL, 307200ULL})
      EXPECT_EQ(loadFrom(address, size), 1U) << std::hex << address << ", " << size;
}

TEST_F(DriverCaller, may_give_memory_that_ends_too_early) {
  auto* const memory = static_cast<char*>(VirtualAlloc(nullptr, 0x20000, MEM_RESERVE, PAGE_READWRITE));
  ASSERT_NE(memory, nullptr);
  ASSERT_NE(VirtualAlloc(memory, 0x1000, MEM_COMMIT, PAGE_READWRITE), nullptr);
  const auto address = reinterpret_cast<std::uint64_t>(memory);
  EXPECT_EQ(loadFrom(address, 0x1000), 0U);
  EXPECT_EQ(loadFrom(address, 0x1001), 1U);
  EXPECT_EQ(loadFrom(address + 0xFFF, 2), 1U);
  EXPECT_EQ(loadFrom(address + 0x1000, 1), 1U);
  VirtualFree(memory, 0, MEM_RELEASE);
  EXPECT_EQ(loadFrom(address, 1), 1U);
}

TEST_F(DriverCaller, waits_for_the_output_event_and_cannot_set_it) {
  std::uint32_t outputs[2] = {};
  ASSERT_EQ(vqsGetAppOutput(session_, &outputs[0], &outputs[1]), kDone);
  const HANDLE event = OpenEventA(SYNCHRONIZE, FALSE, kOutputEvent);
  ASSERT_NE(event, nullptr);
  EXPECT_EQ(WaitForSingleObject(event, 0), DWORD{WAIT_TIMEOUT});
  changeOutput();
  EXPECT_EQ(WaitForSingleObject(event, 0), DWORD{WAIT_OBJECT_0});
  EXPECT_EQ(vqsWaitAppOutput(session_, 0), kDone);
  CloseHandle(event);
  EXPECT_EQ(OpenEventA(EVENT_MODIFY_STATE, FALSE, kOutputEvent), nullptr);
  EXPECT_EQ(GetLastError(), DWORD{ERROR_ACCESS_DENIED});
}

TEST_F(DriverCaller, s_event_is_set_while_it_is_registered) {
  const HANDLE event = CreateEventA(nullptr, FALSE, FALSE, nullptr);
  ASSERT_EQ(vqsRegisterEvent(session_, 0, event), kDone);
  EXPECT_EQ(WaitForSingleObject(event, 0), DWORD{WAIT_TIMEOUT});
  changeOutput();
  EXPECT_EQ(WaitForSingleObject(event, 0), DWORD{WAIT_OBJECT_0});
  ASSERT_EQ(vqsUnRegisterEvent(session_, 0, event), kDone);
  changeOutput();
  EXPECT_EQ(WaitForSingleObject(event, 0), DWORD{WAIT_TIMEOUT});
  CloseHandle(event);
}

TEST_F(DriverCaller, may_close_a_registered_event) {
  const HANDLE event = CreateEventA(nullptr, FALSE, FALSE, nullptr);
  ASSERT_EQ(vqsRegisterEvent(session_, 0, event), kDone);
  CloseHandle(event);
  changeOutput();
}

TEST_F(DriverCaller, may_register_nothing_but_events) {
  EXPECT_EQ(vqsRegisterEvent(session_, 0, reinterpret_cast<void*>(0x7FFC)), kFailed);
  EXPECT_EQ(vqsRegisterEvent(session_, 0, reinterpret_cast<void*>(~0ULL)), kFailed);
  EXPECT_EQ(vqsRegisterEvent(session_, 0, reinterpret_cast<void*>(0xFFFFFFFF80000004ULL)), kFailed);
  const HANDLE mutex = CreateMutexA(nullptr, FALSE, nullptr);
  EXPECT_EQ(vqsRegisterEvent(session_, 0, mutex), kFailed);
  CloseHandle(mutex);
}

}  // namespace
}  // namespace test
