// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <string>
#include <thread>
#include <vector>

#include "host/host.h"

namespace test {
namespace {

using std::chrono::steady_clock;

class Events : public ::testing::Test {
 protected:
  Events() { host::createEvent(kName); }
  ~Events() override {
    host::setCallHook(nullptr);
    host::removeEvent(kName);
  }
  static HANDLE open(const char16_t* name = kName) { return OpenEventW(SYNCHRONIZE, FALSE, name); }

  static constexpr const char16_t* kName = u"Global\\Event";
};

TEST_F(Events, open_by_their_exact_name_only) {
  const HANDLE event = open();
  EXPECT_NE(event, nullptr);
  for (const char16_t* name : {u"global\\Event", u"Global\\Even", u"Global\\Event2", u"Event", u""})
    EXPECT_EQ(open(name), nullptr);
  EXPECT_TRUE(CloseHandle(event));
}

TEST_F(Events, give_a_handle_of_its_own_to_every_opening) {
  const HANDLE one = open();
  const HANDLE other = open();
  EXPECT_NE(one, other);
  host::signalEvent(kName);
  EXPECT_TRUE(CloseHandle(one));
  EXPECT_EQ(WaitForSingleObject(one, 0), 0xFFFFFFFFU);
  EXPECT_EQ(WaitForSingleObject(other, 0), 0U);
  EXPECT_TRUE(CloseHandle(other));
}

TEST_F(Events, begin_without_a_signal_and_time_out) {
  const HANDLE event = open();
  EXPECT_EQ(WaitForSingleObject(event, 0), 258U);
  const auto start = steady_clock::now();
  EXPECT_EQ(WaitForSingleObject(event, 30), 258U);
  EXPECT_GE(steady_clock::now() - start, std::chrono::milliseconds{30});
  CloseHandle(event);
}

TEST_F(Events, stay_signalled_until_they_are_reset) {
  const HANDLE event = open();
  host::signalEvent(kName);
  EXPECT_EQ(WaitForSingleObject(event, 0), 0U);
  EXPECT_EQ(WaitForSingleObject(event, 0xFFFFFFFF), 0U);
  host::resetEvent(kName);
  EXPECT_EQ(WaitForSingleObject(event, 0), 258U);
  CloseHandle(event);
}

TEST_F(Events, keep_their_signal_when_they_are_made_again) {
  host::signalEvent(kName);
  host::createEvent(kName);
  const HANDLE event = open();
  EXPECT_EQ(WaitForSingleObject(event, 0), 0U);
  CloseHandle(event);
}

TEST_F(Events, live_on_in_their_handles_when_they_are_gone) {
  const HANDLE old = open();
  host::signalEvent(kName);
  host::removeEvent(kName);
  EXPECT_EQ(open(), nullptr);
  EXPECT_EQ(WaitForSingleObject(old, 0), 0U);
  host::createEvent(kName);
  const HANDLE event = open();
  EXPECT_EQ(WaitForSingleObject(event, 0), 258U);
  CloseHandle(event);
  CloseHandle(old);
}

TEST_F(Events, are_not_made_by_signal_reset_or_removal) {
  host::signalEvent(u"Other");
  host::resetEvent(u"Other");
  host::removeEvent(u"Other");
  EXPECT_EQ(open(u"Other"), nullptr);
}

TEST_F(Events, signal_each_on_its_own) {
  host::createEvent(u"Other");
  const HANDLE other = open(u"Other");
  host::signalEvent(kName);
  EXPECT_EQ(WaitForSingleObject(other, 0), 258U);
  CloseHandle(other);
  host::removeEvent(u"Other");
}

TEST_F(Events, wake_every_waiter_with_and_without_a_time_limit) {
  const HANDLE event = open();
  std::atomic<int> woken = 0;
  std::vector<std::jthread> threads;
  for (const DWORD milliseconds : {0xFFFFFFFFU, 0xFFFFFFFFU, 60000U})
    threads.emplace_back([&woken, event, milliseconds] {
      if (WaitForSingleObject(event, milliseconds) == 0) ++woken;
    });
  std::this_thread::sleep_for(std::chrono::milliseconds{20});
  EXPECT_EQ(woken, 0);
  host::signalEvent(kName);
  threads.clear();
  EXPECT_EQ(woken, 3);
  CloseHandle(event);
}

TEST_F(Events, are_the_only_handles_to_wait_on) {
  int nothing = 0;
  EXPECT_EQ(WaitForSingleObject(nullptr, 0), 0xFFFFFFFFU);
  EXPECT_EQ(WaitForSingleObject(INVALID_HANDLE_VALUE, 0), 0xFFFFFFFFU);
  EXPECT_EQ(WaitForSingleObject(&nothing, 0), 0xFFFFFFFFU);
}

TEST_F(Events, show_their_calls_to_the_hook) {
  std::vector<std::string> calls;
  host::setCallHook([&](std::string_view call) {
    calls.emplace_back(call);
    return true;
  });
  const HANDLE event = open();
  WaitForSingleObject(event, 7);
  CloseHandle(event);
  EXPECT_EQ(calls, (std::vector<std::string>{"OpenEventW(0x100000, 0, Global\\Event)", "WaitForSingleObject(7)",
                                             "CloseHandle()"}));
}

TEST_F(Events, fail_when_the_hook_refuses) {
  const HANDLE event = open();
  host::signalEvent(kName);
  host::setCallHook([](std::string_view) { return false; });
  EXPECT_EQ(open(), nullptr);
  EXPECT_EQ(WaitForSingleObject(event, 0), 0xFFFFFFFFU);
  host::setCallHook(nullptr);
  CloseHandle(event);
}

TEST_F(Events, are_signalled_through_a_handle) {
  const HANDLE event = open();
  const HANDLE other = open();
  host::signalHandle(event);
  EXPECT_EQ(WaitForSingleObject(other, 0), WAIT_OBJECT_0);
  CloseHandle(event);
  CloseHandle(other);
}

TEST_F(Events, are_not_signalled_through_what_is_no_handle) {
  host::signalHandle(nullptr);
  host::signalHandle(reinterpret_cast<HANDLE>(std::uintptr_t{0x123456}));
  const HANDLE event = open();
  EXPECT_EQ(WaitForSingleObject(event, 0), WAIT_TIMEOUT);
  CloseHandle(event);
}

}  // namespace
}  // namespace test
