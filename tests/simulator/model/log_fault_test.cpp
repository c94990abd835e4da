// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/simulator/model/telemetry_areas.h"

namespace test {
namespace {

using simulator::LogFault;

/// Both key/value areas of a driver with a fault.
struct FaultyAreas {
  Bytes plain;
  Bytes ex;
};

FaultyAreas areasWith(LogFault fault) {
  ModelClient client;
  client.driver().setLogFault(fault);
  startLog(client, 7);
  startLog(client, 10);
  return {bytesOfArea(client.surroundings.area(LogKind::kKeyValue)),
          bytesOfArea(client.surroundings.area(LogKind::kExKeyValue))};
}

/// Follows records to the end of an area, or to a key that there is not; their key ids.
std::vector<std::uint32_t> keysIn(const Bytes& area, const std::vector<KeyRow>& rows) {
  std::vector<std::uint32_t> keys;
  for (std::size_t offset = 0; offset + 4 <= area.size();) {
    keys.push_back(word(area, offset));
    if (keys.back() == 0 || keys.back() > rows.size()) break;
    offset += 4 + rows[keys.back() - 1].valueSize;
  }
  return keys;
}

TEST(SimulatorLogFault, unknown_key_comes_first) {
  const auto areas = areasWith(LogFault::kUnknownKey);
  EXPECT_EQ(word(areas.plain, 0), kvRows().size() + 1);
  EXPECT_EQ(word(areas.ex, 0), exKVRows().size() + 1);
}

TEST(SimulatorLogFault, negative_key_comes_first) {
  const auto areas = areasWith(LogFault::kNegativeKey);
  EXPECT_EQ(word(areas.plain, 0), 0x80000001);
  EXPECT_EQ(word(areas.ex, 0), 0x80000001);
}

TEST(SimulatorLogFault, empty_log_begins_with_its_end) {
  const auto areas = areasWith(LogFault::kEmpty);
  EXPECT_EQ(word(areas.plain, 0), 0);
  EXPECT_EQ(word(areas.ex, 0), 0);
}

TEST(SimulatorLogFault, log_without_an_end_has_valid_keys_to_its_last_byte) {
  const auto areas = areasWith(LogFault::kNoEnd);
  for (const auto& [area, rows] : {std::pair{areas.plain, kvRows()}, std::pair{areas.ex, exKVRows()}}) {
    const auto keys = keysIn(area, rows);
    EXPECT_GT(keys.size(), rows.size()) << "the run repeats";
    for (const std::uint32_t key : keys) {
      EXPECT_GE(key, 1);
      EXPECT_LE(key, rows.size());
    }
    std::size_t length = 0;
    for (const std::uint32_t key : keys) length += 4 + rows[key - 1].valueSize;
    EXPECT_GT(length, area.size()) << "the last record is cut";
  }
}

TEST(SimulatorLogFault, repeated_key_fills_the_area) {
  const auto areas = areasWith(LogFault::kRepeatedKey);
  for (std::size_t offset = 0; offset < 16384; offset += 8) ASSERT_EQ(word(areas.plain, offset), 25) << offset;
  for (std::size_t offset = 0; offset < 4096; offset += 8) ASSERT_EQ(word(areas.ex, offset), 1) << offset;
}

TEST(SimulatorLogFault, version_is_that_of_key_value_logs_only) {
  ModelClient client;
  client.driver().setLogFault(LogFault::kVersion);
  for (const std::uint32_t operation : kStartOperations)
    EXPECT_EQ(word(client.answer(kLog, logRequest(operation), 32), 24), operation < 7 ? 0U : 2U);
}

TEST(SimulatorLogFault, plain_logs_and_their_versions_are_sound_with_any_fault) {
  for (const auto fault : {LogFault::kUnknownKey, LogFault::kNegativeKey, LogFault::kNoEnd, LogFault::kRepeatedKey,
                           LogFault::kEmpty, LogFault::kVersion}) {
    ModelClient client;
    client.driver().setLogFault(fault);
    startLog(client, 0);
    startLog(client, 2);
    EXPECT_EQ(part(bytesOfArea(client.surroundings.area(LogKind::kPlain)), 0, 8), hex("56 51 54 4c  03 00 00 00"));
    EXPECT_EQ(part(bytesOfArea(client.surroundings.area(LogKind::kEx)), 0, 8), hex("56 51 54 4c  04 00 00 00"));
    if (fault != LogFault::kVersion) {
      EXPECT_EQ(word(client.answer(kLog, logRequest(7), 32), 24), 1);
    }
  }
}

TEST(SimulatorLogFault, stays_when_the_areas_are_written_again) {
  ModelClient client;
  client.driver().setLogFault(LogFault::kUnknownKey);
  startLog(client, 7);
  client.surroundings.clock += 5000;
  client.refresh();
  EXPECT_EQ(word(bytesOfArea(client.surroundings.area(LogKind::kKeyValue)), 0), kvRows().size() + 1);
  client.driver().setLogFault(LogFault::kNone);
  client.surroundings.clock += 5000;
  client.refresh();
  EXPECT_EQ(faultOfArea(bytesOfArea(client.surroundings.area(LogKind::kKeyValue)), kvRows()), "");
}

}  // namespace
}  // namespace test
