// SPDX-License-Identifier: Apache-2.0
#include "src/channel/driver_handle.h"

#include <gtest/gtest.h>

#include <optional>

#include "tests/support/faults.h"
#include "tests/support/results.h"
#include "tests/support/scripted_driver.h"
#include "tests/support/windows_calls.h"
#include "tests/support/witness_device.h"

namespace test {
namespace {

using ::testing::Test;

/// A value no opening gives, to see that a failure writes nothing.
const HANDLE kUntouched = reinterpret_cast<HANDLE>(0xA5A5A5A5);

class OpenDriverHandle : public Test {
 protected:
  void TearDown() override { EXPECT_EQ(faults.outstanding(), 0); }

  void expectResult(vqsStatus result) {
    EXPECT_EQ(vqs::openDriver(&handle), result);
    EXPECT_EQ(handle, kUntouched);
  }

  Faults faults;
  HANDLE handle = kUntouched;
};

TEST_F(OpenDriverHandle, asks_for_the_list_and_opens_its_first_path) {
  ScriptedDriver driver;
  WindowsCalls calls;
  EXPECT_EQ(vqs::openDriver(&handle), kDone);
  EXPECT_NE(handle, kUntouched);
  const std::vector<std::string> expected = {
      "CM_Get_Device_Interface_List_SizeA(null, 0)",
      "CM_Get_Device_Interface_ListW(null, 61, 0)",
      "CreateFileW(\\\\?\\root#system#0000#{9dc9718b-59bf-43ee-94ed-34bb823dcedf}, 0xc0000000, 3, null, 3, 128, null)",
  };
  EXPECT_EQ(calls.all(), expected);
  EXPECT_EQ(driver.openHandles(), 1);
  CloseHandle(handle);
}

TEST_F(OpenDriverHandle, sends_nothing) {
  WitnessDevice device;
  EXPECT_EQ(vqs::openDriver(&handle), kDone);
  EXPECT_EQ(device.openings, 1);
  EXPECT_TRUE(device.requests.empty());
  CloseHandle(handle);
  EXPECT_EQ(device.closings, 1);
}

TEST_F(OpenDriverHandle, allocates_the_list_alone_two_bytes_a_character) {
  ScriptedDriver driver;
  EXPECT_EQ(vqs::openDriver(&handle), kDone);
  EXPECT_EQ(faults.calls(Fault::kAllocation), 1);
  EXPECT_EQ(faults.peakBytes(), 122U);
  CloseHandle(handle);
}

TEST_F(OpenDriverHandle, takes_the_first_of_several_devices) {
  WitnessDevice first{u"\\\\?\\first"};
  WitnessDevice second{u"\\\\?\\second"};
  WindowsCalls calls;
  EXPECT_EQ(vqs::openDriver(&handle), kDone);
  // 9 units and a zero, 10 units and a zero, and the terminator of the list.
  EXPECT_EQ(calls.of("CM_Get_Device_Interface_ListW").at(0), "CM_Get_Device_Interface_ListW(null, 22, 0)");
  EXPECT_EQ(first.openings, 1);
  EXPECT_EQ(second.openings, 0);
  CloseHandle(handle);
}

TEST_F(OpenDriverHandle, does_not_try_a_second_device) {
  WitnessDevice first{u"\\\\?\\first"};
  first.refusesOpen = true;
  WitnessDevice second{u"\\\\?\\second"};
  expectResult(kFailed);
  EXPECT_EQ(second.openings, 0);
}

TEST_F(OpenDriverHandle, finds_nothing_when_no_device_is_present) {
  WindowsCalls calls;
  expectResult(kNoDriver);
  const std::vector<std::string> expected = {"CM_Get_Device_Interface_List_SizeA(null, 0)"};
  EXPECT_EQ(calls.all(), expected);
  EXPECT_EQ(faults.calls(Fault::kAllocation), 0);
}

TEST_F(OpenDriverHandle, does_not_take_devices_of_another_class) {
  auto other = ScriptedDriver::kInterfaceClass;
  other.Data4[7] = 0xDE;
  WitnessDevice device{u"\\\\?\\other", other};
  expectResult(kNoDriver);
}

TEST_F(OpenDriverHandle, fails_when_the_length_of_the_list_is_refused) {
  ScriptedDriver driver;
  WindowsCalls calls;
  calls.refuse("CM_Get_Device_Interface_List_SizeA");
  expectResult(kFailed);
  EXPECT_EQ(calls.all().size(), 1U);
}

TEST_F(OpenDriverHandle, runs_out_of_memory_before_the_list_is_fetched) {
  ScriptedDriver driver;
  WindowsCalls calls;
  faults.fail(Fault::kAllocation, 1);
  expectResult(kNoMemory);
  EXPECT_EQ(calls.all().size(), 1U);
}

TEST_F(OpenDriverHandle, fails_when_the_list_is_refused) {
  ScriptedDriver driver;
  WindowsCalls calls;
  calls.refuse("CM_Get_Device_Interface_ListW");
  expectResult(kFailed);
  EXPECT_TRUE(calls.of("CreateFileW").empty());
}

TEST_F(OpenDriverHandle, fails_when_the_device_is_refused) {
  ScriptedDriver driver;
  WindowsCalls calls;
  calls.refuse("CreateFileW");
  expectResult(kFailed);
  EXPECT_EQ(driver.openHandles(), 0);
}

TEST_F(OpenDriverHandle, fails_when_a_device_arrives_between_length_and_list) {
  ScriptedDriver driver;
  std::optional<WitnessDevice> late;
  WindowsCalls calls;
  calls.before("CM_Get_Device_Interface_ListW", [&] { late.emplace(); });
  expectResult(kFailed);
  EXPECT_TRUE(calls.of("CreateFileW").empty());
}

TEST_F(OpenDriverHandle, fails_when_the_device_leaves_between_length_and_list) {
  std::optional<WitnessDevice> leaving{std::in_place};
  WindowsCalls calls;
  calls.before("CM_Get_Device_Interface_ListW", [&] { leaving.reset(); });
  expectResult(kFailed);
  // The list is empty by then, and its buffer was zero.
  EXPECT_EQ(calls.of("CreateFileW").at(0), "CreateFileW(, 0xc0000000, 3, null, 3, 128, null)");
}

}  // namespace
}  // namespace test
