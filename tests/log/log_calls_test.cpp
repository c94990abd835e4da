// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <functional>

#include "tests/log/logs.h"
#include "tests/support/results.h"
#include "tests/support/windows_calls.h"

namespace test {
namespace {

constexpr std::uint64_t kAddress = 0x00007FF612345678;

class LogCalls : public AddressLogTest {
 protected:
  void expectCalls(const WindowsCalls& windows, const std::vector<std::string>& calls) {
    EXPECT_EQ(windows.all(), calls);
    EXPECT_EQ(driver.takeRequestsOn(), std::vector<HANDLE>(calls.size(), session->handle));
  }

  std::uint64_t address = 0;
  std::uint32_t version = 0;
};

TEST_F(LogCalls, make_one_request_on_the_sessions_handle_and_nothing_else) {
  const std::vector<std::string> request = {"DeviceIoControl(0x80222058, 32, 32)"};
  const auto run = [&](std::uint32_t operation, const std::function<vqsStatus()>& call) {
    const WindowsCalls windows;
    expectLog(operation, session->logReference == 0 ? 0 : 7).reply(logReply(operation, 7, kAddress, 9));
    EXPECT_EQ(call(), kDone) << operation;
    expectCalls(windows, request);
  };
  run(0, [&] { return vqsStartQTFLog(session, &address); });
  run(1, [&] { return vqsStopQTFLog(session); });
  run(4, [&] { return vqsGetQTFLogVersion(session, &version); });
  run(2, [&] { return vqsExStartQTFLog(session, &address, nullptr); });
  run(3, [&] { return vqsExStopQTFLog(session); });
}

TEST_F(LogCalls, ask_for_support_on_the_sessions_handle) {
  Bytes buffer(6);
  for (auto* ask : {vqsGetQTFLogSupport, vqsExQTFLogSupport}) {
    const WindowsCalls windows;
    driver.expectSplit(0x8022205C).request(ask == vqsGetQTFLogSupport ? "00" : "01").answerLength(6);
    EXPECT_EQ(ask(session, buffer.data(), 6), kDone);
    expectCalls(windows, {"DeviceIoControl(0x8022205c, 1, 6)"});
    EXPECT_EQ(driver.answeredAt(), buffer.data());
  }
}

TEST_F(LogCalls, ask_for_the_ex_version_after_the_start_on_the_same_handle) {
  const WindowsCalls windows;
  expectLog(2).reply(logReply(2, 7, kAddress, 9));
  driver.expectSame(kLogCode).request(Record{32}.put(0, logReply(2, 7, kAddress, 9).bytes()).u32(4, 5));
  EXPECT_EQ(vqsExStartQTFLog(session, &address, &version), kDone);
  expectCalls(windows, {"DeviceIoControl(0x80222058, 32, 32)", "DeviceIoControl(0x80222058, 32, 32)"});
}

TEST_F(LogCalls, reach_nothing_without_an_open_session) {
  const WindowsCalls windows;
  closed.logReference = kAddress;
  for (QtfSession* bad : {static_cast<QtfSession*>(nullptr), &closed}) {
    EXPECT_EQ(vqsStartQTFLog(bad, &address), kInvalid);
    EXPECT_EQ(vqsStopQTFLog(bad), kInvalid);
    EXPECT_EQ(vqsGetQTFLogSupport(bad, &version, 4), kInvalid);
    EXPECT_EQ(vqsGetQTFLogVersion(bad, &version), kInvalid);
    EXPECT_EQ(vqsExStartQTFLog(bad, &address, &version), kInvalid);
    EXPECT_EQ(vqsExStopQTFLog(bad), kInvalid);
    EXPECT_EQ(vqsExQTFLogSupport(bad, &version, 4), kInvalid);
  }
  EXPECT_TRUE(windows.all().empty());
}

TEST_F(LogCalls, touch_no_other_session) {
  OpenSession other{driver};
  other->logReference = 0x1111;
  other->logSessionId = 3;
  expectLog(0).reply(logReply(0, 7, kAddress, 9));
  expectLog(1, 7);
  EXPECT_EQ(vqsStartQTFLog(session, &address), kDone);
  EXPECT_EQ(vqsStopQTFLog(session), kDone);
  EXPECT_EQ(other->logReference, 0x1111U);
  EXPECT_EQ(other->logSessionId, 3U);
}

}  // namespace
}  // namespace test
