// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <limits>
#include <thread>

#include <vqs/platform.h>
#include "tests/platform/pointers.h"
#include "tests/support/results.h"
#include "tests/support/session_test.h"
#include "tests/support/windows_calls.h"

namespace test {
namespace {

constexpr std::uint32_t kAppIo = 0x80222068;
constexpr char16_t kEventName[] = u"Global\\VexoQtfAppOutputEvent";

struct AppIoTwin {
  const char* name;
  vqsStatus (*setInput)(QtfSession*, std::int32_t, std::uint32_t);
  vqsStatus (*getOutput)(QtfSession*, std::uint32_t*, std::uint32_t*);
  vqsStatus (*wait)(QtfSession*, std::uint32_t);
};

auto appIoTwins() {
  return ::testing::Values(AppIoTwin{"plain", vqsSetAppInput, vqsGetAppOutput, vqsWaitAppOutput},
                           AppIoTwin{"Ex", vqsExSetAppInput, vqsExGetAppOutput, vqsExWaitAppOutput});
}

class SetAppInput : public FrugalSessionTest, public ::testing::WithParamInterface<AppIoTwin> {
 protected:
  vqsStatus set(std::int32_t index, std::uint32_t value) { return GetParam().setInput(session, index, value); }
};

TEST_P(SetAppInput, sends_index_1_as_input_A) {
  driver.expectSplit(kAppIo).request("01 00 00 00  44 33 22 11  00 00 00 00").reply(Bytes(12, 0xFF));
  EXPECT_EQ(set(1, 0x11223344), kDone);
}

TEST_P(SetAppInput, sends_index_2_as_input_B) {
  driver.expectSplit(kAppIo).request("02 00 00 00  00 00 00 00  88 77 66 F5").reply(Bytes(12, 0xFF));
  EXPECT_EQ(set(2, 0xF5667788), kDone);
}

TEST_P(SetAppInput, fails_with_its_request) {
  driver.expectSplit(kAppIo).request("01 00 00 00  07 00 00 00  00 00 00 00").fails();
  EXPECT_EQ(set(1, 7), kFailed);
  driver.expectSplit(kAppIo).request("02 00 00 00  00 00 00 00  07 00 00 00").fails();
  EXPECT_EQ(set(2, 7), kFailed);
}

TEST_P(SetAppInput, refuses_an_index_from_3_up) {
  for (const std::int32_t index : {3, 4, 5, 257, std::numeric_limits<std::int32_t>::max()})
    EXPECT_EQ(set(index, 7), kInvalid);
}

TEST_P(SetAppInput, refuses_index_0_and_negative_ones_too) {
  for (const std::int32_t index : {0, -1, -2, std::numeric_limits<std::int32_t>::min()})
    EXPECT_EQ(set(index, 7), kInvalid);
}

TEST_P(SetAppInput, needs_an_open_session) {
  EXPECT_EQ(GetParam().setInput(nullptr, 1, 7), kInvalid);
  EXPECT_EQ(GetParam().setInput(&closed, 2, 7), kInvalid);
}

INSTANTIATE_TEST_SUITE_P(Twins, SetAppInput, appIoTwins(), caseName);

class SetAppInputs : public FrugalSessionTest {};

TEST_F(SetAppInputs, sends_both_values_as_operation_4) {
  driver.expectSplit(kAppIo).request("04 00 00 00  44 33 22 11  88 77 66 F5").reply(Bytes(12, 0xFF));
  EXPECT_EQ(vqsSetAppInputs(session, 0x11223344, 0xF5667788), kDone);
}

TEST_F(SetAppInputs, fails_with_its_request) {
  driver.expectSplit(kAppIo).request("04 00 00 00  01 00 00 00  02 00 00 00").fails();
  EXPECT_EQ(vqsSetAppInputs(session, 1, 2), kFailed);
}

TEST_F(SetAppInputs, needs_an_open_session) {
  EXPECT_EQ(vqsSetAppInputs(nullptr, 1, 2), kInvalid);
  EXPECT_EQ(vqsSetAppInputs(&closed, 1, 2), kInvalid);
}

class GetAppOutput : public FrugalSessionTest, public ::testing::WithParamInterface<AppIoTwin> {
 protected:
  vqsStatus get() { return GetParam().getOutput(session, &valueA, &valueB); }
  Exchange& expectGet(std::source_location where = std::source_location::current()) {
    return driver.expectSplit(kAppIo, where).request("00 00 00 00  00 00 00 00  00 00 00 00");
  }
  void expectOutputs(std::uint32_t a, std::uint32_t b) {
    EXPECT_EQ(valueA, a);
    EXPECT_EQ(valueB, b);
  }

  std::uint32_t valueA = kPoisonWord;
  std::uint32_t valueB = kPoisonWord;
};

TEST_P(GetAppOutput, writes_both_values_of_the_answer) {
  expectGet().reply("EE EE EE EE  44 33 22 11  88 77 66 F5");
  EXPECT_EQ(get(), kDone);
  expectOutputs(0x11223344, 0xF5667788);
}

TEST_P(GetAppOutput, begins_with_an_empty_answer) {
  expectGet();
  EXPECT_EQ(get(), kDone);
  expectOutputs(0, 0);
}

TEST_P(GetAppOutput, leaves_its_outputs_alone_when_the_request_fails) {
  expectGet().reply("EE EE EE EE  44 33 22 11  88 77 66 F5").fails();
  EXPECT_EQ(get(), kFailed);
  expectOutputs(kPoisonWord, kPoisonWord);
}

TEST_P(GetAppOutput, needs_an_open_session_and_both_outputs) {
  EXPECT_EQ(GetParam().getOutput(nullptr, &valueA, &valueB), kInvalid);
  EXPECT_EQ(GetParam().getOutput(&closed, &valueA, &valueB), kInvalid);
  EXPECT_EQ(GetParam().getOutput(session, nullptr, &valueB), kInvalid);
  EXPECT_EQ(GetParam().getOutput(session, &valueA, nullptr), kInvalid);
  expectOutputs(kPoisonWord, kPoisonWord);
}

INSTANTIATE_TEST_SUITE_P(Twins, GetAppOutput, appIoTwins(), caseName);

class WaitAppOutput : public FrugalSessionTest, public ::testing::WithParamInterface<AppIoTwin> {
 protected:
  ~WaitAppOutput() override { host::removeEvent(kEventName); }
  vqsStatus wait(std::uint32_t milliseconds) { return GetParam().wait(session, milliseconds); }
};

TEST_P(WaitAppOutput, answers_2_without_the_event) { EXPECT_EQ(wait(0), kInvalid); }

TEST_P(WaitAppOutput, answers_2_when_the_event_cannot_be_opened) {
  host::createEvent(kEventName);
  host::signalEvent(kEventName);
  WindowsCalls calls;
  calls.refuse("OpenEventW");
  EXPECT_EQ(wait(0), kInvalid);
  EXPECT_EQ(calls.all().size(), 1U);
}

TEST_P(WaitAppOutput, answers_1_when_the_time_is_over) {
  host::createEvent(kEventName);
  EXPECT_EQ(wait(0), kFailed);
  EXPECT_EQ(wait(5), kFailed);
}

TEST_P(WaitAppOutput, answers_1_when_waiting_fails) {
  host::createEvent(kEventName);
  host::signalEvent(kEventName);
  WindowsCalls calls;
  calls.refuse("WaitForSingleObject");
  EXPECT_EQ(wait(0), kFailed);
}

TEST_P(WaitAppOutput, succeeds_when_the_event_is_signalled) {
  host::createEvent(kEventName);
  host::signalEvent(kEventName);
  EXPECT_EQ(wait(0), kDone);
  EXPECT_EQ(wait(0xFFFFFFFF), kDone);
}

TEST_P(WaitAppOutput, opens_the_event_for_every_wait_and_leaves_it_open) {
  host::createEvent(kEventName);
  WindowsCalls calls;
  EXPECT_EQ(wait(3), kFailed);
  host::signalEvent(kEventName);
  EXPECT_EQ(wait(0xFFFFFFFF), kDone);
  EXPECT_EQ(calls.all(),
            (std::vector<std::string>{
                "OpenEventW(0x100000, 0, Global\\VexoQtfAppOutputEvent)", "WaitForSingleObject(3)",
                "OpenEventW(0x100000, 0, Global\\VexoQtfAppOutputEvent)", "WaitForSingleObject(0xffffffff)"}));
}

TEST_P(WaitAppOutput, wakes_every_thread_that_waits) {
  host::createEvent(kEventName);
  std::atomic<int> woken = 0;
  const auto waiter = [&] {
    if (wait(60000) == kDone) ++woken;
  };
  std::array<std::jthread, 3> threads{std::jthread{waiter}, std::jthread{waiter}, std::jthread{waiter}};
  std::this_thread::sleep_for(std::chrono::milliseconds{20});
  host::signalEvent(kEventName);
  for (auto& thread : threads) thread.join();
  EXPECT_EQ(woken, 3);
}

TEST_P(WaitAppOutput, needs_an_open_session) {
  host::createEvent(kEventName);
  host::signalEvent(kEventName);
  WindowsCalls calls;
  EXPECT_EQ(GetParam().wait(nullptr, 0), kInvalid);
  EXPECT_EQ(GetParam().wait(&closed, 0), kInvalid);
  EXPECT_TRUE(calls.all().empty());
}

INSTANTIATE_TEST_SUITE_P(Twins, WaitAppOutput, appIoTwins(), caseName);

TEST(WaitAppOutputNames, are_one_routine) { expectOneRoutine(vqsWaitAppOutput, vqsExWaitAppOutput); }

constexpr char16_t kCallersEvent[] = u"Local\\CallersEvent";

class WaitTaskbarIcon : public FrugalSessionTest {
 protected:
  WaitTaskbarIcon() {
    host::createEvent(kCallersEvent);
    event = OpenEventW(SYNCHRONIZE, FALSE, kCallersEvent);
  }
  ~WaitTaskbarIcon() override {
    CloseHandle(event);
    host::removeEvent(kCallersEvent);
  }

  HANDLE event = nullptr;
};

TEST_F(WaitTaskbarIcon, waits_on_the_callers_event_and_leaves_it_open) {
  WindowsCalls calls;
  EXPECT_EQ(vqsWaitTaskbarIcon(session, event, 0), kFailed);
  EXPECT_EQ(vqsWaitTaskbarIcon(session, event, 5), kFailed);
  host::signalEvent(kCallersEvent);
  EXPECT_EQ(vqsWaitTaskbarIcon(session, event, 0xFFFFFFFF), kDone);
  EXPECT_EQ(calls.all(), (std::vector<std::string>{"WaitForSingleObject(0)", "WaitForSingleObject(5)",
                                                   "WaitForSingleObject(0xffffffff)"}));
}

TEST_F(WaitTaskbarIcon, answers_1_when_waiting_fails) {
  host::signalEvent(kCallersEvent);
  EXPECT_EQ(vqsWaitTaskbarIcon(session, session->handle, 0), kFailed);
  WindowsCalls calls;
  calls.refuse("WaitForSingleObject");
  EXPECT_EQ(vqsWaitTaskbarIcon(session, event, 0), kFailed);
}

TEST_F(WaitTaskbarIcon, asks_for_the_sessions_handle_but_does_not_use_it) {
  int anything = 0;
  QtfSession other{.handle = &anything, .logReference = 0, .logSessionId = 0};
  host::signalEvent(kCallersEvent);
  EXPECT_EQ(vqsWaitTaskbarIcon(&other, event, 0), kDone);
}

TEST_F(WaitTaskbarIcon, needs_an_open_session_and_an_event) {
  host::signalEvent(kCallersEvent);
  WindowsCalls calls;
  EXPECT_EQ(vqsWaitTaskbarIcon(nullptr, event, 0), kInvalid);
  EXPECT_EQ(vqsWaitTaskbarIcon(&closed, event, 0), kInvalid);
  EXPECT_EQ(vqsWaitTaskbarIcon(session, nullptr, 0), kInvalid);
  EXPECT_TRUE(calls.all().empty());
}

}  // namespace
}  // namespace test
