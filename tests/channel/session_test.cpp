// SPDX-License-Identifier: Apache-2.0
#include "src/channel/session_record.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "tests/support/faults.h"
#include "tests/support/results.h"
#include "tests/support/scripted_driver.h"
#include "tests/support/windows_calls.h"
#include "tests/support/witness_device.h"

namespace test {
namespace {

using ::testing::Test;
using ::testing::TestWithParam;
using ::testing::Values;

constexpr std::uint32_t kAnnouncement = 0x80222068;
constexpr std::uint32_t kLog = 0x80222058;

/// What out pointers hold before, to see that a failure writes nothing.
QtfSession* const kUntouched = reinterpret_cast<QtfSession*>(0xA5A5A5A5);

void expectAnnouncement(ScriptedDriver& driver, std::source_location where = std::source_location::current()) {
  driver.expectSplit(kAnnouncement, where).request("03 00 00 00  00 00 00 00  00 00 00 00");
}

struct Opening {
  const char* title;
  vqsStatus (*initialize)(QtfSession**);
};

class Initialize : public TestWithParam<Opening> {
 protected:
  void TearDown() override { EXPECT_EQ(faults.outstanding(), 0); }

  vqsStatus initialize() { return GetParam().initialize(&session); }
  void expectResult(vqsStatus result) {
    EXPECT_EQ(initialize(), result);
    EXPECT_EQ(session, kUntouched);
  }

  Faults faults;
  QtfSession* session = kUntouched;
};

TEST_P(Initialize, opens_the_driver_and_announces_the_session) {
  ScriptedDriver driver;
  expectAnnouncement(driver);
  ASSERT_EQ(initialize(), kDone);
  ASSERT_NE(session, kUntouched);
  ASSERT_NE(session, nullptr);
  EXPECT_EQ(driver.openHandles(), 1);
  EXPECT_EQ(driver.requestsServed(), 1U);
  EXPECT_EQ(vqsUninitialize(session), kDone);
  EXPECT_EQ(driver.openHandles(), 0);
}

TEST_P(Initialize, keeps_the_session_alone_once_it_is_open) {
  ScriptedDriver driver;
  expectAnnouncement(driver);
  ASSERT_EQ(initialize(), kDone);
  EXPECT_EQ(faults.outstanding(), 1);
  EXPECT_EQ(vqsUninitialize(session), kDone);
}

TEST_P(Initialize, stores_the_handle_first_and_no_running_log) {
  WitnessDevice device;
  ASSERT_EQ(initialize(), kDone);
  EXPECT_EQ(*reinterpret_cast<HANDLE*>(session), device.handles.at(0));
  EXPECT_EQ(session->handle, device.handles.at(0));
  EXPECT_EQ(session->logReference, 0U);
  EXPECT_EQ(vqsUninitialize(session), kDone);
}

TEST_P(Initialize, announces_with_a_zeroed_answer_buffer_of_its_own) {
  WitnessDevice device;
  ASSERT_EQ(initialize(), kDone);
  ASSERT_EQ(device.requests.size(), 1U);
  const auto& request = device.requests[0];
  EXPECT_EQ(request.call.code, kAnnouncement);
  EXPECT_EQ(request.input, hex("03 00 00 00  00 00 00 00  00 00 00 00"));
  EXPECT_EQ(request.outputBefore, Bytes(12, 0));
  EXPECT_NE(request.call.input, request.call.output);
  EXPECT_EQ(vqsUninitialize(session), kDone);
}

TEST_P(Initialize, hands_the_session_out_before_the_announcement) {
  ScriptedDriver driver;
  expectAnnouncement(driver);
  WindowsCalls calls;
  const QtfSession* seen = nullptr;
  calls.before("DeviceIoControl", [&] { seen = session; });
  ASSERT_EQ(initialize(), kDone);
  EXPECT_EQ(seen, session);
  EXPECT_EQ(vqsUninitialize(session), kDone);
}

TEST_P(Initialize, makes_these_calls_in_this_order) {
  ScriptedDriver driver;
  expectAnnouncement(driver);
  WindowsCalls calls;
  ASSERT_EQ(initialize(), kDone);
  const std::vector<std::string> expected = {
      "CM_Get_Device_Interface_List_SizeA(null, 0)",
      "CM_Get_Device_Interface_ListW(null, 61, 0)",
      "CreateFileW(\\\\?\\root#system#0000#{9dc9718b-59bf-43ee-94ed-34bb823dcedf}, 0xc0000000, 3, null, 3, 128, null)",
      "DeviceIoControl(0x80222068, 12, 12)",
  };
  EXPECT_EQ(calls.all(), expected);
  EXPECT_EQ(vqsUninitialize(session), kDone);
}

TEST_P(Initialize, succeeds_whatever_the_announcement_is_answered) {
  for (const bool fails : {false, true}) {
    ScriptedDriver driver;
    auto& announcement = driver.expectSplit(kAnnouncement).request("03 00 00 00  00 00 00 00  00 00 00 00");
    announcement.reply("ff ff ff ff  ff ff ff ff  ff ff ff ff");
    if (fails) announcement.fails();
    ASSERT_EQ(initialize(), kDone);
    EXPECT_EQ(session->logReference, 0U);
    EXPECT_EQ(vqsUninitialize(session), kDone);
  }
}

TEST_P(Initialize, refuses_a_null_pointer_before_anything_else) {
  ScriptedDriver driver;
  WindowsCalls calls;
  EXPECT_EQ(GetParam().initialize(nullptr), kInvalid);
  EXPECT_TRUE(calls.all().empty());
  EXPECT_EQ(faults.calls(Fault::kAllocation), 0);
}

TEST_P(Initialize, gives_4_without_a_driver) { expectResult(kNoDriver); }

TEST_P(Initialize, gives_1_when_a_step_of_the_search_fails) {
  for (const char* step : {"CM_Get_Device_Interface_List_SizeA", "CM_Get_Device_Interface_ListW", "CreateFileW"}) {
    SCOPED_TRACE(step);
    ScriptedDriver driver;
    WindowsCalls calls;
    calls.refuse(step);
    expectResult(kFailed);
    EXPECT_EQ(faults.outstanding(), 0);
  }
}

TEST_P(Initialize, gives_1_when_the_device_refuses_to_be_opened) {
  WitnessDevice device;
  device.refusesOpen = true;
  expectResult(kFailed);
  EXPECT_TRUE(device.requests.empty());
}

TEST_P(Initialize, gives_3_without_memory_for_the_session_and_calls_nothing) {
  ScriptedDriver driver;
  WindowsCalls calls;
  faults.fail(Fault::kAllocation, 1);
  expectResult(kNoMemory);
  EXPECT_TRUE(calls.all().empty());
}

TEST_P(Initialize, gives_3_without_memory_for_the_list_and_opens_nothing) {
  ScriptedDriver driver;
  WindowsCalls calls;
  faults.fail(Fault::kAllocation, 2);
  expectResult(kNoMemory);
  EXPECT_TRUE(calls.of("CreateFileW").empty());
}

TEST_P(Initialize, allocates_the_session_and_the_list_and_nothing_else) {
  ScriptedDriver driver;
  expectAnnouncement(driver);
  ASSERT_EQ(initialize(), kDone);
  EXPECT_EQ(faults.calls(Fault::kAllocation), 2);
  EXPECT_EQ(vqsUninitialize(session), kDone);
}

TEST_P(Initialize, opens_a_handle_of_its_own_for_every_session) {
  ScriptedDriver driver;
  expectAnnouncement(driver);
  expectAnnouncement(driver);
  QtfSession* other = nullptr;
  ASSERT_EQ(initialize(), kDone);
  ASSERT_EQ(GetParam().initialize(&other), kDone);
  EXPECT_NE(session, other);
  EXPECT_NE(session->handle, other->handle);
  EXPECT_EQ(driver.openHandles(), 2);
  EXPECT_EQ(vqsUninitialize(session), kDone);
  EXPECT_EQ(driver.openHandles(), 1);
  EXPECT_EQ(vqsExUninitialize(other), kDone);
}

INSTANTIATE_TEST_SUITE_P(By, Initialize, Values(Opening{"Plain", vqsInitialize}, Opening{"Ex", vqsExInitialize}),
                         [](const auto& instance) { return std::string{instance.param.title}; });

TEST(InitializePlain, clears_the_whole_session) {
  WitnessDevice device;
  QtfSession* session = nullptr;
  ASSERT_EQ(vqsInitialize(&session), kDone);
  EXPECT_EQ(session->logSessionId, 0U);
  EXPECT_EQ(vqsUninitialize(session), kDone);
}

struct Closing {
  const char* title;
  vqsStatus (*uninitialize)(QtfSession*);
  const char* stopRequest;
};

class Uninitialize : public TestWithParam<Closing> {
 protected:
  void TearDown() override { EXPECT_EQ(faults.outstanding(), 0); }

  /// A session that the library may free, made without traffic.
  QtfSession* openSession() {
    auto* session = static_cast<QtfSession*>(std::calloc(1, sizeof(QtfSession)));
    session->handle = CreateFileW(ScriptedDriver::kPath, 0xC0000000, 3, nullptr, 3, 0x80, nullptr);
    EXPECT_NE(session->handle, INVALID_HANDLE_VALUE);
    return session;
  }
  QtfSession* openSessionWithLog() {
    auto* session = openSession();
    session->logReference = 0x00007FF812345000;
    session->logSessionId = 0x44332211;
    return session;
  }

  Faults faults;
};

TEST_P(Uninitialize, sends_nothing_when_no_log_is_running) {
  ScriptedDriver driver;
  auto* session = openSession();
  session->logSessionId = 0x44332211;
  WindowsCalls calls;
  EXPECT_EQ(GetParam().uninitialize(session), kDone);
  const std::vector<std::string> expected = {"CloseHandle()"};
  EXPECT_EQ(calls.all(), expected);
  EXPECT_EQ(driver.openHandles(), 0);
}

TEST_P(Uninitialize, stops_a_running_log_with_its_own_operation) {
  ScriptedDriver driver;
  driver.expectSame(kLog).request(GetParam().stopRequest);
  EXPECT_EQ(GetParam().uninitialize(openSessionWithLog()), kDone);
  EXPECT_EQ(driver.openHandles(), 0);
}

TEST_P(Uninitialize, takes_any_reference_for_a_running_log) {
  for (const std::uint64_t reference : {std::uint64_t{1}, std::uint64_t{0x100000000}, ~std::uint64_t{0}}) {
    ScriptedDriver driver;
    driver.expectSame(kLog).request(GetParam().stopRequest);
    auto* session = openSessionWithLog();
    session->logReference = reference;
    EXPECT_EQ(GetParam().uninitialize(session), kDone);
  }
}

// The reference of a key/value log points at a cell of the heap; only that log's own stop frees it.
TEST_P(Uninitialize, stops_a_key_value_log_alike_and_leaves_its_cell) {
  ScriptedDriver driver;
  driver.expectSame(kLog).request(GetParam().stopRequest);
  auto* session = openSessionWithLog();
  void* volatile cell = std::malloc(8);
  session->logReference = reinterpret_cast<std::uintptr_t>(cell);
  EXPECT_EQ(GetParam().uninitialize(session), kDone);
  EXPECT_EQ(faults.outstanding(), 1);
  std::free(cell);
}

TEST_P(Uninitialize, closes_the_handle_after_the_log_and_clears_the_reference_in_between) {
  ScriptedDriver driver;
  driver.expectSame(kLog).request(GetParam().stopRequest);
  auto* session = openSessionWithLog();
  WindowsCalls calls;
  std::uint64_t reference = kPoisonWord;
  calls.before("CloseHandle", [&] { reference = session->logReference; });
  EXPECT_EQ(GetParam().uninitialize(session), kDone);
  const std::vector<std::string> expected = {"DeviceIoControl(0x80222058, 32, 32)", "CloseHandle()"};
  EXPECT_EQ(calls.all(), expected);
  EXPECT_EQ(reference, 0U);
}

TEST_P(Uninitialize, ignores_a_log_stop_that_fails) {
  ScriptedDriver driver;
  driver.expectSame(kLog).request(GetParam().stopRequest).reply(Bytes(32, 0xFF)).fails();
  EXPECT_EQ(GetParam().uninitialize(openSessionWithLog()), kDone);
  EXPECT_EQ(driver.openHandles(), 0);
}

TEST_P(Uninitialize, succeeds_on_a_device_that_is_gone) {
  auto* session = [this] {
    const WitnessDevice device{std::u16string{ScriptedDriver::kPath}};
    return openSessionWithLog();
  }();
  EXPECT_EQ(GetParam().uninitialize(session), kDone);
}

TEST_P(Uninitialize, closes_the_handle_without_a_look_at_it) {
  for (const HANDLE handle : {HANDLE{nullptr}, INVALID_HANDLE_VALUE}) {
    auto* session = static_cast<QtfSession*>(std::calloc(1, sizeof(QtfSession)));
    session->handle = handle;
    WindowsCalls calls;
    EXPECT_EQ(GetParam().uninitialize(session), kDone);
    const std::vector<std::string> expected = {"CloseHandle()"};
    EXPECT_EQ(calls.all(), expected);
  }
}

TEST_P(Uninitialize, needs_no_memory) {
  ScriptedDriver driver;
  driver.expectSame(kLog).request(GetParam().stopRequest);
  auto* session = openSessionWithLog();
  faults.failFrom(Fault::kAllocation, 1);
  EXPECT_EQ(GetParam().uninitialize(session), kDone);
}

TEST_P(Uninitialize, refuses_a_null_session) {
  ScriptedDriver driver;
  WindowsCalls calls;
  EXPECT_EQ(GetParam().uninitialize(nullptr), kInvalid);
  EXPECT_TRUE(calls.all().empty());
}

TEST_P(Uninitialize, closes_sessions_of_either_kind) {
  for (auto* initialize : {vqsInitialize, vqsExInitialize}) {
    ScriptedDriver driver;
    expectAnnouncement(driver);
    QtfSession* session = nullptr;
    ASSERT_EQ(initialize(&session), kDone);
    EXPECT_EQ(GetParam().uninitialize(session), kDone);
    EXPECT_EQ(driver.openHandles(), 0);
  }
}

INSTANTIATE_TEST_SUITE_P(By, Uninitialize,
                         Values(Closing{"Plain", vqsUninitialize,
                                        "11 22 33 44  01 00 00 00  00 00 00 00 00 00 00 00"
                                        "00 00 00 00 00 00 00 00  00 00 00 00  00 00 00 00"},
                                Closing{"Ex", vqsExUninitialize,
                                        "11 22 33 44  03 00 00 00  00 00 00 00 00 00 00 00"
                                        "00 00 00 00 00 00 00 00  00 00 00 00  00 00 00 00"}),
                         [](const auto& instance) { return std::string{instance.param.title}; });

TEST(Session, keeps_its_fields_in_this_order) {
  EXPECT_EQ(offsetof(QtfSession, handle), 0U);
  EXPECT_EQ(offsetof(QtfSession, logReference), 8U);
  EXPECT_EQ(offsetof(QtfSession, logSessionId), 16U);
}

}  // namespace
}  // namespace test
