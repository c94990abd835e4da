// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <cstring>

#include "tests/log/logs.h"
#include "tests/support/results.h"

namespace test {
namespace {

constexpr std::uint64_t kAddress = 0x00007FF612345678;

class KVLog : public LogTest, public ::testing::WithParamInterface<KVGeneration> {
 protected:
  static const KVGeneration& logs() { return GetParam(); }

  /// A log of the session's own, started in the ordinary way.
  void start(std::uint32_t id) {
    expectLog(logs().startOperation).reply(logReply(logs().startOperation, id, kAddress, 1));
    ASSERT_EQ(logs().start(session, &log), kDone);
  }
  void stop(std::uint32_t id) {
    expectLog(logs().stopOperation, id);
    EXPECT_EQ(logs().stop(session, log), kDone);
  }
  void expectNoLog() { EXPECT_EQ(log, kUntouched); }

  QtfLogKV* const kUntouched = reinterpret_cast<QtfLogKV*>(kPoisonLong);
  QtfLogKV* log = kUntouched;
};

TEST_P(KVLog, start_gives_a_handle_that_the_session_knows) {
  start(0x80000007);
  expectHeld(reinterpret_cast<std::uint64_t>(log), 0x80000007);
  EXPECT_EQ(bytesOf(kAddress), Bytes(reinterpret_cast<std::uint8_t*>(log), reinterpret_cast<std::uint8_t*>(log) + 8));
  EXPECT_EQ(faults.outstanding(), 1);
  stop(0x80000007);
}

TEST_P(KVLog, start_does_not_look_at_the_byte_count) {
  for (const DWORD count : {0U, 1U, 0xFFFFFFFFU}) {
    driver.report(count);
    start(7);
    expectHeld(reinterpret_cast<std::uint64_t>(log), 7);
    stop(7);
    EXPECT_EQ(session->logReference, 0U);
  }
}

TEST_P(KVLog, start_makes_the_session_forget_a_log_that_runs_already) {
  start(5);
  auto* const first = log;
  start(6);
  EXPECT_NE(log, first);
  expectHeld(reinterpret_cast<std::uint64_t>(log), 6);
  EXPECT_EQ(faults.outstanding(), 2);
  stop(6);
  EXPECT_EQ(faults.outstanding(), 1);
  EXPECT_EQ(logs().stop(session, first), kDone) << "no log runs";
  EXPECT_EQ(bytesOf(kAddress),
            Bytes(reinterpret_cast<std::uint8_t*>(first), reinterpret_cast<std::uint8_t*>(first) + 8));
  // Nobody's any more: the session knows its last handle only.
  holdLog(reinterpret_cast<std::uint64_t>(first), 5);
  stop(5);
  EXPECT_EQ(faults.outstanding(), 1);
  std::free(first);
}

TEST_P(KVLog, start_fails_with_its_request) {
  holdLog(0x1111, 3);
  expectLog(logs().startOperation).reply(logReply(logs().startOperation, 7, kAddress, 1)).fails();
  EXPECT_EQ(logs().start(session, &log), kFailed);
  expectNoLog();
  expectHeld(0x1111, 3);
  EXPECT_EQ(faults.calls(Fault::kAllocation), 0);
}

TEST_P(KVLog, start_undoes_another_data_version_with_operation_8_and_answers_6) {
  holdLog(0x1111, 3);
  for (const std::uint32_t version : {0U, 2U, 0x101U, 0x80000001U, 0xFFFFFFFFU}) {
    expectLog(logs().startOperation).reply(logReply(logs().startOperation, 0x01020304, kAddress, version));
    expectLog(8, 0x01020304);
    EXPECT_EQ(logs().start(session, &log), kVersionMismatch);
    expectNoLog();
    expectHeld(0x1111, 3);
  }
  EXPECT_EQ(faults.calls(Fault::kAllocation), 0);
}

TEST_P(KVLog, start_does_not_care_whether_undoing_succeeds) {
  expectLog(logs().startOperation).reply(logReply(logs().startOperation, 7, kAddress, 2));
  expectLog(8, 7).fails();
  EXPECT_EQ(logs().start(session, &log), kVersionMismatch);
  expectNoLog();
}

TEST_P(KVLog, start_without_memory_answers_3_and_undoes_the_log_with_operation_8) {
  holdLog(0x1111, 3);
  for (const bool undone : {true, false}) {
    faults.fail(Fault::kAllocation, 1);
    expectLog(logs().startOperation).reply(logReply(logs().startOperation, 7, kAddress, 1));
    auto& undo = expectLog(8, 7);
    if (!undone) undo.fails();
    EXPECT_EQ(logs().start(session, &log), kNoMemory);
    expectNoLog();
    expectHeld(0x1111, 3);
  }
  EXPECT_EQ(faults.calls(Fault::kAllocation), 2);
}

TEST_P(KVLog, start_checks_the_session_before_anything_else) {
  EXPECT_EQ(logs().start(nullptr, &log), kInvalid);
  EXPECT_EQ(logs().start(&closed, &log), kInvalid);
  expectNoLog();
  EXPECT_EQ(faults.calls(Fault::kAllocation), 0);
}

TEST_P(KVLog, stop_frees_the_handle_and_forgets_the_log) {
  start(0x01020304);
  stop(0x01020304);
  EXPECT_EQ(session->logReference, 0U);
  EXPECT_EQ(faults.outstanding(), 0);
}

TEST_P(KVLog, stop_of_a_plain_log_frees_nothing) {
  for (const std::uint64_t address : {std::uint64_t{0x10}, kAddress, kPoisonLong}) {
    expectLog(0).reply(logReply(0, 9, address, 1));
    std::uint64_t mapped = 0;
    ASSERT_EQ(vqsStartQTFLog(session, &mapped), kDone);
    stop(9);
    EXPECT_EQ(session->logReference, 0U);
  }
  EXPECT_EQ(faults.calls(Fault::kAllocation), 0);
}

TEST_P(KVLog, stop_of_an_Ex_log_frees_nothing) {
  expectLog(2).reply(logReply(2, 9, kAddress, 1));
  std::uint64_t mapped = 0;
  ASSERT_EQ(vqsExStartQTFLog(session, &mapped, nullptr), kDone);
  stop(9);
  EXPECT_EQ(session->logReference, 0U);
}

TEST_P(KVLog, stop_of_what_a_failed_Ex_start_left_frees_nothing) {
  driver.report(9);
  expectLog(2).fails();
  std::uint64_t address = kPoisonLong;
  ASSERT_EQ(vqsExStartQTFLog(session, &address, nullptr), kFailed);
  stop(9);
  EXPECT_EQ(session->logReference, 0U);
}

TEST_P(KVLog, stop_of_a_plain_log_leaves_the_handle_that_came_before_it) {
  start(5);
  expectLog(0).reply(logReply(0, 9, kAddress, 1));
  std::uint64_t mapped = 0;
  ASSERT_EQ(vqsStartQTFLog(session, &mapped), kDone);
  stop(9);
  EXPECT_EQ(faults.outstanding(), 1);
  holdLog(reinterpret_cast<std::uint64_t>(log), 5);
  stop(5);
  EXPECT_EQ(faults.outstanding(), 0) << "it is the last that the session made";
}

TEST_P(KVLog, stop_frees_a_handle_once) {
  start(5);
  stop(5);
  holdLog(reinterpret_cast<std::uint64_t>(log), 5);
  stop(5);
  EXPECT_EQ(session->logReference, 0U);
}

TEST_P(KVLog, stop_that_the_driver_refuses_frees_nothing) {
  expectLog(0).reply(logReply(0, 9, kAddress, 1));
  std::uint64_t mapped = 0;
  ASSERT_EQ(vqsStartQTFLog(session, &mapped), kDone);
  expectLog(logs().stopOperation, 9).fails();
  EXPECT_EQ(logs().stop(session, log), kFailed);
  expectHeld(kAddress, 9);
}

TEST_P(KVLog, needs_no_more_of_a_session_than_its_24_bytes) {
  // As clients' tests make one up: nothing behind it belongs to it.
  auto* const memory = static_cast<std::uint8_t*>(std::malloc(24));
  std::memset(memory, 0, 24);
  auto* const small = reinterpret_cast<QtfSession*>(memory);
  small->handle = session->handle;
  expectLog(logs().startOperation).reply(logReply(logs().startOperation, 5, kAddress, 1));
  ASSERT_EQ(logs().start(small, &log), kDone);
  expectLog(logs().stopOperation, 5);
  EXPECT_EQ(logs().stop(small, log), kDone);
  EXPECT_EQ(faults.outstanding(), 1) << "the session";
  std::free(memory);
}

TEST_P(KVLog, stop_keeps_the_log_when_the_driver_refuses) {
  start(5);
  const auto reference = session->logReference;
  expectLog(logs().stopOperation, 5).fails();
  EXPECT_EQ(logs().stop(session, log), kFailed);
  expectHeld(reference, 5);
  EXPECT_EQ(faults.outstanding(), 1);
  stop(5);
}

TEST_P(KVLog, stop_allocates_nothing_and_makes_one_request) {
  start(5);
  faults.failFrom(Fault::kAllocation, 1);
  const auto requests = driver.requestsServed();
  stop(5);
  EXPECT_EQ(driver.requestsServed(), requests + 1);
  EXPECT_EQ(faults.calls(Fault::kAllocation), 1) << "the handle, when the log was started";
}

TEST_P(KVLog, stop_answers_0_when_no_log_runs) {
  session->logSessionId = 5;
  EXPECT_EQ(logs().stop(session, log), kDone);
}

TEST_P(KVLog, stop_checks_the_session_before_anything_else) {
  closed.logReference = 0x1111;
  EXPECT_EQ(logs().stop(nullptr, log), kInvalid);
  EXPECT_EQ(logs().stop(&closed, log), kInvalid);
  EXPECT_EQ(closed.logReference, 0x1111U);
}

INSTANTIATE_TEST_SUITE_P(Of, KVLog, ::testing::ValuesIn(kvGenerations()), generationName);

class PlainKVLog : public LogTest {};

TEST_F(PlainKVLog, start_needs_room_for_the_handle) {
  EXPECT_EQ(vqsStartQTFLogKV(session, nullptr), kInvalid);
  EXPECT_EQ(vqsStartQTFLogKV(nullptr, nullptr), kInvalid);
  EXPECT_EQ(faults.calls(Fault::kAllocation), 0);
}

TEST_F(PlainKVLog, stop_needs_a_handle_even_when_no_log_runs) {
  EXPECT_EQ(vqsStopQTFLogKV(session, nullptr), kInvalid);
  holdLog(0x1111, 3);
  EXPECT_EQ(vqsStopQTFLogKV(session, nullptr), kInvalid);
  expectHeld(0x1111, 3);
}

TEST_F(PlainKVLog, stop_stops_the_sessions_log_whatever_the_handle) {
  expectLog(7).reply(logReply(7, 5, kAddress, 1));
  QtfLogKV* log = nullptr;
  ASSERT_EQ(vqsStartQTFLogKV(session, &log), kDone);
  std::array<std::uint8_t, 8> other{};
  other.fill(kPoison);
  expectLog(8, 5);
  EXPECT_EQ(vqsStopQTFLogKV(session, reinterpret_cast<QtfLogKV*>(other.data())), kDone);
  EXPECT_EQ(faults.outstanding(), 0);
  EXPECT_EQ(other[0], kPoison);
}

class ExKVLog : public LogTest {};

TEST_F(ExKVLog, start_without_room_leaves_the_handle_to_the_session) {
  expectLog(10).reply(logReply(10, 5, kAddress, 1));
  EXPECT_EQ(vqsExStartQTFLogExKV(session, nullptr), kDone);
  EXPECT_EQ(session->logSessionId, 5U);
  EXPECT_NE(session->logReference, 0U);
  EXPECT_EQ(faults.outstanding(), 1);
  expectLog(11, 5);
  EXPECT_EQ(vqsExStopQTFLogExKV(session), kDone);
}

TEST_F(ExKVLog, start_without_room_fails_and_is_undone_as_any_other) {
  holdLog(0x1111, 3);
  expectLog(10).fails();
  EXPECT_EQ(vqsExStartQTFLogExKV(session, nullptr), kFailed);
  expectLog(10).reply(logReply(10, 5, kAddress, 2));
  expectLog(8, 5);
  EXPECT_EQ(vqsExStartQTFLogExKV(session, nullptr), kVersionMismatch);
  expectHeld(0x1111, 3);
}

}  // namespace
}  // namespace test
