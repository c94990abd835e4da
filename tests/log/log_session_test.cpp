// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/log/logs.h"
#include "tests/support/results.h"
#include "tests/support/windows_calls.h"

namespace test {
namespace {

constexpr std::uint64_t kAddress = 0x00007FF612345678;

class StartLog : public AddressLogTest {
 protected:
  std::uint64_t address = kPoisonLong;
};

TEST_F(StartLog, gives_the_address_and_remembers_the_log) {
  expectLog(0).reply(logReply(0, 0x80000007, kAddress, 9));
  EXPECT_EQ(vqsStartQTFLog(session, &address), kDone);
  EXPECT_EQ(address, kAddress);
  expectHeld(kAddress, 0x80000007);
}

TEST_F(StartLog, needs_no_room_for_the_address) {
  expectLog(0).reply(logReply(0, 7, kAddress, 9));
  EXPECT_EQ(vqsStartQTFLog(session, nullptr), kDone);
  expectHeld(kAddress, 7);
}

TEST_F(StartLog, remembers_the_last_of_two_logs) {
  expectLog(0).reply(logReply(0, 1, 0x1000, 0));
  expectLog(0).reply(logReply(0, 2, 0x2000, 0));
  EXPECT_EQ(vqsStartQTFLog(session, &address), kDone);
  EXPECT_EQ(vqsStartQTFLog(session, &address), kDone);
  expectHeld(0x2000, 2);
}

TEST_F(StartLog, does_not_look_at_the_byte_count) {
  for (const DWORD count : {0U, 0xFFFFFFFFU}) {
    driver.report(count);
    expectLog(0).reply(logReply(0, 7, kAddress, 9));
    EXPECT_EQ(vqsStartQTFLog(session, &address), kDone);
    expectHeld(kAddress, 7);
  }
}

TEST_F(StartLog, changes_nothing_when_the_request_fails) {
  holdLog(0x1111, 3);
  expectLog(0).reply(logReply(0, 7, kAddress, 9)).fails();
  EXPECT_EQ(vqsStartQTFLog(session, &address), kFailed);
  EXPECT_EQ(address, kPoisonLong);
  expectHeld(0x1111, 3);
}

TEST_F(StartLog, checks_the_session_before_anything_else) {
  EXPECT_EQ(vqsStartQTFLog(nullptr, &address), kInvalid);
  EXPECT_EQ(vqsStartQTFLog(&closed, &address), kInvalid);
  EXPECT_EQ(address, kPoisonLong);
  EXPECT_EQ(closed.logReference, 0U);
}

class StopLog : public AddressLogTest {};

TEST_F(StopLog, names_the_sessions_log_and_forgets_it) {
  holdLog(kAddress, 0x01020304);
  expectLog(1, 0x01020304);
  EXPECT_EQ(vqsStopQTFLog(session), kDone);
  EXPECT_EQ(session->logReference, 0U);
}

TEST_F(StopLog, forgets_the_log_even_when_the_driver_refuses) {
  holdLog(kAddress, 5);
  expectLog(1, 5).fails();
  EXPECT_EQ(vqsStopQTFLog(session), kFailed);
  EXPECT_EQ(session->logReference, 0U);
  EXPECT_EQ(vqsStopQTFLog(session), kInvalid);
}

TEST_F(StopLog, answers_2_when_no_log_runs) {
  session->logSessionId = 5;
  EXPECT_EQ(vqsStopQTFLog(session), kInvalid);
}

TEST_F(StopLog, looks_at_the_whole_reference) {
  holdLog(0x100000000, 5);
  expectLog(1, 5);
  EXPECT_EQ(vqsStopQTFLog(session), kDone);
}

TEST_F(StopLog, checks_the_session_before_anything_else) {
  closed.logReference = kAddress;
  EXPECT_EQ(vqsStopQTFLog(nullptr), kInvalid);
  EXPECT_EQ(vqsStopQTFLog(&closed), kInvalid);
  EXPECT_EQ(closed.logReference, kAddress);
}

class StopExLog : public AddressLogTest {};

TEST_F(StopExLog, names_the_sessions_log_and_forgets_it) {
  holdLog(kAddress, 0x01020304);
  expectLog(3, 0x01020304);
  EXPECT_EQ(vqsExStopQTFLog(session), kDone);
  EXPECT_EQ(session->logReference, 0U);
}

TEST_F(StopExLog, forgets_the_log_even_when_the_driver_refuses) {
  holdLog(kAddress, 5);
  expectLog(3, 5).fails();
  EXPECT_EQ(vqsExStopQTFLog(session), kFailed);
  EXPECT_EQ(session->logReference, 0U);
}

TEST_F(StopExLog, looks_at_the_whole_reference) {
  holdLog(0x100000000, 5);
  expectLog(3, 5);
  EXPECT_EQ(vqsExStopQTFLog(session), kDone);
}

TEST_F(StopExLog, answers_0_when_no_log_runs) {
  session->logSessionId = 5;
  EXPECT_EQ(vqsExStopQTFLog(session), kDone);
}

TEST_F(StopExLog, checks_the_session_before_anything_else) {
  closed.logReference = kAddress;
  EXPECT_EQ(vqsExStopQTFLog(nullptr), kInvalid);
  EXPECT_EQ(vqsExStopQTFLog(&closed), kInvalid);
  EXPECT_EQ(closed.logReference, kAddress);
}

class LogSupport : public AddressLogTest {
 protected:
  Exchange& expectQuery(std::string_view generation, std::size_t length,
                        std::source_location where = std::source_location::current()) {
    return driver.expectSplit(0x8022205C, where).request(generation).answerLength(length);
  }
  Bytes buffer = Bytes(7, kPoison);
};

TEST_F(LogSupport, asks_with_the_single_byte_0_and_answers_into_the_callers_buffer) {
  expectQuery("00", 6).reply("01 02 03 04 05 06");
  EXPECT_EQ(vqsGetQTFLogSupport(session, buffer.data(), 6), kDone);
  EXPECT_EQ(buffer, hex("01 02 03 04 05 06 a5"));
}

TEST_F(LogSupport, asks_with_the_single_byte_1_for_the_ex_log) {
  expectQuery("01", 6).reply("01 02 03 04 05 06");
  EXPECT_EQ(vqsExQTFLogSupport(session, buffer.data(), 6), kDone);
  EXPECT_EQ(buffer, hex("01 02 03 04 05 06 a5"));
}

TEST_F(LogSupport, fails_with_its_request) {
  expectQuery("00", 7).fails();
  EXPECT_EQ(vqsGetQTFLogSupport(session, buffer.data(), 7), kFailed);
  expectQuery("01", 7).fails();
  EXPECT_EQ(vqsExQTFLogSupport(session, buffer.data(), 7), kFailed);
  EXPECT_EQ(buffer, Bytes(7, kPoison));
}

TEST_F(LogSupport, leaves_a_null_buffer_to_the_driver) {
  const WindowsCalls calls;
  expectQuery("00", 0).fails();
  EXPECT_EQ(vqsGetQTFLogSupport(session, nullptr, 7), kFailed);
  EXPECT_EQ(calls.all(), std::vector<std::string>{"DeviceIoControl(0x8022205c, 1, 7)"});
  expectQuery("00", 0);
  EXPECT_EQ(vqsGetQTFLogSupport(session, nullptr, 0), kDone);
}

TEST_F(LogSupport, refuses_a_null_buffer_for_the_ex_log) {
  EXPECT_EQ(vqsExQTFLogSupport(session, nullptr, 7), kInvalid);
  EXPECT_EQ(vqsExQTFLogSupport(session, nullptr, 0), kInvalid);
}

TEST_F(LogSupport, passes_any_length_on) {
  expectQuery("00", 0);
  EXPECT_EQ(vqsGetQTFLogSupport(session, buffer.data(), 0), kDone);
  expectQuery("01", 0xFFFFFFFF);
  EXPECT_EQ(vqsExQTFLogSupport(session, buffer.data(), 0xFFFFFFFF), kDone);
}

TEST_F(LogSupport, checks_the_session_before_anything_else) {
  for (QtfSession* bad : {static_cast<QtfSession*>(nullptr), &closed}) {
    EXPECT_EQ(vqsGetQTFLogSupport(bad, buffer.data(), 7), kInvalid);
    EXPECT_EQ(vqsExQTFLogSupport(bad, buffer.data(), 7), kInvalid);
  }
  EXPECT_EQ(buffer, Bytes(7, kPoison));
}

class LogVersion : public AddressLogTest {
 protected:
  std::uint32_t version = kPoisonWord;
};

TEST_F(LogVersion, is_the_value_of_the_answer) {
  expectLog(4).reply(logReply(4, 7, kAddress, 0x80000102));
  EXPECT_EQ(vqsGetQTFLogVersion(session, &version), kDone);
  EXPECT_EQ(version, 0x80000102);
  expectHeld(0, 0);
}

TEST_F(LogVersion, needs_no_room_for_the_answer) {
  expectLog(4).reply(logReply(4, 7, kAddress, 2));
  EXPECT_EQ(vqsGetQTFLogVersion(session, nullptr), kDone);
}

TEST_F(LogVersion, is_untouched_when_the_request_fails) {
  expectLog(4).reply(logReply(4, 7, kAddress, 2)).fails();
  EXPECT_EQ(vqsGetQTFLogVersion(session, &version), kFailed);
  EXPECT_EQ(version, kPoisonWord);
}

TEST_F(LogVersion, checks_the_session_before_anything_else) {
  EXPECT_EQ(vqsGetQTFLogVersion(nullptr, &version), kInvalid);
  EXPECT_EQ(vqsGetQTFLogVersion(&closed, &version), kInvalid);
  EXPECT_EQ(version, kPoisonWord);
}

class StartExLog : public AddressLogTest {
 protected:
  /// The second request goes out in the record that the first one left.
  Exchange& expectVersionQuery(const Bytes& left, std::source_location where = std::source_location::current()) {
    return driver.expectSame(kLogCode, where).request(Record{32}.put(0, left).u32(4, 5));
  }

  std::uint64_t address = kPoisonLong;
  std::uint32_t version = kPoisonWord;
};

TEST_F(StartExLog, gives_the_address_and_remembers_the_log) {
  expectLog(2).reply(logReply(2, 0x80000007, kAddress, 9));
  EXPECT_EQ(vqsExStartQTFLog(session, &address, nullptr), kDone);
  EXPECT_EQ(address, kAddress);
  expectHeld(kAddress, 0x80000007);
}

TEST_F(StartExLog, asks_for_the_version_in_the_same_record) {
  expectLog(2).reply(logReply(2, 7, kAddress, 9));
  expectVersionQuery(logReply(2, 7, kAddress, 9)).reply(logReply(5, 0x55, 0x66, 0x1234));
  EXPECT_EQ(vqsExStartQTFLog(session, &address, &version), kDone);
  EXPECT_EQ(address, kAddress);
  EXPECT_EQ(version, 0x1234U);
  expectHeld(kAddress, 7);
}

TEST_F(StartExLog, does_not_take_the_byte_count_of_a_start_that_succeeds_for_the_id) {
  for (const DWORD count : {0U, 17U}) {
    driver.report(count);
    expectLog(2).reply(logReply(2, 7, kAddress, 9));
    EXPECT_EQ(vqsExStartQTFLog(session, &address, nullptr), kDone);
    expectHeld(kAddress, 7);
  }
}

TEST_F(StartExLog, makes_the_session_forget_a_log_that_runs_already) {
  expectLog(0).reply(logReply(0, 1, 0x1000, 0));
  EXPECT_EQ(vqsStartQTFLog(session, &address), kDone);
  expectLog(2).reply(logReply(2, 7, kAddress, 9));
  EXPECT_EQ(vqsExStartQTFLog(session, &address, nullptr), kDone);
  expectHeld(kAddress, 7);
  expectLog(3, 7);
  EXPECT_EQ(vqsExStopQTFLog(session), kDone);
  EXPECT_EQ(vqsExStopQTFLog(session), kDone);
}

TEST_F(StartExLog, needs_no_room_for_the_address) {
  expectLog(2).reply(logReply(2, 7, kAddress, 9));
  EXPECT_EQ(vqsExStartQTFLog(session, nullptr, nullptr), kDone);
  expectHeld(kAddress, 7);
}

TEST_F(StartExLog, fails_with_its_request_when_no_version_is_asked_for) {
  expectLog(2).reply(logReply(2, 7, kAddress, 9)).fails();
  EXPECT_EQ(vqsExStartQTFLog(session, &address, nullptr), kFailed);
  EXPECT_EQ(address, kPoisonLong);
}

TEST_F(StartExLog, drops_a_failed_start_when_the_version_query_succeeds) {
  expectLog(2).fails();
  expectVersionQuery(logRequest(2)).reply(logReply(5, 0x55, 0x66, 0x1234));
  EXPECT_EQ(vqsExStartQTFLog(session, &address, &version), kDone);
  EXPECT_EQ(address, kPoisonLong);
  EXPECT_EQ(version, 0x1234U);
}

TEST_F(StartExLog, fails_with_the_version_query_although_the_log_runs) {
  expectLog(2).reply(logReply(2, 7, kAddress, 9));
  expectVersionQuery(logReply(2, 7, kAddress, 9)).reply(logReply(5, 0x55, 0x66, 0x1234)).fails();
  EXPECT_EQ(vqsExStartQTFLog(session, &address, &version), kFailed);
  EXPECT_EQ(address, kAddress);
  EXPECT_EQ(version, kPoisonWord);
  expectHeld(kAddress, 7);
}

TEST_F(StartExLog, fails_when_both_requests_do) {
  expectLog(2).fails();
  expectVersionQuery(logRequest(2)).fails();
  EXPECT_EQ(vqsExStartQTFLog(session, &address, &version), kFailed);
  EXPECT_EQ(address, kPoisonLong);
  EXPECT_EQ(version, kPoisonWord);
}

TEST_F(StartExLog, stores_the_callers_own_address_for_a_failed_start) {
  holdLog(0x1111, 3);
  address = 0x0123456789ABCDEF;
  expectLog(2).reply(logReply(2, 7, kAddress, 9)).fails();
  EXPECT_EQ(vqsExStartQTFLog(session, &address, nullptr), kFailed);
  EXPECT_EQ(session->logReference, 0x0123456789ABCDEF);
  EXPECT_EQ(address, 0x0123456789ABCDEF);
}

TEST_F(StartExLog, stores_the_reported_byte_count_of_a_failed_start_as_id) {
  for (const DWORD count : {0U, 17U, 32U, 0xFFFFFFFFU}) {
    session->logSessionId = 3;
    driver.report(count);
    expectLog(2).reply(logReply(2, 7, kAddress, 9)).fails();
    EXPECT_EQ(vqsExStartQTFLog(session, &address, nullptr), kFailed);
    EXPECT_EQ(session->logSessionId, count);
  }
}

TEST_F(StartExLog, asks_for_the_version_of_the_id_in_the_record_after_a_failed_start) {
  driver.report(17);
  expectLog(2).reply(logReply(2, 7, kAddress, 9)).fails();
  expectVersionQuery(logReply(2, 7, kAddress, 9)).reply(logReply(5, 0x55, 0x66, 0x1234));
  EXPECT_EQ(vqsExStartQTFLog(session, &address, &version), kDone);
  EXPECT_EQ(version, 0x1234U);
  expectHeld(kPoisonLong, 17);
}

TEST_F(StartExLog, stops_in_time_what_a_failed_start_left) {
  address = 0x42;
  driver.report(17);
  expectLog(2).fails();
  EXPECT_EQ(vqsExStartQTFLog(session, &address, nullptr), kFailed);
  expectLog(3, 17);
  EXPECT_EQ(vqsExStopQTFLog(session), kDone);
}

TEST_F(StartExLog, keeps_the_reference_when_it_fails_without_room_for_the_address) {
  holdLog(0x1111, 3);
  expectLog(2).fails();
  EXPECT_EQ(vqsExStartQTFLog(session, nullptr, nullptr), kFailed);
  EXPECT_EQ(session->logReference, 0x1111U);
}

TEST_F(StartExLog, checks_the_session_before_anything_else) {
  EXPECT_EQ(vqsExStartQTFLog(nullptr, &address, &version), kInvalid);
  EXPECT_EQ(vqsExStartQTFLog(&closed, &address, &version), kInvalid);
  EXPECT_EQ(address, kPoisonLong);
  EXPECT_EQ(version, kPoisonWord);
  EXPECT_EQ(closed.logReference, 0U);
}

}  // namespace
}  // namespace test
