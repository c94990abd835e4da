// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <future>
#include <string_view>
#include <utility>

#include "tests/journey/telemetry_client.h"
#include "tests/support/bytes.h"
#include "tests/support/listings.h"
#include "tests/support/results.h"
#include "tests/support/temporary_folder.h"

namespace test {
namespace {

/// A table whose bytes are all different from their neighbours', so that a misplaced field shows.
template <class Table>
Table patterned(std::uint8_t first) {
  Table table;
  auto* bytes = reinterpret_cast<std::uint8_t*>(&table);
  for (std::size_t i = 0; i < sizeof(Table); ++i) bytes[i] = static_cast<std::uint8_t>(first + i * 7);
  return table;
}

template <class Table>
bool isSame(const Table& left, const Table& right) {
  return bytesOf(left) == bytesOf(right);
}

TEST(PlatformRoad, outputs_follow_the_inputs_and_the_event_tells) {
  const OpenedSession session;
  std::uint32_t a = 0;
  std::uint32_t b = 0;
  ASSERT_EQ(vqsSetAppInputs(session, 1, 2), kDone);
  ASSERT_EQ(vqsGetAppOutput(session, &a, &b), kDone);
  EXPECT_EQ(vqsWaitAppOutput(session, 0), kFailed) << "nothing has changed since the outputs were read";
  auto waiting = std::async(std::launch::async, [&] { return vqsExWaitAppOutput(session, 10000); });
  const OpenedSession other;
  ASSERT_EQ(vqsSetAppInput(other, 1, 30), kDone);
  EXPECT_EQ(waiting.get(), kDone);
  ASSERT_EQ(vqsExGetAppOutput(session, &a, &b), kDone);
  EXPECT_EQ(a, 30U);
  EXPECT_EQ(b, 2U);
  ASSERT_EQ(vqsExSetAppInput(session, 2, 31), kDone);
  EXPECT_EQ(vqsWaitAppOutput(session, 0), kDone);
  ASSERT_EQ(vqsGetAppOutput(session, &a, &b), kDone);
  EXPECT_EQ(b, 31U);
  EXPECT_EQ(vqsWaitAppOutput(session, 0), kFailed);
}

TEST(PlatformRoad, the_catalogues_say_what_the_platform_supports) {
  const OpenedSession session;
  const QtfConditionInfo* conditions = nullptr;
  const QtfActionInfo* actions = nullptr;
  std::uint32_t count = 0;
  ASSERT_EQ(vqsPbGetConditions(session, &conditions, &count), kDone);
  ASSERT_EQ(count, listedIn(kConditionListing));
  EXPECT_EQ(std::string_view{conditions[0].Name}, "Power Source");
  EXPECT_EQ(conditions[0].Enabled, 1U);
  EXPECT_EQ(conditions[9].Enabled, 0U);
  EXPECT_EQ(conditions[16].Enabled, 1U) << "the driver says more than the catalogue";
  EXPECT_EQ(conditions[33].DriverFlag, 0U);
  ASSERT_EQ(vqsPbGetActions(session, &actions, &count), kDone);
  ASSERT_EQ(count, listedIn(kActionListing));
  EXPECT_EQ(actions[13].Enabled, 0U);
  EXPECT_EQ(actions[19].Enabled, 1U);
  EXPECT_EQ(actions[26].DriverFlag, 0U);
  EXPECT_EQ(actions[27].DriverFlag, 1U);
}

TEST(PlatformRoad, tables_come_back_as_they_were_set) {
  const OpenedSession session;
  auto automatic = patterned<VqsAutoModeTable>(1);
  const auto automaticBefore = automatic;
  ASSERT_EQ(vqsItsAutoModeTableControl(session, 1, &automatic), kDone);
  VqsAutoModeTable automaticRead{};
  ASSERT_EQ(vqsItsAutoModeTableControl(session, 0, &automaticRead), kDone);
  EXPECT_TRUE(isSame(automaticRead, automaticBefore));

  auto newest = patterned<VqsStaticSliderTableV4>(2);
  ASSERT_EQ(vqsStaticSliderTableControl_V4(session, 1, &newest), kDone);
  VqsStaticSliderTableV4 newestRead{};
  ASSERT_EQ(vqsStaticSliderTableControl_V4(session, 4, &newestRead), kDone);
  EXPECT_TRUE(isSame(newestRead, newest));
  ASSERT_EQ(vqsStaticSliderTableControl_V4(session, 2, &newestRead), kDone);
  EXPECT_TRUE(isSame(newestRead, VqsStaticSliderTableV4{})) << "the built-in table is zero";

  auto slider = patterned<VqsStaticSliderTableV2>(3);
  ASSERT_EQ(vqsStaticSliderTableControl_V2(session, 1, &slider), kDone);
  VqsStaticSliderTableV2 sliderRead{};
  ASSERT_EQ(vqsStaticSliderTableControl_V2(session, 0, &sliderRead), kDone);
  EXPECT_TRUE(isSame(sliderRead, slider));
}

TEST(PlatformRoad, both_forms_of_the_static_slider_are_one_table) {
  const OpenedSession session;
  VqsStaticSliderTableV1 first{};
  first.rows[1] = {
      .word0 = 10, .byte0 = 20, .reserved0 = {}, .word1 = 30, .word2 = 40, .byte1 = 50, .reserved1 = {}, .word3 = 60};
  ASSERT_EQ(vqsStaticSliderTableControl_V1(session, 1, &first), kDone);
  VqsStaticSliderTableV2 second{};
  ASSERT_EQ(vqsStaticSliderTableControl_V2(session, 0, &second), kDone);
  EXPECT_EQ(second.entries[2].value, 20U | std::uint64_t{30} << 32);
  EXPECT_EQ(second.entries[3].value, 50U | std::uint64_t{60} << 32);
  VqsStaticSliderTableV1 again{};
  ASSERT_EQ(vqsStaticSliderTableControl_V1(session, 0, &again), kDone);
  EXPECT_EQ(again.rows[1].word0, 10U);
  EXPECT_EQ(again.rows[1].word2, 40U);
}

TEST(PlatformRoad, an_in_bag_set_takes_three_words_and_clears_the_rest) {
  const OpenedSession session;
  auto table = patterned<VqsInBagTable>(4);
  const std::uint32_t words[] = {table.word0, table.word1, table.word2};
  ASSERT_EQ(vqsInBagPolicyTableControl(session, 1, &table), kDone);
  EXPECT_EQ(table.value, 0U);
  auto read = patterned<VqsInBagTable>(5);
  ASSERT_EQ(vqsInBagPolicyTableControl(session, 0, &read), kDone);
  EXPECT_EQ(read.word0, words[0]);
  EXPECT_EQ(read.word1, words[1]);
  EXPECT_EQ(read.word2, words[2]);
  EXPECT_TRUE(isSame(read.points[1], VqsSliderPoint{}));
}

TEST(PlatformRoad, asm_lite_moves_its_groups_alone) {
  const OpenedSession session;
  auto table = patterned<VqsAsmLiteTable>(6);
  ASSERT_EQ(vqsAsmLiteTableControl(session, 1, &table), kDone);
  auto read = patterned<VqsAsmLiteTable>(99);
  const auto before = read;
  ASSERT_EQ(vqsAsmLiteTableControl(session, 0, &read), kDone);
  for (int i = 0; i < 4; ++i) {
    EXPECT_TRUE(isSame(read.setA[i].words, table.setA[i].words));
    EXPECT_EQ(read.setB[i].byte0, table.setB[i].byte0);
    EXPECT_EQ(read.setB[i].word7, table.setB[i].word7);
  }
  EXPECT_TRUE(isSame(read.reserved0, before.reserved0));
  EXPECT_TRUE(isSame(read.reserved1, before.reserved1));
}

TEST(PlatformRoad, features_are_active_once_they_are_used) {
  const OpenedSession session;
  VqsFeatureStatus status{};
  ASSERT_EQ(vqsDynamicSliderEnableDisable(session, 1), kDone);
  ASSERT_EQ(vqsQueryFeatureStatus(session, 5, &status), kDone);
  EXPECT_EQ(status.flagA, 1);
  EXPECT_EQ(status.flagB, 1);
  ASSERT_EQ(vqsDynamicSliderEnableDisable(session, 0), kDone);
  ASSERT_EQ(vqsQueryFeatureStatus(session, 5, &status), kDone);
  EXPECT_EQ(status.flagB, 0);
  ASSERT_EQ(vqsBalanceProfileReset(session), kDone);
  ASSERT_EQ(vqsQueryFeatureStatus(session, 8, &status), kDone) << "the driver's feature 9";
  EXPECT_EQ(status.value, 0U);
}

TEST(PlatformRoad, override_keys_describe_themselves) {
  const OpenedSession session;
  std::uint32_t size = 0;
  ASSERT_EQ(vqsGetInputOverrideKeyList(session, nullptr, &size, 1), kDone);
  ASSERT_EQ(size, 112U);
  std::vector<std::uint32_t> keys(size / 4);
  ASSERT_EQ(vqsGetInputOverrideKeyList(session, keys.data(), nullptr, 0), kDone);
  EXPECT_EQ(keys.front(), 2U);
  EXPECT_EQ(keys.back(), 185U);
  VqsOverrideMetadata metadata = poisoned<VqsOverrideMetadata>();
  ASSERT_EQ(vqsGetInputOverrideKeyMetadata(session, 58, &metadata), kDone);
  EXPECT_EQ(std::string_view{reinterpret_cast<const char*>(metadata.data + 16)}, "DisplayBrightness");
  VqsOverrideValue value{};
  {
    const Override brightness{session, 58, 33};
    ASSERT_EQ(vqsGetInputOverrideKeyValue(session, 58, &value), kDone);
    EXPECT_EQ(difference(bytesOf(value), hex("21 00 00 00  01 00 00 00")), "");
    EXPECT_EQ(vqsOverrideInput(session, 58, 1, 101), kFailed) << "it is a percentage";
  }
  ASSERT_EQ(vqsGetInputOverrideKeyValue(session, 58, &value), kDone);
  EXPECT_EQ(difference(bytesOf(value), hex("46 00 00 00  00 00 00 00")), "");
}

TEST(PlatformRoad, the_battery_answers_without_a_session) {
  std::uint32_t temperature = 0;
  ASSERT_EQ(vqsGetBatteryTemperature(&temperature), kDone);
  EXPECT_GT(temperature, 1500U);
  EXPECT_LT(temperature, 6000U);
  const OpenedSession session;
  const Override mains{session, 24, 0};
  const Override notFull{session, 28, 50};
  Log log{session, kKeyValue};
  ASSERT_EQ(vqsSetChargeRate(20000), kDone);
  EXPECT_EQ(log.value<std::int32_t>(27), 20000);
  ASSERT_EQ(vqsSetChargeRate(45000), kDone);
  EXPECT_EQ(vqsSetChargeRate(100001), kFailed);
  std::uint16_t limits[4] = {};
  ASSERT_EQ(vqsGetBatteryLimits(session, &limits[0], &limits[1], &limits[2], &limits[3]), kDone);
  EXPECT_EQ(std::vector<std::uint16_t>(limits, limits + 4), (std::vector<std::uint16_t>{20, 80, 0, 45}));
}

TEST(PlatformRoad, small_controls_are_answered) {
  const OpenedSession session;
  char oemId[7] = {};
  ASSERT_EQ(vqsGetOEMID(session, oemId), kDone);
  EXPECT_STREQ(oemId, "VEXO01");
  const Override mains{session, 24, 0};
  const Override mode{session, 52, 3};
  std::uint32_t shape = kPoisonWord;
  std::uint32_t colour = kPoisonWord;
  ASSERT_EQ(vqsGetTaskbarIcon(session, &shape, &colour), kDone);
  EXPECT_EQ(shape, 0U);
  EXPECT_EQ(colour, 3U);
  std::uint32_t seconds = kPoisonWord;
  ASSERT_EQ(vqsGetDebugOutput(session, &seconds), kDone);
  EXPECT_NE(seconds, kPoisonWord);
  EXPECT_EQ(vqsProgramSE1(session, 1, 0), kDone);
  EXPECT_EQ(vqsExProgramSE1(session, 2, 1), kDone);
  EXPECT_EQ(vqsControlPolling(session, 1, 250), kDone);
  EXPECT_EQ(vqsExControlPolling(session, 0, 0), kDone);
  EXPECT_EQ(vqsTAControl(session, 77, 1), kDone);
  Log log{session, kKeyValue};
  EXPECT_EQ(log.value<std::int32_t>(75), 77);
  EXPECT_EQ(vqsTAControl(session, 0, 0), kDone);
}

TEST(PlatformRoad, firmware_events_are_counted) {
  const OpenedSession session;
  Log log{session, kExKeyValue};
  const auto first = log.value<std::uint32_t>(20, 0);
  const auto second = log.value<std::uint32_t>(20, 1);
  ASSERT_EQ(vqsAtstNotifyBiosEvent(session), kDone);
  ASSERT_EQ(vqSetBiosAMTEvent(session), kDone);
  ASSERT_EQ(vqSetBiosCQLEvent(session), kDone);
  ASSERT_EQ(vqsAtstNotifyBiosEventV2(session), kDone);
  EXPECT_EQ(log.value<std::uint32_t>(20, 0), first + 3);
  EXPECT_EQ(log.value<std::uint32_t>(20, 1), second + 1);
}

TEST(PlatformRoad, a_dynamic_policy_is_gone_through_and_its_version_told) {
  const OpenedSession session;
  const auto file = sample("laptop-r5.bin");
  std::uint32_t first = kPoisonWord;
  std::uint32_t second = kPoisonWord;
  ASSERT_EQ(vqsExLoadDynamicPolicy(session, file.size(), file.data(), &first, &second), kDone);
  EXPECT_EQ(first, 0U);
  EXPECT_EQ(second, 16U) << "policies";
  ASSERT_EQ(vqsExGetPolicyBinaryVersion(session, &first, &second), kDone);
  EXPECT_EQ(first, 3U);
  EXPECT_EQ(second, 41U);
  ASSERT_EQ(vqsExLoadDynamicPolicy(session, file.size() - 60, file.data(), &first, &second), kDone);
  EXPECT_EQ(first, 2U) << "it is cut short";
  ASSERT_EQ(vqsExGetPolicyBinaryVersion(session, &first, &second), kDone);
  EXPECT_EQ(second, 41U) << "the one before is still in force";
  ASSERT_EQ(vqsExClearDynamicPolicy(session), kDone);
  ASSERT_EQ(vqsExGetPolicyBinaryVersion(session, &first, &second), kDone);
  EXPECT_EQ(first, 1U);
  EXPECT_EQ(second, 0U);
}

TEST(PlatformRoad, memory_that_cannot_be_read_is_no_policy) {
  const OpenedSession session;
  std::uint32_t first = 0;
  std::uint32_t second = 0;
  for (const std::uint64_t wild : {std::uint64_t{8}, std::uint64_t{0x7FFFFFFF0000}, std::uint64_t{0xFFFFF80000000000}})
    EXPECT_EQ(vqsExLoadDynamicPolicy(session, 4096, reinterpret_cast<const void*>(wild), &first, &second), kFailed)
        << wild;
  ASSERT_EQ(vqsExGetPolicyBinaryVersion(session, &first, &second), kDone) << "the driver is up";
}

TEST(PlatformRoad, the_disk_binary_is_what_the_asm_store_holds) {
  const OpenedSession session;
  std::uint32_t first = kPoisonWord;
  std::uint32_t second = kPoisonWord;
  ASSERT_EQ(vqsAsmReset(session), kDone);
  ASSERT_EQ(vqsExLoadDiskBinary(session, &first, &second), kDone);
  EXPECT_EQ(first, 3U) << "there is none";
  VqsPolicyV0 policy{};
  std::strcpy(policy.name, "only");
  policy.id = 5;
  policy.conditionCount = 1;
  policy.conditions[0] = {0, 2, 1, 0};
  std::uint32_t verdict = kPoisonWord;
  ASSERT_EQ(vqsAsmAddPolicy(session, &policy, nullptr, &verdict), kDone);
  ASSERT_EQ(vqsSetBinaryVersion(session, 7, 8, &verdict, VQS_POLICY_STORE_ASM), kDone);
  ASSERT_EQ(vqsExLoadDiskBinary(session, &first, &second), kDone);
  EXPECT_EQ(first, 0U);
  EXPECT_EQ(second, 1U);
  ASSERT_EQ(vqsExGetPolicyBinaryVersion(session, &first, &second), kDone);
  EXPECT_EQ(first, 7U);
  EXPECT_EQ(second, 8U);
  ASSERT_EQ(vqsExLoadStaticBinary(session, &first, &second), kDone);
  EXPECT_EQ(first, 0U);
  ASSERT_EQ(vqsAsmReset(session), kDone);
}

}  // namespace
}  // namespace test
