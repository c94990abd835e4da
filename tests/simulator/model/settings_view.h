// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/simulator/model/telemetry_areas.h"

namespace test {

inline constexpr std::uint32_t kFeatureStatus = 0x80222000;
inline constexpr std::uint32_t kBattery = 0x80222010;
inline constexpr std::uint32_t kDynamicSlider = 0x80222020;
inline constexpr std::uint32_t kEventRegistration = 0x80222024;
inline constexpr std::uint32_t kFirmwareEvent = 0x80222028;
inline constexpr std::uint32_t kFirmwareEventV2 = 0x8022202C;
inline constexpr std::uint32_t kCatalogue = 0x80222044;
inline constexpr std::uint32_t kOemId = 0x8022204C;
inline constexpr std::uint32_t kLogSupport = 0x8022205C;
inline constexpr std::uint32_t kOverride = 0x80222060;
inline constexpr std::uint32_t kTaControl = 0x8022206C;
inline constexpr std::uint32_t kPolicyBinary = 0x80222070;
inline constexpr std::uint32_t kPolling = 0x8022207C;
inline constexpr std::uint32_t kSensorUpdate = 0x80222080;
inline constexpr std::uint32_t kSensorData = 0x80222084;
inline constexpr std::uint32_t kDebugOutput = 0x80222088;
inline constexpr std::uint32_t kTaskbarIcon = 0x8022208C;
inline constexpr std::uint32_t kSe1 = 0x80222094;
inline constexpr std::uint32_t kOverrideValue = 0x80222098;
inline constexpr std::uint32_t kOverrideKeysSize = 0x8022209C;
inline constexpr std::uint32_t kOverrideKeys = 0x802220A0;
inline constexpr std::uint32_t kOverrideMetadata = 0x802220A4;

struct TableCode {
  std::uint32_t code;
  std::size_t size;
  std::uint32_t feature;
};
inline constexpr TableCode kTables[] = {
    {0x8022200C, 196, 0}, {0x80222014, 80, 1}, {0x80222018, 404, 2}, {0x8022201C, 420, 3}, {0x80222090, 16, 4}};

inline constexpr std::uint32_t kFeatures[] = {0, 1, 2, 3, 4, 5, 6, 7, 9};

inline constexpr std::uint32_t kOverridable[] = {2,  4,  5,  24, 27, 28, 31,  32,  35,  36,  52,  54,  55,  56,
                                                 57, 58, 85, 97, 98, 99, 100, 101, 102, 103, 104, 126, 175, 185};

inline Record overrideRequest(std::uint32_t key, std::uint32_t value, std::uint8_t enable = 1) {
  return Record{12}.u8(0, enable).u32(4, key).u32(8, value);
}
inline void overrideKey(ModelClient& client, std::uint32_t key, std::uint32_t value) {
  EXPECT_EQ(client.outcome(kOverride, overrideRequest(key, value)), Outcome::kSuccess) << key;
}
inline void liftOverride(ModelClient& client, std::uint32_t key) {
  EXPECT_EQ(client.outcome(kOverride, overrideRequest(key, 0, 0)), Outcome::kSuccess) << key;
}
/// A key's value in force.
inline std::uint32_t inForce(ModelClient& client, std::uint32_t key) {
  return word(client.answer(kOverrideValue, Record{4}.u32(0, key), 8), 0);
}

inline Bytes featureStatus(ModelClient& client, std::uint32_t id) {
  return client.answer(kFeatureStatus, Record{4}.u32(0, id), 8);
}
inline Bytes table(ModelClient& client, const TableCode& which, std::uint32_t operation) {
  return client.answer(which.code, Record{which.size}.u32(0, operation), which.size);
}
inline Bytes binaryVersion(ModelClient& client) {
  return part(client.answer(kPolicyBinary, Record{24}.u32(0, 2), 24), 8, 8);
}
inline Bytes sensorData(ModelClient& client) { return client.answer(kSensorData, {}, 64); }
inline Bytes taskbarIcon(ModelClient& client) { return client.answer(kTaskbarIcon, Bytes(16), 16); }

/// Everything that can be read of the settings, one answer behind the other; reading changes nothing.
inline Bytes settingsOf(ModelClient& client) {
  Bytes all;
  const auto append = [&all](const Bytes& answer) { all.insert(all.end(), answer.begin(), answer.end()); };
  for (const std::uint32_t id : kFeatures) append(featureStatus(client, id));
  for (const auto& which : kTables)
    for (const std::uint32_t operation : {0U, 3U}) append(table(client, which, operation));
  for (const std::uint32_t key : kOverridable) append(client.answer(kOverrideValue, Record{4}.u32(0, key), 8));
  append(sensorData(client));
  append(binaryVersion(client));
  append(taskbarIcon(client));
  append(client.answer(kBattery, Record{8}.u32(0, 1), 4));
  append(client.answer(kDebugOutput, {}, 4));
  return all;
}

}  // namespace test
