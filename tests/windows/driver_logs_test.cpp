// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>
#include <functional>
#include <memory>
#include <vector>

#include <vqs/vqs.h>
#include "tests/support/results.h"
#include "tests/windows/device_handle.h"
#include "tests/windows/processes.h"

namespace test {
namespace {

constexpr DWORD kLogCode = 0x80222058;
constexpr std::size_t kMostLogs = 64;

MEMORY_BASIC_INFORMATION memoryAt(std::uint64_t address) {
  MEMORY_BASIC_INFORMATION memory{};
  EXPECT_EQ(VirtualQuery(reinterpret_cast<void*>(address), &memory, sizeof(memory)), sizeof(memory));
  return memory;
}

bool isFree(std::uint64_t address) { return memoryAt(address).State == MEM_FREE; }

/// Within ten seconds.
bool becomesTrue(const std::function<bool()>& condition) {
  for (int i = 0; i < 1000; ++i) {
    if (condition()) return true;
    Sleep(10);
  }
  return false;
}

std::uint64_t addressIn(const Bytes& logRecord) {
  std::uint64_t address = 0;
  std::memcpy(&address, logRecord.data() + 8, sizeof(address));
  return address;
}

std::uint32_t wordAt(std::uint64_t address) { return *reinterpret_cast<const volatile std::uint32_t*>(address); }

class DriverLogs : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(vqsInitialize(&session_), kDone); }
  void TearDown() override { EXPECT_EQ(vqsUninitialize(session_), kDone); }

  QtfSession* session_ = nullptr;
};

TEST_F(DriverLogs, can_be_read_and_not_written) {
  std::uint64_t address = 0;
  ASSERT_EQ(vqsStartQTFLog(session_, &address), kDone);
  EXPECT_EQ(memoryAt(address).State, DWORD{MEM_COMMIT});
  EXPECT_EQ(memoryAt(address).Protect, DWORD{PAGE_READONLY});
  EXPECT_EQ(memoryAt(address).RegionSize, 4096U);
  DWORD old = 0;
  EXPECT_FALSE(VirtualProtect(reinterpret_cast<void*>(address), 4096, PAGE_READWRITE, &old));
  EXPECT_EQ(std::memcmp(reinterpret_cast<void*>(address), "VQTL", 4), 0);
  EXPECT_EQ(vqsStopQTFLog(session_), kDone);
}

TEST_F(DriverLogs, are_unmapped_when_they_are_stopped) {
  std::uint64_t address = 0;
  ASSERT_EQ(vqsStartQTFLog(session_, &address), kDone);
  EXPECT_FALSE(isFree(address));
  ASSERT_EQ(vqsStopQTFLog(session_), kDone);
  EXPECT_TRUE(isFree(address));
}

TEST_F(DriverLogs, have_a_mapping_each) {
  DeviceHandle other;
  std::uint64_t first = 0;
  ASSERT_EQ(vqsStartQTFLog(session_, &first), kDone);
  const auto second = other.request(kLogCode, Record{32}, 32);
  ASSERT_EQ(second.error, 0U);
  EXPECT_NE(addressIn(second.output), first);
  EXPECT_EQ(vqsStopQTFLog(session_), kDone);
  EXPECT_TRUE(isFree(first));
  EXPECT_EQ(std::memcmp(reinterpret_cast<void*>(addressIn(second.output)), "VQTL", 4), 0);
}

TEST(DriverLogHandle, unmaps_its_logs_when_it_is_closed) {
  DeviceHandle device;
  const auto plain = device.request(kLogCode, Record{32}, 32);
  const auto keyValue = device.request(kLogCode, Record{32}.u32(4, 7), 32);
  ASSERT_EQ(plain.error, 0U);
  ASSERT_EQ(keyValue.error, 0U);
  device.close();
  EXPECT_TRUE(becomesTrue([&] { return isFree(addressIn(plain.output)); }));
  EXPECT_TRUE(becomesTrue([&] { return isFree(addressIn(keyValue.output)); }));
}

TEST(DriverLogHandle, unmaps_its_logs_when_another_process_closes_it_last) {
  DeviceHandle device;
  IdleProcess other;
  const auto log = device.request(kLogCode, Record{32}, 32);
  ASSERT_EQ(log.error, 0U);
  device.moveTo(other.handle());
  Sleep(200);
  EXPECT_FALSE(isFree(addressIn(log.output)));
  other.end();
  EXPECT_TRUE(becomesTrue([&] { return isFree(addressIn(log.output)); }));
}

TEST_F(DriverLogs, are_brought_up_to_date_without_a_request) {
  constexpr std::uint64_t kSeconds = 8;
  std::uint64_t address = 0;
  ASSERT_EQ(vqsStartQTFLog(session_, &address), kDone);
  const std::uint32_t before = wordAt(address + kSeconds);
  EXPECT_TRUE(becomesTrue([&] { return wordAt(address + kSeconds) > before + 1; }));
  EXPECT_EQ(vqsStopQTFLog(session_), kDone);
}

TEST_F(DriverLogs, can_be_started_and_stopped_thousands_of_times) {
  for (int i = 0; i < 4000; ++i) {
    std::uint64_t address = 0;
    ASSERT_EQ(vqsStartQTFLog(session_, &address), kDone) << i;
    ASSERT_EQ(vqsStopQTFLog(session_), kDone) << i;
  }
}

std::vector<std::unique_ptr<DeviceHandle>> startAllLogs() {
  std::vector<std::unique_ptr<DeviceHandle>> devices;
  for (std::size_t i = 0; i < kMostLogs; ++i) {
    devices.push_back(std::make_unique<DeviceHandle>());
    if (devices.back()->request(kLogCode, Record{32}, 32).error != 0) devices.clear();
    if (devices.empty()) break;
  }
  return devices;
}

/// A process that ends like this has closed nothing.
TEST(DriverLogsOfAnotherProcess, end_with_it) {
  if (GetEnvironmentVariableA("VQS_TEST_LEAVE_LOGS", nullptr, 0) != 0) {
    const auto devices = startAllLogs();
    TerminateProcess(GetCurrentProcess(), devices.size() == kMostLogs ? 0 : 1);
  }
  SetEnvironmentVariableA("VQS_TEST_LEAVE_LOGS", "1");
  EXPECT_EQ(runCase("DriverLogsOfAnotherProcess.end_with_it"), 0U);
  SetEnvironmentVariableA("VQS_TEST_LEAVE_LOGS", nullptr);
  EXPECT_TRUE(becomesTrue([] { return startAllLogs().size() == kMostLogs; }));
}

}  // namespace
}  // namespace test
