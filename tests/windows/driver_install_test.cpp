// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <windows.h>

#include <filesystem>
#include <functional>
#include <string>

#include <vqs/vqs.h>
#include "tests/support/results.h"
#include "tests/windows/device_handle.h"
#include "tests/windows/named_objects.h"
#include "tests/windows/processes.h"

namespace test {
namespace {

constexpr const char* kEvent = "Global\\VexoQtfAppOutputEvent";
constexpr const wchar_t* kLateFolder = L"\\BaseNamedObjects\\VexoQtfLate";
constexpr const wchar_t* kLateEvent = L"\\BaseNamedObjects\\VexoQtfLate\\VexoQtfAppOutputEvent";
constexpr DWORD kAppIo = 0x80222068;
constexpr DWORD kPbRead = 0x80222064;

const Bytes kSystem = hex("01 01 00 00 00 00 00 05  12 00 00 00");
const Bytes kSystemSetsEverybodyWaits =
    hex("00 00 14 00  03 00 1f 00  01 01 00 00 00 00 00 05  12 00 00 00"
        "00 00 14 00  01 00 12 00  01 01 00 00 00 00 00 01  00 00 00 00");

/// Within ten seconds.
bool becomesTrue(const std::function<bool()>& condition) {
  for (int i = 0; i < 1000; ++i) {
    if (condition()) return true;
    Sleep(10);
  }
  return false;
}

/// What Wine keeps of a driver: the image in memory, and the file as long as another one has the same version.
void forgetDriver() {
  runProgram("C:\\windows\\system32\\sc.exe", "stop vexoqtf");
  for (const auto& file : std::filesystem::recursive_directory_iterator{"C:\\windows\\system32"})
    if (file.path().filename() == "vexoqtf.sys") std::filesystem::remove(file.path());
}

std::uint32_t setup(const std::string& package, const std::string& command) {
  return runProgram(programFolder() + "\\" + package + "\\vqs-simulator.exe", command);
}

void removeDriver() {
  setup("package", "remove");
  forgetDriver();
}

/// Wine now and then starts a driver before the part of itself that has the devices, and the driver's process ends.
bool installFresh(const std::string& package) {
  for (int tries = 0; tries < 3; ++tries) {
    if (setup(package, "install") == 0) return true;
    removeDriver();
  }
  return false;
}

/// No driver at first, and the usual one at the end.
class DriverInstall : public ::testing::Test {
 protected:
  void SetUp() override { removeDriver(); }
  void TearDown() override {
    removeDriver();
    EXPECT_TRUE(installFresh("package"));
  }
};

void changeOutputs(const DeviceHandle& device, std::uint32_t value) {
  EXPECT_EQ(device.request(kAppIo, Record{12}.u32(0, 4).u32(4, value), 12).error, 0U);
}

void readOutputs(const DeviceHandle& device) { EXPECT_EQ(device.request(kAppIo, Record{12}, 12).error, 0U); }

bool isSignalled(HANDLE event) { return WaitForSingleObject(event, 0) == WAIT_OBJECT_0; }

TEST_F(DriverInstall, succeeds_before_there_is_a_folder_for_the_event) {
  ASSERT_TRUE(installFresh("late"));
  ASSERT_EQ(setup("late", "status"), 0U);
  const DeviceHandle device;
  changeOutputs(device, 7);
  const OwnedHandle folder{createFolder(kLateFolder)};
  ASSERT_TRUE(folder);
  ASSERT_TRUE(becomesTrue([] { return bool{OwnedHandle{openEvent(kLateEvent, SYNCHRONIZE)}}; }));
  const OwnedHandle event{openEvent(kLateEvent, SYNCHRONIZE | READ_CONTROL)};
  EXPECT_TRUE(isSignalled(event.get())) << "the outputs are not read yet";
  EXPECT_EQ(ownerOf(event.get()), kSystem);
  EXPECT_EQ(accessListOf(event.get()), kSystemSetsEverybodyWaits);
  readOutputs(device);
  EXPECT_FALSE(isSignalled(event.get()));
}

TEST_F(DriverInstall, makes_the_event_for_the_first_client_that_comes_when_it_can) {
  ASSERT_TRUE(installFresh("late"));
  const OwnedHandle folder{createFolder(kLateFolder)};
  ASSERT_TRUE(folder);
  const DeviceHandle device;
  // Wine opens a device without waiting for its driver, whose requests wait for each other.
  readOutputs(device);
  EXPECT_TRUE(OwnedHandle{openEvent(kLateEvent, SYNCHRONIZE)}) << "at once";
}

TEST_F(DriverInstall, succeeds_while_the_events_name_is_a_mutexs) {
  OwnedHandle mutex{CreateMutexA(nullptr, FALSE, kEvent)};
  ASSERT_TRUE(mutex);
  ASSERT_TRUE(installFresh("package"));
  QtfSession* session = nullptr;
  ASSERT_EQ(vqsInitialize(&session), kDone);
  EXPECT_EQ(vqsSetAppInputs(session, 7, 8), kDone);
  EXPECT_EQ(vqsWaitAppOutput(session, 0), kInvalid) << "there is no event";
  mutex.close();
  EXPECT_TRUE(becomesTrue([] { return bool{OwnedHandle{OpenEventA(SYNCHRONIZE, FALSE, kEvent)}}; }));
  // The library's own waits leave the event open, and with it the name taken.
  const OwnedHandle event{OpenEventA(SYNCHRONIZE, FALSE, kEvent)};
  EXPECT_TRUE(isSignalled(event.get())) << "the outputs have changed";
  std::uint32_t outputs[2] = {};
  EXPECT_EQ(vqsGetAppOutput(session, &outputs[0], &outputs[1]), kDone);
  EXPECT_FALSE(isSignalled(event.get()));
  EXPECT_EQ(vqsUninitialize(session), kDone);
}

TEST_F(DriverInstall, takes_over_an_event_that_a_user_made) {
  const OwnedHandle event{CreateEventA(nullptr, TRUE, TRUE, kEvent)};
  ASSERT_TRUE(event);
  EXPECT_TRUE(OwnedHandle{OpenEventA(EVENT_MODIFY_STATE, FALSE, kEvent)}) << "anybody may set it";
  ASSERT_TRUE(installFresh("package"));
  const DeviceHandle device;
  // Wine opens a device without waiting for its driver, which has the event before it answers its first request.
  EXPECT_EQ(device.request(kPbRead, Record{19872}.u8(0, 1), 19872).error, 0U);
  EXPECT_FALSE(isSignalled(event.get())) << "nothing has changed yet";
  EXPECT_EQ(ownerOf(event.get()), kSystem);
  EXPECT_EQ(accessListOf(event.get()), kSystemSetsEverybodyWaits);
  EXPECT_FALSE(OwnedHandle{OpenEventA(EVENT_MODIFY_STATE, FALSE, kEvent)}) << "nobody but the system";
  EXPECT_TRUE(OwnedHandle{OpenEventA(SYNCHRONIZE, FALSE, kEvent)});
  changeOutputs(device, 7);
  EXPECT_TRUE(isSignalled(event.get()));
  readOutputs(device);
  EXPECT_FALSE(isSignalled(event.get()));
}

TEST_F(DriverInstall, ends_while_a_client_has_the_device_open) {
  ASSERT_TRUE(installFresh("package"));
  DeviceHandle device;
  changeOutputs(device, 7);
  EXPECT_EQ(setup("package", "remove"), 0U);
  EXPECT_NE(device.request(kAppIo, Record{12}, 12).error, 0U);
  device.close();
  EXPECT_TRUE(installFresh("package"));
  const DeviceHandle again;
  readOutputs(again);
}

}  // namespace
}  // namespace test
