// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/simulator/model/settings_view.h"
#include "tests/support/temporary_folder.h"

namespace test {
namespace {

using Numbers = std::vector<std::int32_t>;

Numbers numbersIn(const Bytes& value) {
  Numbers all;
  for (std::size_t offset = 0; offset < value.size(); offset += 4)
    all.push_back(static_cast<std::int32_t>(word(value, offset)));
  return all;
}

/// Numbers, and -1 behind them.
Numbers padded(Numbers numbers, std::size_t count) {
  numbers.resize(count, -1);
  return numbers;
}

TEST(SimulatorTelemetry, shows_each_display_that_is_there) {
  ModelClient client;
  const Telemetry telemetry{client};
  for (std::uint32_t displays = 0; displays <= 4; ++displays) {
    overrideKey(client, 56, displays);
    for (std::uint32_t i = 0; i < 4; ++i) {
      EXPECT_EQ(telemetry.text(6 + i), i < displays ? "Yes" : "No");
      EXPECT_EQ(telemetry.text(10 + i), i >= displays ? "None" : i == 0 ? "LVDS" : "HDMI");
      EXPECT_EQ(telemetry.exValue(11)[i], i < displays ? 1 : 0);
      if (i >= displays) {
        EXPECT_EQ(numbersIn(telemetry.exValue(10))[i], -2);
      }
    }
  }
}

TEST(SimulatorTelemetry, shows_which_features_are_active) {
  ModelClient client;
  const Telemetry telemetry{client};
  for (const std::uint32_t key : {15U, 17U, 19U, 21U, 23U, 149U}) EXPECT_EQ(telemetry.text(key), "No") << key;
  EXPECT_EQ(telemetry.text(53), "Off");
  ASSERT_EQ(client.same(0x80222014, Record{80}.u32(0, 1)).outcome, Outcome::kSuccess);
  EXPECT_EQ(telemetry.text(15), "Yes");
  ASSERT_EQ(client.same(0x80222018, Record{404}.u32(0, 1)).outcome, Outcome::kSuccess);
  EXPECT_EQ(telemetry.text(17), "Yes");
  ASSERT_EQ(client.same(0x8022201C, Record{420}.u32(0, 1)).outcome, Outcome::kSuccess);
  EXPECT_EQ(telemetry.text(19), "Yes");
  constexpr std::uint32_t kStoreKeys[] = {21, 23, 149};
  for (std::size_t store = 0; store < 3; ++store) {
    ASSERT_EQ(client.add(kModifyCodes[store], simplePolicy(7)), 0);
    EXPECT_EQ(telemetry.text(kStoreKeys[store]), "Yes");
    ASSERT_EQ(client.remove(kModifyCodes[store], 7), 0);
    EXPECT_EQ(telemetry.text(kStoreKeys[store]), "No");
  }
  ASSERT_EQ(client.outcome(kDynamicSlider, Record{4}.u32(0, 1)), Outcome::kSuccess);
  EXPECT_EQ(telemetry.text(53), "On");
}

TEST(SimulatorTelemetry, lists_the_policies_of_the_stores) {
  ModelClient client;
  const Telemetry telemetry{client};
  constexpr std::pair<std::uint32_t, std::size_t> kLists[] = {{29, 100}, {30, 100}, {151, 50}};
  for (std::size_t store = 0; store < 3; ++store) {
    const auto& [key, count] = kLists[store];
    EXPECT_EQ(numbersIn(telemetry.value(key)), padded({}, count));
    for (const std::uint32_t id : {9U, 7U, 8U}) ASSERT_EQ(client.add(kModifyCodes[store], simplePolicy(id)), 0);
    EXPECT_EQ(numbersIn(telemetry.value(key)), padded({9, 7, 8}, count));
  }
  EXPECT_EQ(numbersIn(telemetry.exValue(13)), padded({9, 7, 8}, 7));
  for (std::uint32_t id = 100; id < 300; ++id) ASSERT_EQ(client.add(kModifyPb, simplePolicy(id)), 0);
  const auto list = numbersIn(telemetry.value(29));
  EXPECT_EQ(list[3], 100);
  EXPECT_EQ(list[99], 196);
}

TEST(SimulatorTelemetry, custom_outputs_follow_the_custom_inputs) {
  ModelClient client;
  const Telemetry telemetry{client};
  for (const auto& [input, output] : {std::pair{35U, 37U}, {36U, 38U}, {97U, 105U}, {100U, 108U}, {104U, 112U}}) {
    overrideKey(client, input, 0x89ABCD00 + input);
    EXPECT_EQ(telemetry.number(output), 0x89ABCD00 + input);
  }
}

TEST(SimulatorTelemetry, names_the_policy_binary_in_force) {
  ModelClient client;
  const Telemetry telemetry{client};
  EXPECT_EQ(telemetry.text(74), "1.0");
  EXPECT_EQ(telemetry.text(76), "Loaded");
  EXPECT_EQ(telemetry.exValue(47)[0], 0);
  client.surroundings.memory[0x1000] = sample("laptop-r5.bin");
  ASSERT_EQ(client.outcome(kPolicyBinary, Record{24}.u64(8, 3371).u64(16, 0x1000), 24), Outcome::kSuccess);
  EXPECT_EQ(telemetry.text(74), "3.41");
  EXPECT_EQ(telemetry.text(76), "Replaced");
  EXPECT_EQ(telemetry.exValue(47)[0], 1);
  ASSERT_EQ(client.add(kModifyAsm, simplePolicy(7)), 0);
  ASSERT_EQ(client.same(kModifyAsm, modifyRequest(6).u32(3988, 65535).u32(3992, 65535)).outcome, Outcome::kSuccess);
  ASSERT_EQ(client.outcome(kPolicyBinary, Record{24}.u32(0, 4), 24), Outcome::kSuccess);
  EXPECT_EQ(telemetry.text(74), "65535.65535");
}

TEST(SimulatorTelemetry, counts_seconds_in_each_power_mode) {
  ModelClient client;
  const Telemetry telemetry{client};
  for (std::uint32_t mode = 0; mode <= 4; ++mode) {
    overrideKey(client, 52, mode);
    client.surroundings.clock += 1000 * (std::uint64_t{mode} + 1);
    client.refresh();
    EXPECT_EQ(telemetry.exNumber(12), mode);
  }
  EXPECT_EQ(numbersIn(telemetry.value(116)), (Numbers{1, 2, 3, 4, 5, 0, 0, 0, 0}));
}

TEST(SimulatorTelemetry, counts_seconds_of_throttling_while_it_is_shown) {
  ModelClient client;
  const Telemetry telemetry{client};
  std::array<std::uint32_t, 7> expected{};
  for (int second = 0; second < 600; ++second) {
    if (second == 200) overrideKey(client, 185, 40000);
    if (second == 400) overrideKey(client, 185, 1000);
    const std::uint32_t active = telemetry.half(213);
    for (std::size_t i = 0; i < 7; ++i) expected[i] += active >> i & 1U;
    client.surroundings.clock += 1000;
    client.refresh();
  }
  for (std::uint32_t i = 0; i < 7; ++i) EXPECT_EQ(telemetry.number(195 + i), expected[i]) << i;
  EXPECT_GE(expected[1], 200) << "40 W are above every power limit";
}

TEST(SimulatorTelemetry, counts_firmware_events) {
  ModelClient client;
  const Telemetry telemetry{client};
  for (int i = 0; i < 3; ++i) ASSERT_EQ(client.outcome(kFirmwareEvent, Bytes(40)), Outcome::kSuccess);
  ASSERT_EQ(client.outcome(kFirmwareEventV2, Bytes(64)), Outcome::kSuccess);
  EXPECT_EQ(telemetry.exValue(20), Record{40}.u32(0, 3).u32(4, 1).bytes());
}

TEST(SimulatorTelemetry, lid_shows_in_the_platform_type_and_the_hinge) {
  ModelClient client;
  const Telemetry telemetry{client};
  EXPECT_EQ(telemetry.text(3), "Clamshell");
  EXPECT_EQ(telemetry.exValue(3)[0], 0);
  overrideKey(client, 2, 1);
  EXPECT_EQ(telemetry.text(3), "Lid Close");
  EXPECT_EQ(telemetry.exValue(3)[0], 1);
  EXPECT_EQ(word(sensorData(client), 36), 0) << "degrees";
}

TEST(SimulatorTelemetry, cores_are_sorted_by_activity) {
  ModelClient client;
  const Telemetry telemetry{client};
  for (int step = 0; step < 20; ++step) {
    client.surroundings.clock += 17000;
    client.refresh();
    std::array<std::uint32_t, 16> activities{};
    for (std::size_t core = 0; core < 16; ++core) activities[core] = telemetry.half(183, core);
    std::ranges::sort(activities, std::greater{});
    for (std::size_t i = 0; i < 16; ++i) EXPECT_EQ(word(telemetry.value(184), 4 * i), activities[i]);
    EXPECT_EQ(telemetry.number(70), activities[0]);
  }
}

TEST(SimulatorTelemetry, frequencies_follow_the_activities) {
  ModelClient client;
  const Telemetry telemetry{client};
  for (int step = 0; step < 20; ++step) {
    client.surroundings.clock += 17000;
    client.refresh();
    for (std::size_t core = 0; core < 16; ++core)
      EXPECT_EQ(telemetry.half(166, core), 800 + 34 * telemetry.half(183, core));
    EXPECT_EQ(telemetry.half(176), 400 + 22 * telemetry.number(71));
    EXPECT_EQ(telemetry.number(62), 10 * telemetry.number(69));
    EXPECT_EQ(telemetry.number(64), 900 + 55 * telemetry.number(69));
  }
}

TEST(SimulatorTelemetry, powers_of_the_cores_add_up) {
  ModelClient client;
  const Telemetry telemetry{client};
  for (int step = 0; step < 20; ++step) {
    client.surroundings.clock += 17000;
    client.refresh();
    std::uint32_t sum = 0;
    for (std::size_t core = 0; core < 16; ++core) sum += telemetry.half(167, core);
    EXPECT_EQ(telemetry.number(189), sum);
    EXPECT_GE(telemetry.number(185), sum + telemetry.number(186) + telemetry.number(88));
    EXPECT_EQ(telemetry.signedNumber(27), -static_cast<std::int32_t>(telemetry.number(185) + 2500 + 40 * 70))
        << "the battery feeds the chip, the rest, and the display at 70 %";
  }
}

}  // namespace
}  // namespace test
