// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/simulator/model/settings_view.h"

namespace test {
namespace {

TEST(SimulatorPolling, is_answered_with_its_request) {
  ModelClient client;
  for (const std::uint16_t operation : std::initializer_list<std::uint16_t>{0, 1})
    for (const std::uint8_t of : std::initializer_list<std::uint8_t>{0, 1}) {
      const Record request = Record{24, 0xEE}.u16(0, operation).u8(2, of);
      EXPECT_EQ(client.answer(0x8022207C, request, 24), request.bytes());
    }
}

TEST(SimulatorPolling, takes_any_value) {
  ModelClient client;
  for (const std::uint32_t value : {0U, 1U, 1000U, 0x80000000U, 0xFFFFFFFFU})
    EXPECT_EQ(client.outcome(kPolling, Record{24}.u32(4, value), 24), Outcome::kSuccess) << value;
}

TEST(SimulatorPolling, other_operations_are_unknown_and_other_clients_malformed) {
  ModelClient client;
  for (const unsigned operation : {2U, 3U, 0x100U, 0x101U, 0xFFFFU})
    EXPECT_EQ(client.outcome(kPolling, Record{24}.u16(0, static_cast<std::uint16_t>(operation)), 24),
              Outcome::kUnknownRequest)
        << operation;
  for (unsigned of = 2; of < 256; ++of)
    EXPECT_EQ(client.outcome(kPolling, Record{24}.u8(2, static_cast<std::uint8_t>(of)), 24), Outcome::kMalformed);
}

TEST(SimulatorPolling, maps_no_log) {
  ModelClient client;
  client.answer(kPolling, Bytes(24), 24);
  EXPECT_FALSE(client.driver().hasMappedLogs());
  EXPECT_TRUE(client.surroundings.mapped.empty());
}

TEST(SimulatorSe1, takes_two_flags) {
  ModelClient client;
  for (const std::uint32_t first : {0U, 1U})
    for (const std::uint32_t second : {0U, 1U}) {
      const Record request = Record{8}.u32(0, first).u32(4, second);
      EXPECT_EQ(client.answer(0x80222094, request, 8), request.bytes());
    }
}

TEST(SimulatorSe1, flags_are_0_or_1) {
  ModelClient client;
  for (const std::uint32_t value : {2U, 0x100U, 0x10001U, 0x80000001U, 0xFFFFFFFFU}) {
    EXPECT_EQ(client.outcome(kSe1, Record{8}.u32(0, value), 8), Outcome::kMalformed) << value;
    EXPECT_EQ(client.outcome(kSe1, Record{8}.u32(4, value), 8), Outcome::kMalformed) << value;
  }
}

TEST(SimulatorTaskbar, shows_the_power_source_and_mode) {
  ModelClient client;
  for (std::uint32_t mode = 0; mode <= 4; ++mode) {
    overrideKey(client, 52, mode);
    overrideKey(client, 28, 20);
    overrideKey(client, 24, 0);
    EXPECT_EQ(client.answer(0x8022208C, Bytes(16), 16), Record{16}.u32(8, 0).u32(12, mode).bytes());
    overrideKey(client, 24, 1);
    EXPECT_EQ(taskbarIcon(client), Record{16}.u32(8, 1).u32(12, mode).bytes());
    overrideKey(client, 28, 19);
    EXPECT_EQ(taskbarIcon(client), Record{16}.u32(8, 2).u32(12, mode).bytes());
    overrideKey(client, 24, 0);
    EXPECT_EQ(taskbarIcon(client), Record{16}.u32(8, 0).u32(12, mode).bytes());
  }
}

TEST(SimulatorTaskbar, is_asked_with_zero) {
  ModelClient client;
  expectOnlyZero(client, kTaskbarIcon, Bytes(16), 16, 0, 16);
}

TEST(SimulatorDebugOutput, counts_the_seconds_of_the_platform) {
  ModelClient client;
  EXPECT_EQ(client.answer(0x80222088, {}, 4), hex("00 00 00 00"));
  client.surroundings.clock += 999;
  EXPECT_EQ(client.answer(kDebugOutput, {}, 4), hex("00 00 00 00"));
  client.surroundings.clock += 1;
  EXPECT_EQ(client.answer(kDebugOutput, {}, 4), hex("01 00 00 00"));
  client.surroundings.clock += 299000;
  EXPECT_EQ(client.answer(kDebugOutput, {}, 4), hex("2c 01 00 00"));
}

TEST(SimulatorDebugOutput, loses_no_milliseconds_between_requests) {
  ModelClient client;
  client.answer(kDebugOutput, {}, 4);
  for (int i = 0; i < 100; ++i) {
    client.surroundings.clock += 190;
    client.answer(kDebugOutput, {}, 4);
  }
  EXPECT_EQ(client.answer(kDebugOutput, {}, 4), hex("13 00 00 00"));
}

TEST(SimulatorTaControl, first_word_shows_in_telemetry) {
  ModelClient client;
  const Telemetry telemetry{client};
  ASSERT_EQ(client.outcome(0x8022206C, hex("04 03 02 81  ff ff ff ff")), Outcome::kSuccess);
  EXPECT_EQ(telemetry.number(75), 0x81020304);
  ASSERT_EQ(client.outcome(kTaControl, Bytes(8)), Outcome::kSuccess);
  EXPECT_EQ(telemetry.number(75), 0);
}

TEST(SimulatorOemId, is_a_text_of_six_characters) {
  ModelClient client;
  EXPECT_EQ(client.answer(0x8022204C, {}, 32), Record{32}.text(0, "VEXO01").bytes());
}

TEST(SimulatorDynamicSlider, is_off_at_first_and_then_what_it_is_set_to) {
  ModelClient client;
  EXPECT_EQ(featureStatus(client, 5), hex("01 00 00 00  00 00 00 00"));
  ASSERT_EQ(client.outcome(0x80222020, hex("01 00 00 00")), Outcome::kSuccess);
  EXPECT_EQ(featureStatus(client, 5), hex("01 01 00 00  01 00 00 00"));
  ASSERT_EQ(client.outcome(kDynamicSlider, hex("01 00 00 00")), Outcome::kSuccess);
  EXPECT_EQ(featureStatus(client, 5), hex("01 01 00 00  01 00 00 00"));
  ASSERT_EQ(client.outcome(kDynamicSlider, hex("00 00 00 00")), Outcome::kSuccess);
  EXPECT_EQ(featureStatus(client, 5), hex("01 00 00 00  00 00 00 00"));
}

TEST(SimulatorDynamicSlider, is_0_or_1) {
  ModelClient client;
  for (const std::uint32_t value : {2U, 0x100U, 0x80000001U, 0xFFFFFFFFU})
    EXPECT_EQ(client.outcome(kDynamicSlider, Record{4}.u32(0, value)), Outcome::kMalformed) << value;
  EXPECT_EQ(featureStatus(client, 5), hex("01 00 00 00  00 00 00 00"));
}

TEST(SimulatorControls, lengths_are_exact) {
  ModelClient client;
  const auto before = settingsOf(client);
  expectOnlyLengths(client, kPolling, Bytes(24), 24);
  expectOnlyLengths(client, kSe1, Record{8}.u32(0, 1), 8);
  expectOnlyLengths(client, kTaskbarIcon, Bytes(16), 16);
  expectOnlyLengths(client, kDebugOutput, {}, 4);
  expectOnlyLengths(client, kTaControl, Record{8}.u32(0, 1), 0);
  expectOnlyLengths(client, kOemId, {}, 32);
  expectOnlyLengths(client, kDynamicSlider, Record{4}.u32(0, 1), 0);
  EXPECT_EQ(settingsOf(client), before);
}

}  // namespace
}  // namespace test
