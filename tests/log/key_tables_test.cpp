// SPDX-License-Identifier: Apache-2.0
#include "src/log/key_tables.h"

#include <gtest/gtest.h>

#include <array>

#include "format/telemetry/keys.h"
#include "tests/log/logs.h"
#include "tests/support/results.h"

namespace test {
namespace {

class KeyTable : public ::testing::TestWithParam<KVGeneration> {
 protected:
  /// One more record than any list has.
  const std::uint32_t ample = listedIn(kKeyListing) + 1;

  [[nodiscard]] std::vector<QtfLogKeyInfo> poisonedKeys() const {
    return std::vector<QtfLogKeyInfo>(ample, poisoned<QtfLogKeyInfo>());
  }
  static bool isPoison(const QtfLogKeyInfo& key) { return bytesOf(key) == Bytes(24, kPoison); }

  static vqsStatus copyTo(std::vector<QtfLogKeyInfo>& keys, std::uint32_t& count) {
    return GetParam().metadata(keys.data(), &count);
  }
};

void expectKey(const QtfLogKeyInfo& key, const KeyRow& row) {
  EXPECT_EQ(key.KeyId, row.id);
  EXPECT_EQ(key.ElementType, row.type) << row.name;
  EXPECT_EQ(key.ElementCount, row.count) << row.name;
  EXPECT_EQ(key.Param, row.param) << row.name;
  EXPECT_STREQ(key.Name, row.name.c_str());
}

TEST_P(KeyTable, holds_every_key_in_order) {
  const auto rows = keyRows(GetParam().listing);
  auto keys = poisonedKeys();
  std::uint32_t count = GetParam().keys;
  ASSERT_EQ(copyTo(keys, count), kDone);
  for (std::size_t i = 0; i < rows.size(); ++i) expectKey(keys[i], rows[i]);
}

TEST_P(KeyTable, tells_its_number_of_keys_when_asked_with_0) {
  std::uint32_t count = 0;
  EXPECT_EQ(GetParam().metadata(nullptr, &count), kDone);
  EXPECT_EQ(count, GetParam().keys);
  auto keys = poisonedKeys();
  count = 0;
  EXPECT_EQ(copyTo(keys, count), kDone);
  EXPECT_EQ(count, GetParam().keys);
  EXPECT_TRUE(std::ranges::all_of(keys, isPoison));
}

TEST_P(KeyTable, needs_room_for_all_keys) {
  auto keys = poisonedKeys();
  for (const std::uint32_t room : {1U, GetParam().keys - 1}) {
    std::uint32_t count = room;
    EXPECT_EQ(copyTo(keys, count), kInvalid);
    EXPECT_EQ(count, room);
  }
  EXPECT_TRUE(std::ranges::all_of(keys, isPoison));
}

TEST_P(KeyTable, refuses_a_null_buffer) {
  for (const std::uint32_t room : {1U, GetParam().keys, 0xFFFFFFFFU}) {
    std::uint32_t count = room;
    EXPECT_EQ(GetParam().metadata(nullptr, &count), kInvalid);
    EXPECT_EQ(count, room);
  }
}

TEST_P(KeyTable, copies_no_more_than_its_keys) {
  for (const std::uint32_t room : {GetParam().keys, GetParam().keys + 1, ample, 0xFFFFFFFFU}) {
    auto keys = poisonedKeys();
    std::uint32_t count = room;
    EXPECT_EQ(copyTo(keys, count), kDone);
    EXPECT_FALSE(isPoison(keys[GetParam().keys - 1]));
    EXPECT_TRUE(std::all_of(keys.begin() + GetParam().keys, keys.end(), isPoison));
  }
}

TEST_P(KeyTable, names_are_constants_of_the_library) {
  auto first = poisonedKeys();
  auto second = poisonedKeys();
  std::uint32_t count = ample;
  EXPECT_EQ(copyTo(first, count), kDone);
  count = ample;
  EXPECT_EQ(copyTo(second, count), kDone);
  for (std::uint32_t i = 0; i < GetParam().keys; ++i) EXPECT_EQ(first[i].Name, second[i].Name);
}

TEST_P(KeyTable, allocates_nothing_and_needs_no_driver) {
  auto keys = poisonedKeys();
  const Faults faults;
  std::uint32_t count = ample;
  EXPECT_EQ(copyTo(keys, count), kDone);
  EXPECT_EQ(faults.calls(Fault::kAllocation), 0);
}

INSTANTIATE_TEST_SUITE_P(Of, KeyTable, ::testing::ValuesIn(kvGenerations()), generationName);

TEST(KeyCount, is_228_after_copying_whatever_the_room) {
  ASSERT_EQ(listedIn(kKeyListing), 228U);
  std::vector<QtfLogKeyInfo> keys(228);
  for (const std::uint32_t room : {228U, 229U, 500U, 0xFFFFFFFFU}) {
    std::uint32_t count = room;
    EXPECT_EQ(vqsGetQTFLogKVMetadata_V2(keys.data(), &count), kDone);
    EXPECT_EQ(count, 228U);
  }
}

TEST(KeyCount, is_228_after_copying_50_ex_keys) {
  ASSERT_EQ(listedIn(kExKeyListing), 50U);
  std::vector<QtfLogKeyInfo> keys(50);
  for (const std::uint32_t room : {50U, 51U, 228U, 500U}) {
    std::uint32_t count = room;
    EXPECT_EQ(vqsExGetQTFLogExKVMetadata_V2(keys.data(), &count), kDone);
    EXPECT_EQ(count, 228U);
  }
}

TEST(KeyOrder, keeps_the_two_places_that_are_out_of_order) {
  std::uint32_t count = listedIn(kKeyListing);
  std::vector<QtfLogKeyInfo> keys(count);
  ASSERT_EQ(vqsGetQTFLogKVMetadata_V2(keys.data(), &count), kDone);
  const auto idsFrom = [&](std::size_t first) {
    std::array<std::uint32_t, 9> ids{};
    std::ranges::transform(std::span{keys}.subspan(first, 9), ids.begin(), &QtfLogKeyInfo::KeyId);
    return ids;
  };
  EXPECT_EQ(idsFrom(75), (std::array<std::uint32_t, 9>{76, 78, 79, 80, 81, 82, 83, 77, 84}));
  EXPECT_EQ(idsFrom(148), (std::array<std::uint32_t, 9>{149, 150, 152, 153, 154, 151, 155, 156, 157}));
}

TEST(ValueSizes, hold_0_for_the_end_marker) {
  EXPECT_EQ(vqs::kKVValueSizes[0], 0);
  EXPECT_EQ(vqs::kExKVValueSizes[0], 0);
}

TEST(ValueSizes, are_those_of_the_keys) {
  for (const auto& row : keyRows(kKeyListing))
    EXPECT_EQ(static_cast<std::uint32_t>(vqs::kKVValueSizes[row.id]), row.valueSize) << row.name;
  for (const auto& row : keyRows(kExKeyListing))
    EXPECT_EQ(static_cast<std::uint32_t>(vqs::kExKVValueSizes[row.id]), row.valueSize) << row.name;
}

}  // namespace
}  // namespace test
