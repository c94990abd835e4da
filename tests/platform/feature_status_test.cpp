// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

#include <vqs/features.h>
#include "tests/platform/pointers.h"
#include "tests/support/results.h"
#include "tests/support/session_test.h"

namespace test {
namespace {

class QueryFeatureStatus : public FrugalSessionTest {
 protected:
  vqsStatus query(std::int32_t index) { return vqsQueryFeatureStatus(session, index, &status); }
  Exchange& expectQuery(std::uint32_t id, std::source_location where = std::source_location::current()) {
    return driver.expectSplit(0x80222000, where).request(Record{4}.u32(0, id)).answerLength(8);
  }
  void expectStatus(std::string_view bytes) { EXPECT_EQ(difference(bytesOf(status), hex(bytes)), ""); }
  void expectUntouched() { expectStatus("A5 A5 A5 A5  A5 A5 A5 A5"); }

  VqsFeatureStatus status = poisoned<VqsFeatureStatus>();
};

TEST_F(QueryFeatureStatus, sends_indices_0_to_7_as_they_are) {
  for (std::uint32_t index = 0; index < 8; ++index) {
    expectQuery(index).reply("00 01 02 03  04 05 06 07");
    EXPECT_EQ(query(static_cast<std::int32_t>(index)), kDone);
  }
}

TEST_F(QueryFeatureStatus, sends_index_8_as_9) {
  expectQuery(9).reply("01 00 00 00  07 00 00 00");
  EXPECT_EQ(query(8), kDone);
}

TEST_F(QueryFeatureStatus, writes_flags_and_value_but_not_bytes_2_and_3) {
  expectQuery(3).reply("11 22 33 44  55 66 77 88");
  EXPECT_EQ(query(3), kDone);
  expectStatus("11 22 A5 A5  55 66 77 88");
  EXPECT_EQ(status.flagA, 0x11);
  EXPECT_EQ(status.flagB, 0x22);
  EXPECT_EQ(status.value, 0x88776655U);
}

TEST_F(QueryFeatureStatus, leaves_its_output_alone_when_the_request_fails) {
  expectQuery(3).reply("11 22 33 44  55 66 77 88").fails();
  EXPECT_EQ(query(3), kFailed);
  expectUntouched();
}

TEST_F(QueryFeatureStatus, refuses_indices_outside_0_to_8) {
  constexpr auto kLeast = std::numeric_limits<std::int32_t>::min();
  constexpr auto kMost = std::numeric_limits<std::int32_t>::max();
  for (const std::int32_t index : {-1, -8, kLeast, 9, 10, 256, kMost}) EXPECT_EQ(query(index), kInvalid);
  expectUntouched();
}

TEST_F(QueryFeatureStatus, needs_an_open_session_and_an_output) {
  EXPECT_EQ(vqsQueryFeatureStatus(nullptr, 3, &status), kInvalid);
  EXPECT_EQ(vqsQueryFeatureStatus(&closed, 3, &status), kInvalid);
  EXPECT_EQ(vqsQueryFeatureStatus(session, 3, nullptr), kInvalid);
  expectUntouched();
}

class DynamicSlider : public FrugalSessionTest {
 protected:
  Exchange& expectSwitch(std::string_view word, std::source_location where = std::source_location::current()) {
    return driver.expectIn(0x80222020, where).request(word);
  }
};

TEST_F(DynamicSlider, sends_any_flag_but_zero_as_1) {
  for (const std::uint8_t flag : {std::uint8_t{1}, std::uint8_t{2}, std::uint8_t{0x80}, std::uint8_t{255}}) {
    expectSwitch("01 00 00 00");
    EXPECT_EQ(vqsDynamicSliderEnableDisable(session, flag), kDone);
  }
}

TEST_F(DynamicSlider, sends_flag_zero_as_0) {
  expectSwitch("00 00 00 00");
  EXPECT_EQ(vqsDynamicSliderEnableDisable(session, 0), kDone);
}

TEST_F(DynamicSlider, fails_with_its_request) {
  expectSwitch("01 00 00 00").fails();
  EXPECT_EQ(vqsDynamicSliderEnableDisable(session, 1), kFailed);
}

TEST_F(DynamicSlider, needs_an_open_session) {
  EXPECT_EQ(vqsDynamicSliderEnableDisable(nullptr, 1), kInvalid);
  EXPECT_EQ(vqsDynamicSliderEnableDisable(&closed, 1), kInvalid);
}

struct UnsupportedName {
  const char* name;
  vqsStatus (*call)(QtfSession*, std::int32_t, void*);
};

class UnsupportedControl : public FrugalSessionTest, public ::testing::WithParamInterface<UnsupportedName> {};

TEST_P(UnsupportedControl, answers_5_whatever_it_is_given) {
  Bytes table(512, kPoison);
  for (QtfSession* any : {static_cast<QtfSession*>(session), &closed, static_cast<QtfSession*>(nullptr)})
    for (const std::int32_t operation : {-1, 0, 1, 2, 5, 100}) {
      EXPECT_EQ(GetParam().call(any, operation, table.data()), kNotSupported);
      EXPECT_EQ(GetParam().call(any, operation, nullptr), kNotSupported);
    }
  EXPECT_EQ(difference(table, Bytes(512, 0xA5)), "");
}

INSTANTIATE_TEST_SUITE_P(Of, UnsupportedControl,
                         ::testing::Values(UnsupportedName{"CustomWorkloadControl", vqsCustomWorkloadControl},
                                           UnsupportedName{"QueryCurrentItsAutoModeSettings",
                                                           vqsQueryCurrentItsAutoModeSettings}),
                         caseName);

TEST(UnsupportedControlNames, are_one_routine) {
  expectOneRoutine(vqsCustomWorkloadControl, vqsQueryCurrentItsAutoModeSettings);
}

}  // namespace
}  // namespace test
