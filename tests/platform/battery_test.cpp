// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <array>
#include <functional>

#include <vqs/platform.h>
#include "tests/support/filling_device.h"
#include "tests/support/results.h"
#include "tests/support/session_test.h"
#include "tests/support/windows_calls.h"
#include "tests/support/witness_device.h"

namespace test {
namespace {

constexpr std::string_view kAskTemperature = "01 00 00 00  00 00 00 00";
constexpr std::string_view kAskLimits = "02 00 00 00  00 00 00 00";

/// The calls that open a handle of their own: there is no session, and nothing may stay open or allocated.
class OwnHandle : public ::testing::Test {
 protected:
  void TearDown() override { EXPECT_EQ(faults.outstanding(), 0); }

  vqsStatus getTemperature() { return vqsGetBatteryTemperature(&temperature); }
  void expectBoth(vqsStatus result) {
    EXPECT_EQ(vqsSetChargeRate(1), result);
    EXPECT_EQ(getTemperature(), result);
    EXPECT_EQ(temperature, kPoisonWord);
  }

  NoInvalidParameter strict;
  Faults faults;
  std::uint32_t temperature = kPoisonWord;
};

class OnDriver : public OwnHandle {
 protected:
  Exchange& expectBattery(std::string_view request, std::source_location where = std::source_location::current()) {
    return driver.expectSplit(0x80222010, where).request(request).answerLength(4);
  }
  void TearDown() override {
    OwnHandle::TearDown();
    EXPECT_EQ(driver.openHandles(), 0);
  }

  ScriptedDriver driver;
};

class SetChargeRate : public OnDriver {};

TEST_F(SetChargeRate, sends_the_rate_and_discards_the_answer) {
  expectBattery("00 00 00 00  44 33 22 F1").replyWord(0, 0xFFFFFFFF);
  EXPECT_EQ(vqsSetChargeRate(0xF1223344), kDone);
  expectBattery("00 00 00 00  00 00 00 00");
  EXPECT_EQ(vqsSetChargeRate(0), kDone);
}

TEST_F(SetChargeRate, fails_with_its_request) {
  expectBattery("00 00 00 00  01 00 00 00").fails();
  EXPECT_EQ(vqsSetChargeRate(1), kFailed);
}

class GetBatteryTemperature : public OnDriver {};

TEST_F(GetBatteryTemperature, receives_the_drivers_word) {
  expectBattery(kAskTemperature).reply("44 33 22 F1");
  EXPECT_EQ(getTemperature(), kDone);
  EXPECT_EQ(temperature, 0xF1223344U);
}

TEST_F(GetBatteryTemperature, begins_with_an_empty_answer) {
  expectBattery(kAskTemperature);
  EXPECT_EQ(getTemperature(), kDone);
  EXPECT_EQ(temperature, 0U);
}

TEST_F(GetBatteryTemperature, leaves_its_output_alone_when_the_request_fails) {
  expectBattery(kAskTemperature).replyWord(0, 7).fails();
  EXPECT_EQ(getTemperature(), kFailed);
  EXPECT_EQ(temperature, kPoisonWord);
}

TEST_F(GetBatteryTemperature, needs_its_output_before_it_opens_anything) {
  const WindowsCalls calls;
  EXPECT_EQ(vqsGetBatteryTemperature(nullptr), kInvalid);
  EXPECT_TRUE(calls.all().empty());
}

TEST_F(OwnHandle, is_opened_for_one_request_and_closed_again) {
  WitnessDevice device;
  EXPECT_EQ(vqsSetChargeRate(1), kDone);
  EXPECT_EQ(device.openings, 1);
  EXPECT_EQ(device.closings, 1);
  EXPECT_EQ(getTemperature(), kDone);
  EXPECT_EQ(device.openings, 2);
  EXPECT_EQ(device.closings, 2);
  EXPECT_EQ(device.requests.size(), 2U);
}

TEST_F(OwnHandle, takes_an_opening_a_request_and_a_closing_and_one_allocation) {
  WitnessDevice device;
  for (const bool succeeds : {true, false}) {
    device.succeeds = succeeds;
    for (const auto& call : {std::function{[] { return vqsSetChargeRate(1); }},
                             std::function{[this] { return vqsGetBatteryTemperature(&temperature); }}}) {
      const WindowsCalls calls;
      const int allocations = faults.calls(Fault::kAllocation);
      EXPECT_EQ(call(), succeeds ? kDone : kFailed);
      ASSERT_EQ(calls.all().size(), 5U);
      EXPECT_TRUE(calls.all()[2].starts_with("CreateFileW("));
      EXPECT_EQ(calls.all()[3], "DeviceIoControl(0x80222010, 8, 4)");
      EXPECT_EQ(calls.all()[4], "CloseHandle()");
      EXPECT_EQ(faults.calls(Fault::kAllocation), allocations + 1) << "the list of devices";
    }
  }
}

TEST_F(OwnHandle, gives_the_answer_whatever_byte_count_the_driver_reports) {
  FillingDevice device;
  for (const DWORD reported : {0U, 1U, 0xFFFFFFFFU}) {
    device.reported = reported;
    temperature = kPoisonWord;
    EXPECT_EQ(getTemperature(), kDone);
    EXPECT_EQ(temperature, 0x11111111U);
    EXPECT_EQ(vqsSetChargeRate(1), kDone);
  }
}

TEST_F(OwnHandle, is_closed_when_the_request_fails) {
  WitnessDevice device;
  device.succeeds = false;
  expectBoth(kFailed);
  EXPECT_EQ(device.requests.size(), 2U);
  EXPECT_EQ(device.openings, 2);
  EXPECT_EQ(device.closings, 2);
}

TEST_F(OwnHandle, is_not_that_of_an_open_session) {
  WitnessDevice device;
  const HANDLE other = CreateFileW(u"\\\\?\\witness", GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  EXPECT_EQ(vqsSetChargeRate(1), kDone);
  EXPECT_EQ(getTemperature(), kDone);
  ASSERT_EQ(device.handles.size(), 2U);
  EXPECT_NE(device.handles[0], other);
  EXPECT_NE(device.handles[1], other);
  EXPECT_EQ(device.closings, 2);
  CloseHandle(other);
}

TEST_F(OwnHandle, cannot_be_had_without_a_driver) { expectBoth(kNoDriver); }

TEST_F(OwnHandle, cannot_be_had_when_the_device_refuses) {
  WitnessDevice device;
  device.refusesOpen = true;
  expectBoth(kFailed);
  EXPECT_TRUE(device.requests.empty());
  EXPECT_EQ(device.closings, 0);
}

TEST_F(OwnHandle, cannot_be_had_when_the_devices_cannot_be_listed) {
  for (const char* function : {"CM_Get_Device_Interface_List_SizeA", "CM_Get_Device_Interface_ListW"}) {
    WitnessDevice device;
    WindowsCalls calls;
    calls.refuse(function);
    expectBoth(kFailed);
    EXPECT_EQ(device.openings, 0);
  }
}

TEST_F(OwnHandle, cannot_be_had_without_memory) {
  WitnessDevice device;
  faults.failFrom(Fault::kAllocation, 1);
  expectBoth(kNoMemory);
  EXPECT_EQ(device.openings, 0);
}

class GetBatteryLimits : public FrugalSessionTest {
 protected:
  Exchange& expectGet(std::source_location where = std::source_location::current()) {
    return driver.expectSplit(0x80222010, where).request(kAskLimits);
  }
  vqsStatus get() { return vqsGetBatteryLimits(session, &limits[0], &limits[1], &limits[2], &limits[3]); }
  void expectLimits(const std::array<std::uint16_t, 4>& expected) { EXPECT_EQ(limits, expected); }

  static constexpr std::uint16_t kPoison16 = 0xA5A5;
  static constexpr std::array<std::uint16_t, 4> kUntouched = {kPoison16, kPoison16, kPoison16, kPoison16};
  std::array<std::uint16_t, 4> limits = kUntouched;
};

TEST_F(GetBatteryLimits, receives_four_words_in_order) {
  expectGet().reply("22 F1 44 33 66 55 88 77");
  EXPECT_EQ(get(), kDone);
  expectLimits({0xF122, 0x3344, 0x5566, 0x7788});
}

TEST_F(GetBatteryLimits, begins_with_an_empty_answer) {
  expectGet();
  EXPECT_EQ(get(), kDone);
  expectLimits({0, 0, 0, 0});
}

TEST_F(GetBatteryLimits, uses_the_sessions_handle) {
  const WindowsCalls calls;
  expectGet();
  EXPECT_EQ(get(), kDone);
  EXPECT_TRUE(calls.of("CreateFileW").empty());
  EXPECT_TRUE(calls.of("CloseHandle").empty());
}

TEST_F(GetBatteryLimits, leaves_its_outputs_alone_when_the_request_fails) {
  expectGet().reply(Bytes(8, 0x11)).fails();
  EXPECT_EQ(get(), kFailed);
  expectLimits(kUntouched);
}

TEST_F(GetBatteryLimits, needs_an_open_session_and_all_outputs) {
  auto& [a, b, c, d] = limits;
  EXPECT_EQ(vqsGetBatteryLimits(nullptr, &a, &b, &c, &d), kInvalid);
  EXPECT_EQ(vqsGetBatteryLimits(&closed, &a, &b, &c, &d), kInvalid);
  EXPECT_EQ(vqsGetBatteryLimits(session, nullptr, &b, &c, &d), kInvalid);
  EXPECT_EQ(vqsGetBatteryLimits(session, &a, nullptr, &c, &d), kInvalid);
  EXPECT_EQ(vqsGetBatteryLimits(session, &a, &b, nullptr, &d), kInvalid);
  EXPECT_EQ(vqsGetBatteryLimits(session, &a, &b, &c, nullptr), kInvalid);
  expectLimits(kUntouched);
}

}  // namespace
}  // namespace test
