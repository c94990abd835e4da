// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/simulator/model/settings_view.h"

namespace test {
namespace {

Record update(std::uint32_t sensor, std::uint32_t first, std::uint32_t second, std::uint32_t third) {
  return Record{16}.u32(0, sensor).u32(4, first).u32(8, second).u32(12, third);
}

TEST(SimulatorSensor, three_are_present_and_the_fourth_is_not) {
  ModelClient client;
  const auto data = client.answer(0x80222084, {}, 64);
  EXPECT_EQ(word(data, 0), 1);
  EXPECT_EQ(word(data, 16), 1);
  EXPECT_EQ(word(data, 32), 1);
  EXPECT_EQ(part(data, 48, 16), Bytes(16));
}

TEST(SimulatorSensor, values_are_in_the_range_of_their_meaning) {
  ModelClient client;
  for (int step = 0; step < 500; ++step) {
    client.surroundings.clock += 137000;
    const auto data = sensorData(client);
    EXPECT_LE(word(data, 4), 100000) << "lux";
    EXPECT_EQ(part(data, 8, 8), Bytes(8)) << "light has one word";
    for (std::size_t axis = 0; axis < 3; ++axis) {
      const auto milliG = static_cast<std::int32_t>(word(data, 20 + 4 * axis));
      EXPECT_GE(milliG, -4000);
      EXPECT_LE(milliG, 4000);
    }
    EXPECT_LE(word(data, 36), 360) << "degrees";
    EXPECT_EQ(part(data, 40, 8), Bytes(8)) << "a hinge has one word";
  }
}

TEST(SimulatorSensor, shows_what_was_simulated_from_then_on) {
  ModelClient client;
  for (std::uint32_t sensor = 0; sensor < 4; ++sensor) {
    const auto before = sensorData(client);
    ASSERT_EQ(client.outcome(0x80222080, update(sensor, 0x11223344, 0xFFFFFFFF, 7)), Outcome::kSuccess);
    const auto after = sensorData(client);
    for (std::uint32_t other = 0; other < 4; ++other)
      EXPECT_EQ(part(after, 16 * std::size_t{other}, 16),
                other == sensor ? hex("01 00 00 00  44 33 22 11  ff ff ff ff  07 00 00 00")
                                : part(before, 16 * std::size_t{other}, 16))
          << sensor;
  }
  client.surroundings.clock += 600000;
  const auto later = sensorData(client);
  for (std::size_t sensor = 0; sensor < 4; ++sensor)
    EXPECT_EQ(part(later, 16 * sensor, 16), hex("01 00 00 00  44 33 22 11  ff ff ff ff  07 00 00 00"));
}

TEST(SimulatorSensor, update_of_zero_is_an_update) {
  ModelClient client;
  ASSERT_EQ(client.outcome(kSensorUpdate, update(3, 0, 0, 0)), Outcome::kSuccess);
  EXPECT_EQ(part(sensorData(client), 48, 16), hex("01 00 00 00  00 00 00 00  00 00 00 00  00 00 00 00"));
}

TEST(SimulatorSensor, last_update_counts) {
  ModelClient client;
  ASSERT_EQ(client.outcome(kSensorUpdate, update(1, 1, 2, 3)), Outcome::kSuccess);
  ASSERT_EQ(client.outcome(kSensorUpdate, update(1, 4, 5, 6)), Outcome::kSuccess);
  EXPECT_EQ(part(sensorData(client), 16, 16), hex("01 00 00 00  04 00 00 00  05 00 00 00  06 00 00 00"));
}

TEST(SimulatorSensor, there_are_four) {
  ModelClient client;
  const auto before = settingsOf(client);
  for (const std::uint32_t sensor : {4U, 5U, 0x100U, 0x10000U, 0x80000000U, 0xFFFFFFFFU})
    EXPECT_EQ(client.outcome(kSensorUpdate, update(sensor, 1, 2, 3)), Outcome::kMalformed) << sensor;
  EXPECT_EQ(settingsOf(client), before);
}

TEST(SimulatorSensor, telemetry_shows_status_and_data) {
  ModelClient client;
  const Telemetry telemetry{client};
  EXPECT_EQ(telemetry.value(47), hex("01 00  01 00  01 00  00 00"));
  for (std::uint32_t sensor = 0; sensor < 4; ++sensor) {
    EXPECT_EQ(telemetry.value(48 + sensor), part(sensorData(client), 16 * std::size_t{sensor} + 4, 12));
    ASSERT_EQ(client.outcome(kSensorUpdate, update(sensor, 10 + sensor, 0x80000000, 3)), Outcome::kSuccess);
    EXPECT_EQ(telemetry.value(48 + sensor), Record{12}.u32(0, 10 + sensor).u32(4, 0x80000000).u32(8, 3).bytes());
  }
  EXPECT_EQ(telemetry.value(47), hex("01 00  01 00  01 00  01 00"));
}

TEST(SimulatorSensor, lengths_are_exact) {
  ModelClient client;
  const auto before = settingsOf(client);
  expectOnlyLengths(client, kSensorUpdate, update(0, 1, 2, 3), 0);
  expectOnlyLengths(client, kSensorData, {}, 64);
  EXPECT_EQ(settingsOf(client), before);
}

}  // namespace
}  // namespace test
