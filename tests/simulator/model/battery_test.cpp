// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/simulator/model/settings_view.h"

namespace test {
namespace {

Record battery(std::uint32_t operation, std::uint32_t value = 0) { return Record{8}.u32(0, operation).u32(4, value); }

void setChargeRate(ModelClient& client, std::uint32_t milliwatts) {
  EXPECT_EQ(client.answer(0x80222010, battery(0, milliwatts), 4), hex("00 00 00 00"));
}

void pass(ModelClient& client, int minutes) {
  for (; minutes > 0; --minutes) {
    client.surroundings.clock += 60000;
    client.refresh();
  }
}

/// A battery that has been emptied to at most half, and is then put on mains power.
void drain(ModelClient& client) {
  overrideKey(client, 24, 1);
  for (int hour = 0; hour < 24 && inForce(client, 28) > 50; ++hour) pass(client, 30);
  ASSERT_LE(inForce(client, 28), 50);
  overrideKey(client, 24, 0);
}

TEST(SimulatorBattery, limits_are_charge_and_temperature_windows) {
  ModelClient client;
  EXPECT_EQ(client.answer(0x80222010, hex("02 00 00 00  00 00 00 00"), 8), hex("14 00  50 00  00 00  2d 00"));
}

TEST(SimulatorBattery, temperature_is_that_of_the_telemetry) {
  ModelClient client;
  const Telemetry telemetry{client};
  for (int step = 0; step < 20; ++step) {
    pass(client, 7);
    EXPECT_EQ(word(client.answer(0x80222010, battery(1), 4), 0), telemetry.number(85));
  }
}

TEST(SimulatorBattery, temperature_can_be_overridden) {
  ModelClient client;
  overrideKey(client, 85, 4567);
  EXPECT_EQ(client.answer(kBattery, battery(1), 4), hex("d7 11 00 00"));
}

TEST(SimulatorBattery, charge_rate_is_at_most_100_watts) {
  ModelClient client;
  for (const std::uint32_t value : {0U, 1U, 45000U, 100000U}) setChargeRate(client, value);
  for (const std::uint32_t value : {100001U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU})
    EXPECT_EQ(client.outcome(kBattery, battery(0, value), 4), Outcome::kMalformed) << value;
}

TEST(SimulatorBattery, charges_at_the_usual_rate_when_none_is_set) {
  ModelClient client;
  drain(client);
  pass(client, 1);
  EXPECT_EQ(inForce(client, 27), 45000);
}

TEST(SimulatorBattery, charges_at_the_rate_that_is_set) {
  ModelClient client;
  drain(client);
  for (const std::uint32_t rate : {20000U, 1000U}) {
    setChargeRate(client, rate);
    pass(client, 1);
    EXPECT_EQ(inForce(client, 27), rate);
  }
}

TEST(SimulatorBattery, does_not_charge_at_rate_zero) {
  ModelClient client;
  drain(client);
  setChargeRate(client, 0);
  const std::uint32_t level = inForce(client, 28);
  pass(client, 120);
  EXPECT_EQ(inForce(client, 28), level);
  EXPECT_EQ(inForce(client, 27), 0);
}

TEST(SimulatorBattery, charge_rate_decides_how_fast_the_level_rises) {
  std::uint32_t levels[2] = {};
  for (const std::size_t i : {0U, 1U}) {
    ModelClient client;
    drain(client);
    setChargeRate(client, i == 0 ? 5000 : 40000);
    pass(client, 30);
    levels[i] = inForce(client, 28);
  }
  EXPECT_GT(levels[1], levels[0] + 10);
}

TEST(SimulatorBattery, queries_carry_no_value) {
  ModelClient client;
  expectOnlyZero(client, kBattery, battery(1), 4, 4, 8);
  expectOnlyZero(client, kBattery, battery(2), 8, 4, 8);
}

TEST(SimulatorBattery, other_operations_are_unknown) {
  ModelClient client;
  for (const std::uint32_t operation : {3U, 4U, 0x100U, 0x80000001U, 0xFFFFFFFFU})
    for (const std::size_t length : {4U, 8U})
      EXPECT_EQ(client.outcome(kBattery, battery(operation), length), Outcome::kUnknownRequest) << operation;
}

TEST(SimulatorBattery, lengths_are_exact) {
  ModelClient client;
  const auto before = settingsOf(client);
  expectOnlyLengths(client, kBattery, battery(0, 7), 4);
  expectOnlyLengths(client, kBattery, battery(1), 4);
  expectOnlyLengths(client, kBattery, battery(2), 8);
  EXPECT_EQ(settingsOf(client), before);
}

}  // namespace
}  // namespace test
