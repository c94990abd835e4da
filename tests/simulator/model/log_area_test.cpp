// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/simulator/model/settings_view.h"

namespace test {
namespace {

void expectAreasWalk(ModelClient& client) {
  EXPECT_EQ(faultOfArea(bytesOfArea(client.surroundings.area(LogKind::kKeyValue)), kvRows()), "");
  EXPECT_EQ(faultOfArea(bytesOfArea(client.surroundings.area(LogKind::kExKeyValue)), exKVRows()), "");
}

TEST(SimulatorLogArea, listings_have_every_key_once) {
  for (const auto& rows : {kvRows(), exKVRows()}) {
    ASSERT_FALSE(rows.empty());
    for (std::uint32_t i = 0; i < rows.size(); ++i) EXPECT_EQ(rows[i].id, i + 1);
  }
}

TEST(SimulatorLogArea, holds_one_record_of_each_key_and_an_end) {
  ModelClient client;
  const Telemetry telemetry{client};
  expectAreasWalk(client);
}

TEST(SimulatorLogArea, ends_where_the_listing_says) {
  ModelClient client;
  const Telemetry telemetry{client};
  // 3680 bytes of records, and 620 of the Ex keys: the end's id follows.
  const auto area = bytesOfArea(client.surroundings.area(LogKind::kKeyValue));
  EXPECT_EQ(word(area, 0), 1);
  EXPECT_EQ(word(area, 3680 - 8), kvRows().size());
  EXPECT_EQ(part(area, 3680, 16384 - 3680), Bytes(16384 - 3680));
  const auto ex = bytesOfArea(client.surroundings.area(LogKind::kExKeyValue));
  EXPECT_EQ(word(ex, 0), 1);
  EXPECT_EQ(word(ex, 620 - 36), exKVRows().size());
  EXPECT_EQ(part(ex, 620, 4096 - 620), Bytes(4096 - 620));
}

TEST(SimulatorLogArea, overwrites_what_a_stale_area_holds) {
  ModelClient client;
  for (const LogKind kind : kLogKinds) std::ranges::fill(client.surroundings.area(kind), std::byte{0xA5});
  const Telemetry telemetry{client};
  expectAreasWalk(client);
}

TEST(SimulatorLogArea, holds_padded_text_in_every_text_key) {
  ModelClient client;
  const Telemetry telemetry{client};
  for (int step = 0; step < 200; ++step) {
    client.surroundings.clock += 61000;
    client.refresh();
    for (const auto& row : kvRows()) {
      if (row.type != 0) continue;
      const auto text = telemetry.text(row.id);
      ASSERT_FALSE(text.empty()) << row.name;
      ASSERT_TRUE(std::ranges::all_of(text, [](char unit) { return unit >= 0x20 && unit < 0x7F; })) << row.name;
    }
  }
}

TEST(SimulatorLogArea, holds_extreme_values_in_their_places) {
  ModelClient client;
  const Telemetry telemetry{client};
  for (const std::uint32_t key : {31U, 32U, 35U, 36U, 97U, 104U}) overrideKey(client, key, 0xFFFFFFFF);
  overrideKey(client, 27, 0xFFFE7960);
  overrideKey(client, 175, 0xFFFF);
  expectAreasWalk(client);
}

TEST(SimulatorLogArea, both_generations_tell_the_same_platform) {
  ModelClient client;
  const Telemetry telemetry{client};
  for (int step = 0; step < 50; ++step) {
    client.surroundings.clock += 613000;
    client.refresh();
    EXPECT_EQ(telemetry.exNumber(9), telemetry.number(56)) << "displays";
    EXPECT_EQ(telemetry.exNumber(14), telemetry.number(54)) << "mice";
    EXPECT_EQ(telemetry.exNumber(15), telemetry.number(55)) << "keyboards";
    EXPECT_EQ(telemetry.exNumber(16), telemetry.number(57)) << "light";
    EXPECT_EQ(telemetry.exNumber(17), telemetry.number(58)) << "brightness";
    EXPECT_EQ(telemetry.exNumber(23), telemetry.number(25)) << "designed capacity";
    EXPECT_EQ(telemetry.exNumber(24), telemetry.number(26)) << "full capacity";
    EXPECT_EQ(telemetry.exNumber(25), telemetry.number(27)) << "charge rate";
    EXPECT_EQ(telemetry.exNumber(26), telemetry.number(28)) << "charge level";
    EXPECT_EQ(telemetry.exNumber(22), telemetry.text(24) == "AC" ? 0U : 1U) << "power source";
  }
}

}  // namespace
}  // namespace test
