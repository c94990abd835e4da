// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <string_view>

#include "tests/journey/telemetry_client.h"
#include "tests/support/bytes.h"
#include "tests/support/listings.h"
#include "tests/support/results.h"

namespace test {
namespace {

constexpr std::uint32_t kPowerSource = 24;
constexpr std::uint32_t kChargeLevel = 28;
constexpr std::uint32_t kAppInput1 = 31;
constexpr std::uint32_t kSeconds = 191;
constexpr std::uint32_t kApuPower = 185;
constexpr std::uint32_t kExApuPower = 43;

std::uint32_t plainWord(std::uint64_t log, std::size_t index) {
  std::uint32_t word = 0;
  std::memcpy(&word, reinterpret_cast<const char*>(log) + 4 * index, 4);
  return word;
}

TEST(TelemetryRoad, a_walk_meets_every_key_once) {
  const OpenedSession session;
  for (const auto* generation : {&kKeyValue, &kExKeyValue}) {
    Log log{session, *generation};
    const auto places = log.walk();
    EXPECT_EQ(places.size(), generation->keys);
    EXPECT_EQ(places.begin()->first, 1U);
    EXPECT_EQ(places.rbegin()->first, generation->keys);
  }
}

TEST(TelemetryRoad, keys_have_their_names_and_values) {
  const OpenedSession session;
  ASSERT_EQ(vqsPbReset(session), kDone);
  std::uint32_t count = listedIn(kKeyListing);
  std::vector<QtfLogKeyInfo> keys(count);
  ASSERT_EQ(vqsGetQTFLogKVMetadata_V2(keys.data(), &count), kDone);
  EXPECT_EQ(std::string_view{keys[24].Name}, "DesignedBatteryCapacity");
  EXPECT_EQ(keys[24].KeyId, 25U);
  Log log{session, kKeyValue};
  EXPECT_EQ(log.value<std::uint32_t>(25), 60000U);
  EXPECT_EQ(log.text(1), "Active");
  EXPECT_EQ(log.value<std::int32_t>(29, 99), -1) << "the last of a hundred elements";
  EXPECT_EQ(log.value<std::uint16_t>(171), 15000) << "a value of two bytes";
}

TEST(TelemetryRoad, an_override_is_seen_and_ends) {
  const OpenedSession session;
  Log log{session, kKeyValue};
  {
    const Override mains{session, kPowerSource, 0};
    EXPECT_EQ(log.text(kPowerSource), "AC");
    const Override level{session, kChargeLevel, 7};
    EXPECT_EQ(log.value<std::uint32_t>(kChargeLevel), 7U);
    const Override power{session, kApuPower, 12345};
    EXPECT_EQ(log.value<std::uint32_t>(kApuPower), 12345U);
  }
  EXPECT_NE(log.value<std::uint32_t>(kChargeLevel), 7U);
  const Override battery{session, kPowerSource, 1};
  EXPECT_EQ(log.text(kPowerSource), "DC");
}

TEST(TelemetryRoad, both_generations_show_one_platform) {
  const OpenedSession session;
  const OpenedSession other;
  Log log{session, kKeyValue};
  Log exLog{other, kExKeyValue};
  const Override power{session, kApuPower, 5432};
  EXPECT_EQ(log.value<std::uint32_t>(kApuPower), 5432U);
  EXPECT_EQ(exLog.value<std::uint32_t>(kExApuPower), 5432U);
}

TEST(TelemetryRoad, the_driver_keeps_a_running_log_up_to_date) {
  const OpenedSession session;
  Log log{session, kKeyValue};
  const auto before = log.value<std::uint32_t>(kSeconds);
  EXPECT_TRUE(eventually([&] { return log.value<std::uint32_t>(kSeconds) > before; }))
      << "no request is made, so the driver does it by itself";
}

TEST(TelemetryRoad, plain_and_ex_logs_are_mapped) {
  const OpenedSession session;
  const Override power{session, kApuPower, 777};
  std::uint64_t address = 0;
  ASSERT_EQ(vqsStartQTFLog(session, &address), kDone);
  EXPECT_EQ(std::memcmp(reinterpret_cast<const void*>(address), "VQTL", 4), 0);
  EXPECT_EQ(plainWord(address, 1), 3U);
  EXPECT_EQ(plainWord(address, 9), 777U);
  EXPECT_EQ(vqsStopQTFLog(session), kDone);
  EXPECT_EQ(vqsStopQTFLog(session), kInvalid) << "none is running";

  std::uint32_t version = kPoisonWord;
  ASSERT_EQ(vqsExStartQTFLog(session, &address, &version), kDone);
  EXPECT_EQ(version, 4U);
  EXPECT_EQ(plainWord(address, 9), 777U);
  EXPECT_EQ(vqsExStopQTFLog(session), kDone);
}

TEST(TelemetryRoad, log_support_is_answered_in_the_callers_length) {
  const OpenedSession session;
  const std::uint32_t keys = listedIn(kKeyListing);
  std::uint32_t answer[5] = {kPoisonWord, kPoisonWord, kPoisonWord, kPoisonWord, kPoisonWord};
  ASSERT_EQ(vqsGetQTFLogSupport(session, answer, 16), kDone);
  EXPECT_EQ(std::vector<std::uint32_t>(answer, answer + 5),
            (std::vector<std::uint32_t>{1, 3, 4096, keys, kPoisonWord}));
  ASSERT_EQ(vqsExQTFLogSupport(session, answer, 8), kDone);
  EXPECT_EQ(std::vector<std::uint32_t>(answer, answer + 4), (std::vector<std::uint32_t>{1, 4, 4096, keys}));
  EXPECT_EQ(vqsGetQTFLogSupport(session, answer, 3), kFailed);
}

TEST(TelemetryRoad, versions_are_told) {
  const OpenedSession session;
  std::uint32_t version = 0;
  ASSERT_EQ(vqsGetQTFLogVersion(session, &version), kDone);
  EXPECT_EQ(version, 3U);
  ASSERT_EQ(vqsOVLGetQTFLogVersion(&version), kDone);
  EXPECT_EQ(version, 3U);
  ASSERT_EQ(vqsOVLGetInterfaceVersion(&version), kDone);
  EXPECT_EQ(version, 5U);
  version = 0;
  ASSERT_EQ(vqsOVLGetDllVersion(&version), kDone);
  EXPECT_EQ(version, 0x00010000U);
}

TEST(TelemetryRoad, a_log_is_mapped_without_a_session) {
  const OpenedSession session;
  const Override power{session, kApuPower, 999};
  std::uint64_t address = 0;
  std::uint32_t id = 0;
  ASSERT_EQ(vqsOVLStartQTFLog(&address, &id), kDone);
  ASSERT_EQ(vqsOVLMapQTFLogAddress(&address, &id), kDone);
  EXPECT_EQ(plainWord(address, 9), 999U);
  EXPECT_EQ(vqsOVLForceDataUpdate(), kDone);
  EXPECT_EQ(vqsOVLUnmapQTFLogId(id), kDone);
  EXPECT_EQ(vqsOVLUnmapQTFLogId(id), kFailed) << "it is gone";
  EXPECT_EQ(vqsOVLStopQTFLog(), kDone);
}

TEST(TelemetryRoad, a_session_closes_with_its_log_running) {
  QtfSession* session = nullptr;
  QtfLogKV* log = nullptr;
  ASSERT_EQ(vqsInitialize(&session), kDone);
  ASSERT_EQ(vqsStartQTFLogKV(session, &log), kDone);
  // The session's end does not free the log's handle.
  QtfLogKVIter* iterator = nullptr;
  ASSERT_EQ(vqsCreateQTFLogKVIter(log, &iterator), kDone);
  EXPECT_EQ(vqsDestroyQTFLogKVIter(iterator), kDone);
  ASSERT_EQ(vqsStopQTFLogKV(session, log), kDone);
  std::uint64_t address = 0;
  ASSERT_EQ(vqsExStartQTFLog(session, &address, nullptr), kDone);
  EXPECT_EQ(vqsUninitialize(session), kDone);
}

TEST(TelemetryRoad, inputs_stand_in_the_telemetry) {
  const OpenedSession session;
  Log log{session, kKeyValue};
  ASSERT_EQ(vqsSetAppInputs(session, 1001, 1002), kDone);
  EXPECT_EQ(log.value<std::uint32_t>(kAppInput1), 1001U);
  EXPECT_EQ(log.value<std::uint32_t>(kAppInput1 + 1), 1002U);
  ASSERT_EQ(vqsSetAppInputs(session, 0, 0), kDone);
}

TEST(TelemetryRoad, simulated_sensors_stand_in_the_telemetry) {
  const OpenedSession session;
  Log log{session, kKeyValue};
  VqsSensorUpdate update{};
  const auto bytes = hex("02 00 00 00  5a 00 00 00  07 00 00 00  09 00 00 00");
  std::memcpy(update.data, bytes.data(), 16);
  ASSERT_EQ(vqsAtstSimulateSensorUpdate(session, &update), kDone);
  VqsSensorData data = poisoned<VqsSensorData>();
  ASSERT_EQ(vqsGetSensorData(session, &data), kDone);
  EXPECT_EQ(
      difference(Bytes(data.data + 32, data.data + 48), hex("01 00 00 00  5a 00 00 00  07 00 00 00  09 00 00 00")), "");
  EXPECT_EQ(log.value<std::uint32_t>(50, 2), 9U);
  EXPECT_EQ(log.value<std::uint16_t>(47, 2), 1U);
}

}  // namespace
}  // namespace test
