// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <set>

#include "tests/simulator/model/settings_view.h"

namespace test {
namespace {

constexpr std::uint64_t kMinute = 60000;
constexpr std::uint64_t kHour = 3600000;

void pass(ModelClient& client, std::uint64_t milliseconds) {
  client.surroundings.clock += milliseconds;
  client.refresh();
}

/// All four areas, whose logs were started before.
Bytes areasOf(ModelClient& client) {
  Bytes all;
  for (const LogKind kind : kLogKinds) {
    const auto area = bytesOfArea(client.surroundings.area(kind));
    all.insert(all.end(), area.begin(), area.end());
  }
  return all;
}

void startLogs(ModelClient& client) {
  for (const std::uint32_t operation : kStartOperations) startLog(client, operation);
}

/// What the areas show on the way through ten minutes, with a few requests between them.
std::vector<Bytes> course(std::uint64_t seed, std::uint64_t clock) {
  ModelClient client;
  client.driver().setSeed(seed);
  client.surroundings.clock = clock;
  startLogs(client);
  std::vector<Bytes> areas = {areasOf(client)};
  for (int step = 0; step < 20; ++step) {
    pass(client, 30000);
    if (step == 5) overrideKey(client, 52, 3);
    if (step == 9) {
      EXPECT_EQ(client.outcome(kSensorUpdate, Record{16}.u32(0, 1).u32(4, 5)), Outcome::kSuccess);
    }
    areas.push_back(areasOf(client));
  }
  return areas;
}

TEST(SimulatorPlatform, same_seed_and_steps_give_the_same_telemetry) {
  EXPECT_EQ(course(0, 1000), course(0, 1000));
  EXPECT_EQ(course(0x123456789ABCDEF0, 1000), course(0x123456789ABCDEF0, 1000));
}

TEST(SimulatorPlatform, begins_at_whatever_clock_it_first_sees) {
  EXPECT_EQ(course(7, 0), course(7, 1795000000000));
  EXPECT_EQ(course(7, 12345), course(7, 1ULL << 62));
}

TEST(SimulatorPlatform, another_seed_gives_other_telemetry) {
  EXPECT_NE(course(0, 1000), course(1, 1000));
  EXPECT_NE(course(1, 1000), course(2, 1000));
  EXPECT_NE(course(1, 1000), course(1ULL << 63, 1000));
}

TEST(SimulatorPlatform, small_steps_and_large_ones_come_to_the_same) {
  ModelClient small;
  ModelClient large;
  startLogs(small);
  startLogs(large);
  for (int second = 0; second < 600; ++second) pass(small, 1000);
  pass(large, 600000);
  EXPECT_EQ(areasOf(small), areasOf(large));
  for (int i = 0; i < 7000; ++i) pass(small, 173);
  pass(large, 7000 * 173);
  EXPECT_EQ(areasOf(small), areasOf(large));
}

TEST(SimulatorPlatform, clock_that_stands_changes_nothing) {
  ModelClient client;
  startLogs(client);
  pass(client, 12345);
  const auto areas = areasOf(client);
  const auto settings = settingsOf(client);
  for (int i = 0; i < 50; ++i) pass(client, 0);
  client.answer(kLog, logRequest(6), 32);
  EXPECT_EQ(areasOf(client), areas);
  EXPECT_EQ(settingsOf(client), settings);
}

TEST(SimulatorPlatform, clock_that_jumps_back_changes_nothing_and_goes_on_from_there) {
  ModelClient client;
  const Telemetry telemetry{client};
  pass(client, 100000);
  EXPECT_EQ(telemetry.number(39), 100);
  const auto before = settingsOf(client);
  for (const std::uint64_t clock : std::initializer_list<std::uint64_t>{5099999, 5000000, 60000, 0}) {
    client.surroundings.clock = clock;
    client.refresh();
    EXPECT_EQ(telemetry.number(39), 100) << clock;
    EXPECT_EQ(settingsOf(client), before);
  }
  pass(client, 20000);
  EXPECT_EQ(telemetry.number(39), 120);
}

TEST(SimulatorPlatform, clock_that_jumps_ahead_simulates_an_hour_at_most) {
  ModelClient client;
  const Telemetry telemetry{client};
  pass(client, kHour);
  EXPECT_EQ(telemetry.number(39), 3600);
  pass(client, kHour + kMinute);
  EXPECT_EQ(telemetry.number(39), 7200);
  pass(client, 1ULL << 62);
  EXPECT_EQ(telemetry.number(39), 10800);
  client.surroundings.clock = ~0ULL;
  client.refresh();
  EXPECT_EQ(telemetry.number(39), 14400);
  client.surroundings.clock = 5;
  client.refresh();
  EXPECT_EQ(telemetry.number(39), 14400);
  pass(client, 1000);
  EXPECT_EQ(telemetry.number(39), 14401);
}

TEST(SimulatorPlatform, fresh_one_runs_on_battery_at_80_percent) {
  ModelClient client;
  const Telemetry telemetry{client};
  EXPECT_EQ(telemetry.text(24), "DC");
  EXPECT_EQ(telemetry.number(28), 80);
}

TEST(SimulatorPlatform, battery_drains_on_dc) {
  ModelClient client;
  const Telemetry telemetry{client};
  overrideKey(client, 24, 1);
  std::uint32_t level = telemetry.number(28);
  for (int minute = 0; minute < 60; ++minute) {
    pass(client, kMinute);
    EXPECT_LT(telemetry.signedNumber(27), 0);
    EXPECT_LE(telemetry.number(28), level);
    level = telemetry.number(28);
  }
  EXPECT_LT(level, 80);
  for (int hour = 0; hour < 200; ++hour) pass(client, kHour);
  EXPECT_EQ(telemetry.number(28), 0);
}

TEST(SimulatorPlatform, battery_charges_on_ac_up_to_full) {
  ModelClient client;
  const Telemetry telemetry{client};
  overrideKey(client, 24, 0);
  std::uint32_t level = telemetry.number(28);
  for (int minute = 0; minute < 10; ++minute) {
    pass(client, kMinute);
    EXPECT_GT(telemetry.signedNumber(27), 0);
    EXPECT_GE(telemetry.number(28), level);
    level = telemetry.number(28);
  }
  EXPECT_GT(level, 80);
  for (int minute = 0; minute < 300; ++minute) {
    pass(client, kMinute);
    EXPECT_LE(telemetry.number(28), 100);
  }
  EXPECT_EQ(telemetry.number(28), 100);
  EXPECT_EQ(telemetry.signedNumber(27), 0) << "a full battery takes no more";
}

TEST(SimulatorPlatform, charge_rate_and_level_agree) {
  ModelClient client;
  const Telemetry telemetry{client};
  overrideKey(client, 24, 1);
  const std::uint32_t first = telemetry.number(28);
  std::int64_t drawn = 0;
  for (int minute = 0; minute < 60; ++minute) {
    drawn -= telemetry.signedNumber(27);
    pass(client, kMinute);
  }
  // mW minutes of a full charge of telemetry key 26, in mWh; one percent of rounding at either end.
  const auto percent = static_cast<double>(drawn) / 60 * 100 / telemetry.number(26);
  EXPECT_NEAR(first - telemetry.number(28), percent, 2);
}

TEST(SimulatorPlatform, power_source_alternates) {
  ModelClient client;
  const Telemetry telemetry{client};
  std::vector<std::string> sources = {telemetry.text(24)};
  for (int minute = 0; minute < 48 * 60; ++minute) {
    pass(client, kMinute);
    const auto source = telemetry.text(24);
    if (source != sources.back()) {
      // Somewhere within the last minute.
      EXPECT_NEAR(telemetry.number(28), source == "AC" ? 15 : 95, 1);
      sources.push_back(source);
    }
  }
  ASSERT_GE(sources.size(), 4U);
  for (std::size_t i = 0; i < sources.size(); ++i) EXPECT_EQ(sources[i], i % 2 == 0 ? "DC" : "AC");
}

TEST(SimulatorPlatform, temperatures_rise_under_load) {
  ModelClient client;
  const Telemetry telemetry{client};
  overrideKey(client, 185, 500);
  for (int minute = 0; minute < 120; ++minute) pass(client, kMinute);
  const std::uint32_t idleSkin = telemetry.number(175);
  const std::uint32_t idleSoc = telemetry.half(170);
  overrideKey(client, 185, 60000);
  for (int minute = 0; minute < 120; ++minute) pass(client, kMinute);
  EXPECT_GT(telemetry.half(170), idleSoc);
  EXPECT_GT(telemetry.number(175), idleSkin);
}

TEST(SimulatorPlatform, temperatures_stay_within_bounds_under_any_load) {
  ModelClient client;
  const Telemetry telemetry{client};
  for (const std::uint32_t power : {200000U, 0U}) {
    overrideKey(client, 185, power);
    for (int minute = 0; minute < 300; ++minute) {
      pass(client, kMinute);
      for (const std::uint32_t key : {169U, 170U, 175U, 218U}) EXPECT_LE(telemetry.half(key), 11500) << key;
      EXPECT_LE(telemetry.number(85), 10000);
    }
  }
}

bool isWithin(std::uint32_t value, std::uint32_t lowest, std::uint32_t highest) {
  return value >= lowest && value <= highest;
}

void expectPlausibleCores(const Telemetry& telemetry) {
  for (std::size_t core = 0; core < 16; ++core) {
    EXPECT_TRUE(isWithin(telemetry.half(166, core), 100, 7000)) << "core, MHz";
    EXPECT_TRUE(isWithin(telemetry.half(168, core), 2000, 11000)) << "core, centi-C";
    EXPECT_TRUE(isWithin(telemetry.half(183, core), 0, 100)) << "core, %";
  }
}

void expectPlausibleBattery(const Telemetry& telemetry) {
  EXPECT_TRUE(isWithin(telemetry.number(85), 1500, 6000)) << "battery, centi-C: " << telemetry.number(85);
  EXPECT_TRUE(isWithin(telemetry.number(28), 0, 100)) << "charge, %";
  EXPECT_GE(telemetry.signedNumber(27), -100000) << "charge rate, mW";
  EXPECT_LE(telemetry.signedNumber(27), 100000) << "charge rate, mW";
  EXPECT_LE(telemetry.number(26), telemetry.number(25)) << "full and designed capacity";
}

/// What telemetry may show at any time, in the units of the keys.
void expectPlausible(const Telemetry& telemetry) {
  EXPECT_TRUE(isWithin(telemetry.half(170), 2000, 10500)) << "chip, centi-C: " << telemetry.half(170);
  EXPECT_TRUE(isWithin(telemetry.half(175), 2000, 6000)) << "skin, centi-C: " << telemetry.half(175);
  EXPECT_TRUE(isWithin(telemetry.number(58), 0, 100)) << "brightness, %";
  EXPECT_TRUE(isWithin(telemetry.number(57), 0, 100000)) << "light, lux";
  EXPECT_TRUE(isWithin(telemetry.number(185), 500, 100000)) << "chip, mW: " << telemetry.number(185);
  EXPECT_TRUE(isWithin(telemetry.number(71), 0, 100)) << "graphics, %";
  EXPECT_TRUE(isWithin(telemetry.number(69), 0, 100)) << "C0, %";
  EXPECT_GE(telemetry.number(70), telemetry.number(69)) << "highest and average C0";
  EXPECT_TRUE(telemetry.text(24) == "AC" || telemetry.text(24) == "DC");
  expectPlausibleBattery(telemetry);
  expectPlausibleCores(telemetry);
}

TEST(SimulatorPlatform, a_day_stays_within_the_ranges_of_its_meaning) {
  for (const std::uint64_t seed : std::initializer_list<std::uint64_t>{0, 99}) {
    ModelClient client;
    client.driver().setSeed(seed);
    const Telemetry telemetry{client};
    for (int step = 0; step < 24 * 12; ++step) {
      pass(client, 5 * kMinute);
      expectPlausible(telemetry);
    }
    EXPECT_EQ(telemetry.number(39), 86400);
  }
}

TEST(SimulatorPlatform, telemetry_is_worth_watching) {
  ModelClient client;
  const Telemetry telemetry{client};
  std::set<std::uint32_t> temperatures;
  std::set<std::uint32_t> powers;
  std::set<std::uint32_t> activities;
  for (int minute = 0; minute < 60; ++minute) {
    pass(client, kMinute);
    temperatures.insert(telemetry.half(170));
    powers.insert(telemetry.number(185));
    activities.insert(telemetry.number(69));
  }
  EXPECT_GT(temperatures.size(), 10U);
  EXPECT_GT(powers.size(), 10U);
  EXPECT_GT(activities.size(), 5U);
}

TEST(SimulatorPlatform, history_remembers_the_last_20_minutes) {
  ModelClient client;
  const Telemetry telemetry{client};
  std::vector<std::uint32_t> levels;
  for (int minute = 0; minute < 30; ++minute) {
    pass(client, kMinute);
    levels.push_back(telemetry.number(28));
  }
  pass(client, 1000);
  const auto history = telemetry.value(120);
  for (std::size_t i = 0; i < 20; ++i) EXPECT_EQ(word(history, 4 * i), levels[levels.size() - 1 - i]) << i;
}

TEST(SimulatorPlatform, plain_logs_begin_as_documented) {
  ModelClient client;
  const Telemetry telemetry{client};
  startLogs(client);
  pass(client, 90000);
  client.answer(kAppIo, Record{12}.u32(0, 4).u32(4, 11).u32(8, 22), 12);
  const auto plain = bytesOfArea(client.surroundings.area(LogKind::kPlain));
  Record expected = Record{4096}.text(0, "VQTL").u32(4, 3).u32(8, 90).u32(12, 1).u32(16, inForce(client, 52));
  expected.u32(20, telemetry.number(28)).u32(24, telemetry.number(27)).u32(28, telemetry.number(85));
  expected.u32(32, telemetry.number(175)).u32(36, telemetry.number(185)).u32(40, 11).u32(44, 22).u32(48, 11);
  expected.u32(52, 22);
  EXPECT_EQ(difference(plain, expected.bytes()), "");
  expected.u32(4, 4);
  const auto ex = bytesOfArea(client.surroundings.area(LogKind::kEx));
  EXPECT_EQ(difference(part(ex, 0, 56), part(expected, 0, 56)), "");
  EXPECT_EQ(part(ex, 184, 4096 - 184), Bytes(4096 - 184));
  const auto cores = telemetry.value(166);
  for (std::size_t core = 0; core < 16; ++core) EXPECT_EQ(part(ex, 56 + 8 * core, 2), part(cores, 2 * core, 2)) << core;
}

}  // namespace
}  // namespace test
