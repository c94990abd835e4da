// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>

#include <vqs/platform.h>
#include "tests/support/results.h"
#include "tests/support/session_test.h"

namespace test {
namespace {

class GetTaskbarIcon : public FrugalSessionTest {
 protected:
  Exchange& expectGet(std::source_location where = std::source_location::current()) {
    return driver.expectSplit(0x8022208C, where).request(Bytes(16, 0));
  }
  void expectOutputs(std::uint32_t one, std::uint32_t two) {
    EXPECT_EQ(first, one);
    EXPECT_EQ(second, two);
  }

  std::uint32_t first = kPoisonWord;
  std::uint32_t second = kPoisonWord;
};

TEST_F(GetTaskbarIcon, writes_the_last_two_words_of_the_answer) {
  expectGet().reply("EE EE EE EE  DD DD DD DD  44 33 22 11  88 77 66 F5");
  EXPECT_EQ(vqsGetTaskbarIcon(session, &first, &second), kDone);
  expectOutputs(0x11223344, 0xF5667788);
}

TEST_F(GetTaskbarIcon, begins_with_an_empty_answer) {
  expectGet();
  EXPECT_EQ(vqsGetTaskbarIcon(session, &first, &second), kDone);
  expectOutputs(0, 0);
}

TEST_F(GetTaskbarIcon, leaves_its_outputs_alone_when_the_request_fails) {
  expectGet().reply(Bytes(16, 0x11)).fails();
  EXPECT_EQ(vqsGetTaskbarIcon(session, &first, &second), kFailed);
  expectOutputs(kPoisonWord, kPoisonWord);
}

TEST_F(GetTaskbarIcon, needs_an_open_session_and_both_outputs) {
  EXPECT_EQ(vqsGetTaskbarIcon(nullptr, &first, &second), kInvalid);
  EXPECT_EQ(vqsGetTaskbarIcon(&closed, &first, &second), kInvalid);
  EXPECT_EQ(vqsGetTaskbarIcon(session, nullptr, &second), kInvalid);
  EXPECT_EQ(vqsGetTaskbarIcon(session, &first, nullptr), kInvalid);
  expectOutputs(kPoisonWord, kPoisonWord);
}

class GetDebugOutput : public FrugalSessionTest {
 protected:
  Exchange& expectGet(std::source_location where = std::source_location::current()) {
    return driver.expectOut(0x80222088, where).answerLength(4).withoutCount();
  }

  std::uint32_t value = kPoisonWord;
};

TEST_F(GetDebugOutput, reads_straight_into_the_callers_word_without_a_byte_count) {
  expectGet().reply("44 33 22 F1");
  EXPECT_EQ(vqsGetDebugOutput(session, &value), kDone);
  EXPECT_EQ(value, 0xF1223344U);
  expectGet().reply("99 88");
  EXPECT_EQ(vqsGetDebugOutput(session, &value), kDone);
  EXPECT_EQ(value, 0xF1228899U);
}

TEST_F(GetDebugOutput, fails_with_its_request) {
  expectGet().fails();
  EXPECT_EQ(vqsGetDebugOutput(session, &value), kFailed);
  EXPECT_EQ(value, kPoisonWord);
}

TEST_F(GetDebugOutput, leaves_a_missing_output_to_the_driver) {
  expectGet().answerLength(0).fails();
  EXPECT_EQ(vqsGetDebugOutput(session, nullptr), kFailed);
}

TEST_F(GetDebugOutput, needs_an_open_session) {
  EXPECT_EQ(vqsGetDebugOutput(nullptr, &value), kInvalid);
  EXPECT_EQ(vqsGetDebugOutput(&closed, &value), kInvalid);
  EXPECT_EQ(value, kPoisonWord);
}

struct PollingTwin {
  const char* name;
  vqsStatus (*control)(QtfSession*, std::uint8_t, std::uint32_t);
  std::uint8_t client;
};

class ControlPolling : public FrugalSessionTest, public ::testing::WithParamInterface<PollingTwin> {
 protected:
  vqsStatus control(std::uint8_t enable, std::uint32_t value) { return GetParam().control(session, enable, value); }
  Exchange& expectControl(std::uint16_t operation, std::uint32_t value,
                          std::source_location where = std::source_location::current()) {
    return driver.expectSame(0x8022207C, where)
        .request(Record{24}.u16(0, operation).u8(2, GetParam().client).u32(4, value));
  }
};

TEST_P(ControlPolling, starts_with_operation_0_for_any_flag_but_zero) {
  for (const std::uint8_t flag : {std::uint8_t{1}, std::uint8_t{2}, std::uint8_t{0x80}, std::uint8_t{255}}) {
    expectControl(0, 0xF1223344).reply(Bytes(24, 0xFF));
    EXPECT_EQ(control(flag, 0xF1223344), kDone);
  }
}

TEST_P(ControlPolling, stops_with_operation_1_for_flag_zero) {
  expectControl(1, 500).reply(Bytes(24, 0xFF));
  EXPECT_EQ(control(0, 500), kDone);
}

TEST_P(ControlPolling, fails_with_its_request) {
  expectControl(0, 500).fails();
  EXPECT_EQ(control(1, 500), kFailed);
}

TEST_P(ControlPolling, needs_an_open_session) {
  EXPECT_EQ(GetParam().control(nullptr, 1, 500), kInvalid);
  EXPECT_EQ(GetParam().control(&closed, 1, 500), kInvalid);
}

INSTANTIATE_TEST_SUITE_P(Twins, ControlPolling,
                         ::testing::Values(PollingTwin{"plain", vqsControlPolling, 0},
                                           PollingTwin{"Ex", vqsExControlPolling, 1}),
                         caseName);

struct SE1Twin {
  const char* name;
  vqsStatus (*program)(QtfSession*, std::uint32_t, std::uint32_t);
};

class ProgramSE1 : public FrugalSessionTest, public ::testing::WithParamInterface<SE1Twin> {
 protected:
  vqsStatus program(std::uint32_t first, std::uint32_t second) { return GetParam().program(session, first, second); }
  Exchange& expectFlags(std::string_view bytes, std::source_location where = std::source_location::current()) {
    return driver.expectSame(0x80222094, where).request(bytes);
  }
};

TEST_P(ProgramSE1, sets_each_flag_for_1) {
  expectFlags("01 00 00 00  00 00 00 00").reply(Bytes(8, 0xFF));
  EXPECT_EQ(program(1, 0), kDone);
  expectFlags("00 00 00 00  01 00 00 00");
  EXPECT_EQ(program(0, 1), kDone);
  expectFlags("01 00 00 00  01 00 00 00");
  EXPECT_EQ(program(1, 1), kDone);
}

TEST_P(ProgramSE1, clears_a_flag_for_anything_that_is_not_exactly_1) {
  for (const std::uint32_t other : {0U, 2U, 3U, 0x101U, 0x80000001U, 0xFFFFFFFFU}) {
    expectFlags("00 00 00 00  01 00 00 00");
    EXPECT_EQ(program(other, 1), kDone);
    expectFlags("01 00 00 00  00 00 00 00");
    EXPECT_EQ(program(1, other), kDone);
  }
}

TEST_P(ProgramSE1, fails_with_its_request) {
  expectFlags("01 00 00 00  01 00 00 00").fails();
  EXPECT_EQ(program(1, 1), kFailed);
}

TEST_P(ProgramSE1, needs_an_open_session) {
  EXPECT_EQ(GetParam().program(nullptr, 1, 1), kInvalid);
  EXPECT_EQ(GetParam().program(&closed, 1, 1), kInvalid);
}

INSTANTIATE_TEST_SUITE_P(Twins, ProgramSE1,
                         ::testing::Values(SE1Twin{"plain", vqsProgramSE1}, SE1Twin{"Ex", vqsExProgramSE1}), caseName);

class TAControl : public FrugalSessionTest {
 protected:
  Exchange& expectControl(std::source_location where = std::source_location::current()) {
    return driver.expectIn(0x8022206C, where).request("44 33 22 11  88 77 66 F5").withoutCount();
  }
};

TEST_F(TAControl, sends_both_words_without_answer_or_byte_count) {
  expectControl();
  EXPECT_EQ(vqsTAControl(session, 0x11223344, 0xF5667788), kDone);
}

TEST_F(TAControl, fails_with_its_request) {
  expectControl().fails();
  EXPECT_EQ(vqsTAControl(session, 0x11223344, 0xF5667788), kFailed);
}

TEST_F(TAControl, needs_an_open_session) {
  EXPECT_EQ(vqsTAControl(nullptr, 1, 2), kInvalid);
  EXPECT_EQ(vqsTAControl(&closed, 1, 2), kInvalid);
}

}  // namespace
}  // namespace test
