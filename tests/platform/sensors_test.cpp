// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <array>

#include <vqs/platform.h>
#include "tests/support/results.h"
#include "tests/support/session_test.h"

namespace test {
namespace {

class SimulateSensorUpdate : public FrugalSessionTest {
 protected:
  static constexpr std::string_view kText = "00 11 22 33 44 55 66 77 88 99 AA BB CC DD EE FF";

  VqsSensorUpdate update = recordOf<VqsSensorUpdate>(hex(kText));
};

TEST_F(SimulateSensorUpdate, sends_the_callers_16_bytes) {
  driver.expectIn(0x80222080).request(kText);
  EXPECT_EQ(vqsAtstSimulateSensorUpdate(session, &update), kDone);
}

TEST_F(SimulateSensorUpdate, fails_with_its_request) {
  driver.expectIn(0x80222080).request(kText).fails();
  EXPECT_EQ(vqsAtstSimulateSensorUpdate(session, &update), kFailed);
}

TEST_F(SimulateSensorUpdate, answers_1_without_an_update_and_sends_nothing) {
  EXPECT_EQ(vqsAtstSimulateSensorUpdate(session, nullptr), kFailed);
}

TEST_F(SimulateSensorUpdate, needs_an_open_session) {
  EXPECT_EQ(vqsAtstSimulateSensorUpdate(nullptr, &update), kInvalid);
  EXPECT_EQ(vqsAtstSimulateSensorUpdate(&closed, &update), kInvalid);
  EXPECT_EQ(vqsAtstSimulateSensorUpdate(nullptr, nullptr), kInvalid);
}

class GetSensorData : public FrugalSessionTest {
 protected:
  Exchange& expectGet(std::source_location where = std::source_location::current()) {
    return driver.expectOut(0x80222084, where).answerLength(64);
  }

  VqsSensorData data = poisoned<VqsSensorData>();
};

TEST_F(GetSensorData, receives_the_drivers_64_bytes) {
  const Bytes answer = Record(64, 0x5A).u32(0, 0x11223344).u32(60, 0x55667788);
  expectGet().reply(answer);
  EXPECT_EQ(vqsGetSensorData(session, &data), kDone);
  EXPECT_EQ(bytesOf(data), answer);
}

TEST_F(GetSensorData, has_the_driver_write_its_output) {
  expectGet().reply("01");
  EXPECT_EQ(vqsGetSensorData(session, &data), kDone);
  EXPECT_EQ(bytesOf(data), Record(64, kPoison).u8(0, 1).bytes());
}

TEST_F(GetSensorData, leaves_its_output_alone_when_the_request_fails) {
  expectGet().fails();
  EXPECT_EQ(vqsGetSensorData(session, &data), kFailed);
  EXPECT_EQ(bytesOf(data), Bytes(64, kPoison));
}

TEST_F(GetSensorData, leaves_a_missing_output_to_the_driver_to_refuse) {
  expectGet().answerLength(0).fails();
  EXPECT_EQ(vqsGetSensorData(session, nullptr), kFailed);
}

TEST_F(GetSensorData, needs_an_open_session) {
  EXPECT_EQ(vqsGetSensorData(nullptr, &data), kInvalid);
  EXPECT_EQ(vqsGetSensorData(&closed, &data), kInvalid);
  EXPECT_EQ(bytesOf(data), Bytes(64, kPoison));
}

/// One byte of room more than the export has, to see that it is left alone.
class GetOemId : public FrugalSessionTest {
 protected:
  Exchange& expectGet(std::source_location where = std::source_location::current()) {
    return driver.expectOut(0x8022204C, where).answerLength(32);
  }
  void expectText(std::string_view answer, const char* text) {
    SCOPED_TRACE(answer);
    oemId = poisoned<std::array<char, 8>>();
    expectGet().reply(Record(32).text(0, answer));
    EXPECT_EQ(vqsGetOEMID(session, oemId.data()), kDone);
    EXPECT_STREQ(oemId.data(), text);
    EXPECT_EQ(static_cast<std::uint8_t>(oemId[7]), kPoison);
  }

  std::array<char, 8> oemId = poisoned<std::array<char, 8>>();
};

TEST_F(GetOemId, receives_at_most_6_characters) {
  expectText("", "");
  expectText("V", "V");
  expectText("VEXOQ", "VEXOQ");
  expectText("VEXOQT", "VEXOQT");
}

TEST_F(GetOemId, comes_out_empty_when_the_answer_is_longer) {
  expectText("VEXOQTF", "");
  expectText("VEXOQTF8", "");
  expectText("VEXOQTF89012345678901234567890_", "");
  expectText("VEXOQTF89012345678901234567890_2", "");
}

TEST_F(GetOemId, ends_at_the_first_NUL_of_the_answer) {
  expectGet().reply("56 45 58 00 4F 51 54 46 47 48 49");
  EXPECT_EQ(vqsGetOEMID(session, oemId.data()), kDone);
  EXPECT_STREQ(oemId.data(), "VEX");
}

TEST_F(GetOemId, starts_from_an_empty_answer) {
  expectGet();
  EXPECT_EQ(vqsGetOEMID(session, oemId.data()), kDone);
  EXPECT_STREQ(oemId.data(), "");
  expectGet().reply("41 42");
  EXPECT_EQ(vqsGetOEMID(session, oemId.data()), kDone);
  EXPECT_STREQ(oemId.data(), "AB");
}

TEST_F(GetOemId, leaves_its_output_alone_when_the_request_fails) {
  expectGet().reply("41 42").fails();
  EXPECT_EQ(vqsGetOEMID(session, oemId.data()), kFailed);
  EXPECT_EQ(bytesOf(oemId), Bytes(8, kPoison));
}

TEST_F(GetOemId, needs_an_open_session_and_its_output) {
  EXPECT_EQ(vqsGetOEMID(nullptr, oemId.data()), kInvalid);
  EXPECT_EQ(vqsGetOEMID(&closed, oemId.data()), kInvalid);
  EXPECT_EQ(vqsGetOEMID(session, nullptr), kInvalid);
  EXPECT_EQ(bytesOf(oemId), Bytes(8, kPoison));
}

}  // namespace
}  // namespace test
