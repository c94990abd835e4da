// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/simulator/model/settings_view.h"

namespace test {
namespace {

TEST(SimulatorFeature, nothing_is_active_at_first_and_all_but_automatic_mode_are_supported) {
  ModelClient client;
  EXPECT_EQ(client.answer(0x80222000, hex("00 00 00 00"), 8), hex("00 00 00 00  00 00 00 00"));
  for (const std::uint32_t id : {1U, 2U, 3U, 4U, 5U, 6U, 9U})
    EXPECT_EQ(client.answer(0x80222000, Record{4}.u32(0, id), 8), hex("01 00 00 00  00 00 00 00")) << id;
}

TEST(SimulatorFeature, there_is_no_8_and_nothing_beyond_9) {
  ModelClient client;
  for (const std::uint32_t id : {8U, 10U, 11U, 0x100U, 0x10000U, 0x80000000U, 0xFFFFFFFFU})
    EXPECT_EQ(client.outcome(kFeatureStatus, Record{4}.u32(0, id), 8), Outcome::kMalformed) << id;
}

TEST(SimulatorFeature, a_set_table_makes_its_feature_active_and_counts) {
  for (const auto& which : kTables) {
    ModelClient client;
    for (std::uint32_t times = 1; times <= 3; ++times) {
      ASSERT_EQ(client.same(which.code, Record{which.size}.u32(0, 1)).outcome, Outcome::kSuccess);
      for (const auto& other : kTables) {
        const bool isActive = other.feature == which.feature;
        const Record expected =
            Record{8}.u8(0, other.feature == 0 ? 0 : 1).u8(1, isActive ? 1 : 0).u32(4, isActive ? times : 0);
        EXPECT_EQ(featureStatus(client, other.feature), expected.bytes());
      }
    }
  }
}

TEST(SimulatorFeature, reading_a_table_counts_nothing) {
  ModelClient client;
  for (const auto& which : kTables) {
    for (const std::uint32_t operation : {0U, 2U, 3U, 4U}) table(client, which, operation);
    EXPECT_EQ(part(featureStatus(client, which.feature), 1, 7), Bytes(7));
  }
}

TEST(SimulatorFeature, stores_count_their_policies) {
  constexpr std::uint32_t kIds[] = {6, 7, 9};
  ModelClient client;
  for (std::size_t store = 0; store < 3; ++store) {
    for (std::uint32_t count = 1; count <= 3; ++count) {
      ASSERT_EQ(client.add(kModifyCodes[store], simplePolicy(count)), 0);
      EXPECT_EQ(featureStatus(client, kIds[store]), Record{8}.u8(0, 1).u8(1, 1).u32(4, count).bytes());
    }
    ASSERT_EQ(client.remove(kModifyCodes[store], 2), 0);
    EXPECT_EQ(featureStatus(client, kIds[store]), hex("01 01 00 00  02 00 00 00"));
    for (std::size_t later = store + 1; later < 3; ++later)
      EXPECT_EQ(part(featureStatus(client, kIds[later]), 1, 7), Bytes(7));
  }
  for (std::size_t store = 0; store < 3; ++store) {
    ASSERT_EQ(client.same(kModifyCodes[store], modifyRequest(3)).outcome, Outcome::kSuccess);
    EXPECT_EQ(featureStatus(client, kIds[store]), hex("01 00 00 00  00 00 00 00"));
  }
}

TEST(SimulatorFeature, lengths_are_exact) {
  ModelClient client;
  for (const std::uint32_t id : kFeatures) expectOnlyLengths(client, kFeatureStatus, Record{4}.u32(0, id), 8);
}

}  // namespace
}  // namespace test
