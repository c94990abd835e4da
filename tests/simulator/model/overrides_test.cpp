// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/simulator/model/settings_view.h"

namespace test {
namespace {

struct KeyLimits {
  std::uint32_t key;
  const char* name;
  std::uint32_t type;
  std::int64_t lowest;
  std::int64_t highest;
};

constexpr std::int64_t kAny = 4294967295;

constexpr KeyLimits kKeys[] = {
    {2, "LidClosed", 5, 0, 1},
    {4, "UserEngaged", 5, 0, 1},
    {5, "UserPresent", 5, 0, 1},
    {24, "PowerSource", 5, 0, 1},
    {27, "BatteryChargeRate", 3, -100000, 100000},
    {28, "BatteryChargeLevel", 7, 0, 100},
    {31, "AppInput1", 7, 0, kAny},
    {32, "AppInput2", 7, 0, kAny},
    {35, "CustomInput1", 7, 0, kAny},
    {36, "CustomInput2", 7, 0, kAny},
    {52, "PowerMode", 7, 0, 4},
    {54, "MouseNum", 7, 0, 16},
    {55, "KeyboardNum", 7, 0, 16},
    {56, "DisplayNum", 7, 0, 4},
    {57, "ambientLight", 7, 0, 100000},
    {58, "DisplayBrightness", 7, 0, 100},
    {85, "batteryTemperature", 7, 0, 10000},
    {97, "CustomInput3", 7, 0, kAny},
    {98, "CustomInput4", 7, 0, kAny},
    {99, "CustomInput5", 7, 0, kAny},
    {100, "CustomInput6", 7, 0, kAny},
    {101, "CustomInput7", 7, 0, kAny},
    {102, "CustomInput8", 7, 0, kAny},
    {103, "CustomInput9", 7, 0, kAny},
    {104, "CustomInput10", 7, 0, kAny},
    {126, "GameMode", 5, 0, 1},
    {175, "skinTemp", 6, 0, 65535},
    {185, "apuPower", 7, 0, 200000},
};

/// Keys whose telemetry is text.
constexpr std::uint32_t kTextKeys[] = {2, 4, 5, 24, 52, 126};

std::uint32_t wordOf(std::int64_t value) { return static_cast<std::uint32_t>(value); }

Bytes valueAnswer(std::int64_t value, std::uint32_t overridden) {
  return Record{8}.u32(0, wordOf(value)).u32(4, overridden);
}
Bytes keyValue(ModelClient& client, std::uint32_t key) { return client.answer(0x80222098, Record{4}.u32(0, key), 8); }

TEST(SimulatorOverride, key_list_is_ascending) {
  ModelClient client;
  EXPECT_EQ(client.answer(0x8022209C, {}, 4), hex("70 00 00 00"));
  EXPECT_EQ(client.answer(0x802220A0, {}, 112),
            hex("02 00 00 00 04 00 00 00 05 00 00 00 18 00 00 00 1b 00 00 00 1c 00 00 00 1f 00 00 00 20 00 00 00"
                "23 00 00 00 24 00 00 00 34 00 00 00 36 00 00 00 37 00 00 00 38 00 00 00 39 00 00 00 3a 00 00 00"
                "55 00 00 00 61 00 00 00 62 00 00 00 63 00 00 00 64 00 00 00 65 00 00 00 66 00 00 00 67 00 00 00"
                "68 00 00 00 7e 00 00 00 af 00 00 00 b9 00 00 00"));
}

TEST(SimulatorOverride, metadata_is_that_of_the_key) {
  ModelClient client;
  for (const auto& it : kKeys) {
    Record expected = Record{52}.u32(0, it.key).u32(4, it.type).u32(8, wordOf(it.lowest)).u32(12, wordOf(it.highest));
    expected.text(16, it.name);
    EXPECT_EQ(difference(client.answer(0x802220A4, Record{4}.u32(0, it.key), 52), expected.bytes()), "") << it.name;
    overrideKey(client, it.key, 1);
    expected.u32(48, 1);
    EXPECT_EQ(difference(client.answer(0x802220A4, Record{4}.u32(0, it.key), 52), expected.bytes()), "") << it.name;
    liftOverride(client, it.key);
    expected.u32(48, 0);
    EXPECT_EQ(difference(client.answer(0x802220A4, Record{4}.u32(0, it.key), 52), expected.bytes()), "") << it.name;
  }
}

TEST(SimulatorOverride, names_are_those_of_the_telemetry_keys) {
  for (const auto& it : kKeys) EXPECT_EQ(kvRows().at(it.key - 1).name, it.name);
}

TEST(SimulatorOverride, value_is_in_force_until_it_is_lifted) {
  ModelClient client;
  for (const auto& it : kKeys) {
    const Bytes own = keyValue(client, it.key);
    EXPECT_EQ(word(own, 4), 0) << it.name;
    for (const std::int64_t value : {it.lowest, it.highest, (it.lowest + it.highest) / 2}) {
      ASSERT_EQ(client.outcome(0x80222060, overrideRequest(it.key, wordOf(value))), Outcome::kSuccess) << it.name;
      EXPECT_EQ(keyValue(client, it.key), valueAnswer(value, 1)) << it.name;
    }
    ASSERT_EQ(client.outcome(0x80222060, overrideRequest(it.key, 0, 0)), Outcome::kSuccess) << it.name;
    EXPECT_EQ(keyValue(client, it.key), own) << it.name;
  }
}

TEST(SimulatorOverride, value_outside_the_limits_is_malformed) {
  ModelClient client;
  const auto before = settingsOf(client);
  for (const auto& it : kKeys) {
    std::vector<std::int64_t> outside;
    if (it.highest < kAny) outside = {it.highest + 1, it.highest + 1000, 0x7FFFFFFF};
    if (it.lowest < 0) outside.insert(outside.end(), {it.lowest - 1, -0x80000000LL});
    if (it.lowest == 0 && it.highest < kAny) outside.insert(outside.end(), {-1, -0x80000000LL});
    for (const std::int64_t value : outside)
      EXPECT_EQ(client.outcome(kOverride, overrideRequest(it.key, wordOf(value))), Outcome::kMalformed)
          << it.name << " " << value;
  }
  EXPECT_EQ(settingsOf(client), before);
}

TEST(SimulatorOverride, refused_value_keeps_the_earlier_override) {
  ModelClient client;
  overrideKey(client, 58, 40);
  EXPECT_EQ(client.outcome(kOverride, overrideRequest(58, 101)), Outcome::kMalformed);
  EXPECT_EQ(keyValue(client, 58), valueAnswer(40, 1));
}

TEST(SimulatorOverride, all_other_keys_are_unknown) {
  ModelClient client;
  std::vector<std::uint32_t> others = {0xFFFFFFFF, 0x80000002, 0x102, 0x10018};
  for (std::uint32_t key = 0; key < 300; ++key)
    if (std::ranges::find(kKeys, key, &KeyLimits::key) == std::end(kKeys)) others.push_back(key);
  for (const std::uint32_t key : others) {
    EXPECT_EQ(client.outcome(kOverride, overrideRequest(key, 0)), Outcome::kMalformed) << key;
    EXPECT_EQ(client.outcome(kOverride, overrideRequest(key, 0, 0)), Outcome::kMalformed) << key;
    EXPECT_EQ(client.outcome(kOverrideValue, Record{4}.u32(0, key), 8), Outcome::kMalformed) << key;
    EXPECT_EQ(client.outcome(kOverrideMetadata, Record{4}.u32(0, key), 52), Outcome::kMalformed) << key;
  }
}

TEST(SimulatorOverride, anything_but_0_sets) {
  ModelClient client;
  for (unsigned enable = 1; enable < 256; ++enable) {
    ASSERT_EQ(client.outcome(kOverride, overrideRequest(36, enable, static_cast<std::uint8_t>(enable))),
              Outcome::kSuccess);
    EXPECT_EQ(keyValue(client, 36), valueAnswer(enable, 1));
  }
}

TEST(SimulatorOverride, lifting_ignores_the_value_and_that_there_was_none) {
  ModelClient client;
  overrideKey(client, 52, 4);
  EXPECT_EQ(client.outcome(kOverride, overrideRequest(52, 0xFFFFFFFF, 0)), Outcome::kSuccess);
  EXPECT_EQ(word(keyValue(client, 52), 4), 0);
  EXPECT_EQ(client.outcome(kOverride, overrideRequest(52, 5, 0)), Outcome::kSuccess);
}

TEST(SimulatorOverride, enable_is_padded_with_zero) {
  ModelClient client;
  expectOnlyZero(client, kOverride, overrideRequest(36, 7), 0, 1, 4);
  expectOnlyZero(client, kOverride, overrideRequest(36, 7, 0), 0, 1, 4);
  EXPECT_EQ(word(keyValue(client, 36), 4), 0);
}

TEST(SimulatorOverride, overrides_do_not_touch_each_other) {
  ModelClient client;
  for (const auto& it : kKeys) overrideKey(client, it.key, wordOf(it.highest));
  liftOverride(client, 98);
  for (const auto& it : kKeys) {
    if (it.key != 98) {
      EXPECT_EQ(keyValue(client, it.key), valueAnswer(it.highest, 1)) << it.name;
    }
  }
  EXPECT_EQ(word(keyValue(client, 98), 4), 0);
}

TEST(SimulatorOverride, numbers_show_in_telemetry) {
  ModelClient client;
  const Telemetry telemetry{client};
  for (const auto& it : kKeys) {
    if (std::ranges::find(kTextKeys, it.key) != std::end(kTextKeys)) continue;
    const std::uint32_t own = telemetry.number(it.key);
    EXPECT_EQ(inForce(client, it.key), own) << it.name;
    for (const std::int64_t value : {it.lowest, it.highest}) {
      overrideKey(client, it.key, wordOf(value));
      EXPECT_EQ(telemetry.number(it.key), wordOf(value)) << it.name;
    }
    liftOverride(client, it.key);
    EXPECT_EQ(telemetry.number(it.key), own) << it.name;
  }
}

TEST(SimulatorOverride, states_show_in_telemetry_as_text) {
  ModelClient client;
  const Telemetry telemetry{client};
  for (const std::uint32_t key : {2U, 4U, 5U}) {
    overrideKey(client, key, 0);
    EXPECT_EQ(telemetry.text(key), "No") << key;
    overrideKey(client, key, 1);
    EXPECT_EQ(telemetry.text(key), "Yes") << key;
  }
  overrideKey(client, 24, 0);
  EXPECT_EQ(telemetry.text(24), "AC");
  overrideKey(client, 24, 1);
  EXPECT_EQ(telemetry.text(24), "DC");
  overrideKey(client, 126, 0);
  EXPECT_EQ(telemetry.text(126), "Off");
  overrideKey(client, 126, 1);
  EXPECT_EQ(telemetry.text(126), "On");
}

TEST(SimulatorOverride, each_power_mode_has_a_text_of_its_own) {
  ModelClient client;
  const Telemetry telemetry{client};
  std::vector<std::string> texts;
  for (std::uint32_t mode = 0; mode <= 4; ++mode) {
    overrideKey(client, 52, mode);
    texts.push_back(telemetry.text(52));
  }
  EXPECT_EQ(texts[2], "Balanced");
  std::ranges::sort(texts);
  EXPECT_TRUE(std::ranges::adjacent_find(texts) == texts.end());
}

TEST(SimulatorOverride, shows_in_the_ex_telemetry_too) {
  constexpr std::pair<std::uint32_t, std::uint32_t> kTwins[] = {{4, 4},   {5, 5},   {24, 22},  {27, 25},
                                                                {28, 26}, {54, 14}, {55, 15},  {56, 9},
                                                                {57, 16}, {58, 17}, {175, 45}, {185, 43}};
  ModelClient client;
  const Telemetry telemetry{client};
  for (const auto& [key, ex] : kTwins)
    for (const std::uint32_t value : {0U, 1U}) {
      overrideKey(client, key, value);
      EXPECT_EQ(telemetry.exNumber(ex), value) << key;
    }
}

TEST(SimulatorOverride, holds_while_time_passes_and_sessions_end) {
  ModelClient client;
  const Telemetry telemetry{client};
  overrideKey(client, 28, 33);
  overrideKey(client, 175, 4321);
  for (int hour = 0; hour < 5; ++hour) {
    client.surroundings.clock += 3600000;
    client.refresh();
    EXPECT_EQ(telemetry.number(28), 33);
    EXPECT_EQ(telemetry.half(175), 4321);
  }
  client.close();
  client.session = 2;
  EXPECT_EQ(keyValue(client, 28), valueAnswer(33, 1));
}

TEST(SimulatorOverride, lengths_are_exact) {
  ModelClient client;
  const auto before = settingsOf(client);
  expectOnlyLengths(client, kOverride, overrideRequest(28, 7), 0);
  expectOnlyLengths(client, kOverride, overrideRequest(28, 7, 0), 0);
  expectOnlyLengths(client, kOverrideValue, Record{4}.u32(0, 28), 8);
  expectOnlyLengths(client, kOverrideKeysSize, {}, 4);
  expectOnlyLengths(client, kOverrideKeys, {}, 112);
  expectOnlyLengths(client, kOverrideMetadata, Record{4}.u32(0, 28), 52);
  EXPECT_EQ(settingsOf(client), before);
}

}  // namespace
}  // namespace test
