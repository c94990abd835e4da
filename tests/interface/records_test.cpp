// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstring>

#include <vqs/vqs.h>
#include "tests/support/session_test.h"
#include "tests/support/windows_calls.h"

namespace test {
namespace {

/// The records and constants that stand beside the prototypes, used as a caller uses them.
using Records = SessionTest;

/// A library of file version 3.4.5.6 and product version 7.8.
class LibraryVersion : public ::testing::Test {
 protected:
  LibraryVersion() {
    VS_FIXEDFILEINFO info{};
    info.dwFileVersionMS = 0x00030004;
    info.dwFileVersionLS = 0x00050006;
    info.dwProductVersionMS = 0x00070008;
    host::setFileVersion("VexoQTFServices.dll", info);
  }
  ~LibraryVersion() override { host::removeFileVersion("VexoQTFServices.dll"); }
};

TEST_F(LibraryVersion, has_its_numbers_by_name) {
  auto version = poisoned<VqsVersion>();
  ASSERT_EQ(vqsGetVersion(version.words), VQS_SUCCESS);
  EXPECT_EQ(version.numbers.productMajor, 7U);
  EXPECT_EQ(version.numbers.fileMinor, 4U);
  EXPECT_EQ(version.numbers.fileThird, 5U);
  EXPECT_EQ(version.numbers.fileFourth, 6U);
}

TEST_F(LibraryVersion, has_its_numbers_at_their_places_in_one_word) {
  std::uint32_t version = 0;
  ASSERT_EQ(vqsOVLGetDllVersion(&version), VQS_SUCCESS);
  EXPECT_EQ(version >> VQS_DLL_VERSION_PRODUCT_MAJOR_SHIFT & 0xFF, 7U);
  EXPECT_EQ(version >> VQS_DLL_VERSION_FILE_MINOR_SHIFT & 0xFF, 4U);
  EXPECT_EQ(version >> VQS_DLL_VERSION_FILE_THIRD_SHIFT & 0xFF, 5U);
  EXPECT_EQ(version >> VQS_DLL_VERSION_FILE_FOURTH_SHIFT & 0xFF, 6U);
}

TEST_F(Records, take_both_application_outputs) {
  driver.expectSplit(0x80222068).request(Bytes(12, 0)).reply("00 00 00 00  44 33 22 11  88 77 66 55");
  auto outputs = poisoned<VqsAppOutputs>();
  ASSERT_EQ(vqsGetAppOutput(session, &outputs.valueA, &outputs.valueB), VQS_SUCCESS);
  EXPECT_EQ(bytesOf(outputs), hex("44 33 22 11  88 77 66 55"));
}

TEST_F(Records, take_the_taskbar_icon) {
  driver.expectSplit(0x8022208C).request(Bytes(16, 0)).reply("00 00 00 00 00 00 00 00  44 33 22 11  88 77 66 55");
  auto icon = poisoned<VqsTaskbarIcon>();
  ASSERT_EQ(vqsGetTaskbarIcon(session, &icon.first, &icon.second), VQS_SUCCESS);
  EXPECT_EQ(bytesOf(icon), hex("44 33 22 11  88 77 66 55"));
}

TEST_F(Records, take_the_battery_limits_in_the_order_of_the_answer) {
  driver.expectSplit(0x80222010).request("02 00 00 00  00 00 00 00").reply("22 11  44 33  66 55  88 77");
  auto limits = poisoned<VqsBatteryLimits>();
  ASSERT_EQ(vqsGetBatteryLimits(session, &limits.first, &limits.second, &limits.third, &limits.fourth), VQS_SUCCESS);
  EXPECT_EQ(bytesOf(limits), hex("22 11  44 33  66 55  88 77"));
}

TEST_F(Records, take_the_words_of_a_policy_binary) {
  driver.expectSame(0x80222070).request(Record{24}.u32(0, 2)).replyAt(8, hex("44 33 22 11  88 77 66 55"));
  auto version = poisoned<VqsPolicyBinaryWords>();
  ASSERT_EQ(vqsExGetPolicyBinaryVersion(session, &version.first, &version.second), VQS_SUCCESS);
  EXPECT_EQ(bytesOf(version), hex("44 33 22 11  88 77 66 55"));
}

TEST_F(Records, name_application_inputs) {
  driver.expectSplit(0x80222068).request("01 00 00 00  07 00 00 00  00 00 00 00").answerLength(12);
  EXPECT_EQ(vqsSetAppInput(session, VQS_APP_INPUT_A, 7), VQS_SUCCESS);
  driver.expectSplit(0x80222068).request("02 00 00 00  00 00 00 00  07 00 00 00").answerLength(12);
  EXPECT_EQ(vqsSetAppInput(session, VQS_APP_INPUT_B, 7), VQS_SUCCESS);
}

TEST_F(Records, name_what_sets_an_SE1_flag) {
  driver.expectSame(0x80222094).request("01 00 00 00  00 00 00 00");
  EXPECT_EQ(vqsProgramSE1(session, VQS_SE1_SET, VQS_SE1_CLEAR), VQS_SUCCESS);
}

TEST_F(Records, name_how_many_features_and_events_there_are) {
  VqsFeatureStatus status{};
  driver.expectSplit(0x80222000).request("09 00 00 00").answerLength(8);
  EXPECT_EQ(vqsQueryFeatureStatus(session, VQS_FEATURES - 1, &status), VQS_SUCCESS);
  EXPECT_EQ(vqsQueryFeatureStatus(session, VQS_FEATURES, &status), VQS_INVALID_PARAMETER);
  driver.expectIn(0x80222024).request(Record{16}.u8(0, 1).u32(4, 6).u64(8, 0x1234));
  auto* object = reinterpret_cast<void*>(0x1234);
  EXPECT_EQ(vqsRegisterEvent(session, VQS_EVENTS - 1, object), VQS_SUCCESS);
  EXPECT_EQ(vqsRegisterEvent(session, VQS_EVENTS, object), VQS_INVALID_PARAMETER);
}

TEST_F(Records, name_the_operations_of_tables) {
  VqsStaticSliderTableV4 table{};
  const std::uint8_t operations[] = {VQS_TABLE_READ, VQS_TABLE_SET, VQS_TABLE_READ_2, VQS_TABLE_READ_3,
                                     VQS_TABLE_READ_4};
  for (std::uint8_t number = 0; number < 5; ++number) {
    driver.expectSame(0x80222090).request(Record{16}.u8(0, number));
    EXPECT_EQ(vqsStaticSliderTableControl_V4(session, operations[number], &table), VQS_SUCCESS);
  }
}

TEST_F(Records, name_the_drivers_words) {
  VqsPolicyV0 policy{};
  std::uint32_t driverResult = kPoisonWord;
  driver.expectSame(0x80222034).anyRequest(4000).replyWord(3980, 0);
  EXPECT_EQ(vqsPbAddPolicy(session, &policy, nullptr, &driverResult), VQS_SUCCESS);
  EXPECT_EQ(driverResult, VQS_DRIVER_RESULT_TAKEN);
  driver.expectSame(0x80222034).anyRequest(4000).fails();
  EXPECT_EQ(vqsPbAddPolicy(session, &policy, nullptr, &driverResult), VQS_REQUEST_FAILED);
  EXPECT_EQ(driverResult, VQS_DRIVER_RESULT_REQUEST_FAILED);
}

TEST_F(Records, name_the_room_of_an_OEM_identifier) {
  char oemId[VQS_OEM_ID_SIZE + 1];
  std::memset(oemId, kPoison, sizeof(oemId));
  driver.expectOut(0x8022204C).answerLength(32).reply(Record{6}.text(0, "ABCDEF"));
  EXPECT_EQ(vqsGetOEMID(session, oemId), VQS_SUCCESS);
  EXPECT_STREQ(oemId, "ABCDEF");
  EXPECT_EQ(static_cast<std::uint8_t>(oemId[VQS_OEM_ID_SIZE]), kPoison);
}

TEST_F(Records, name_the_limits_of_a_policy) {
  VqsPolicyV0 policy{};
  policy.conditionCount = 1;
  policy.textCount = 1;
  policy.conditions[0].op = VQS_POLICY_MAX_OPERATOR;
  policy.texts[0].flag = VQS_POLICY_MAX_TEXT_FLAG;
  std::uint32_t driverResult = kPoisonWord;
  driver.expectSame(0x80222034).anyRequest(4000);
  EXPECT_EQ(vqsPbAddPolicy(session, &policy, nullptr, &driverResult), VQS_SUCCESS);
  policy.conditions[0].op = VQS_POLICY_MAX_OPERATOR + 1;
  EXPECT_EQ(vqsPbAddPolicy(session, &policy, nullptr, &driverResult), VQS_REQUEST_FAILED);
}

TEST_F(Records, name_the_wait_without_an_end) {
  auto* never = reinterpret_cast<void*>(0x1234);
  WindowsCalls calls;
  calls.refuse("WaitForSingleObject");
  EXPECT_EQ(vqsWaitTaskbarIcon(session, never, VQS_WAIT_FOREVER), VQS_REQUEST_FAILED);
  EXPECT_EQ(calls.all(), std::vector<std::string>{"WaitForSingleObject(0xffffffff)"});
}

TEST_F(Records, name_the_structure_versions) {
  EXPECT_EQ(vqsPbCheckStructureSupport(session, VQS_STRUCTURE_VERSION_0), VQS_REQUEST_FAILED);
  EXPECT_EQ(vqsPbCheckStructureSupport(session, VQS_STRUCTURE_VERSION_1), VQS_SUCCESS);
  EXPECT_EQ(vqsPbCheckStructureSupport(session, VQS_STRUCTURE_VERSION_2), VQS_SUCCESS);
}

TEST_F(Records, name_kinds_of_value_and_missing_bounds) {
  driver.expectSame(0x80222044).anyRequest(16).fails();
  const QtfConditionInfo* conditions = nullptr;
  std::uint32_t count = 0;
  ASSERT_EQ(vqsPbGetConditions(session, &conditions, &count), VQS_SUCCESS);
  EXPECT_STREQ(conditions[13].Name, "App Detection");
  EXPECT_EQ(conditions[13].Type, VQS_VALUE_APPLICATION);
  EXPECT_STREQ(conditions[45].Name, "Reg key");
  EXPECT_EQ(conditions[45].Type, VQS_VALUE_REGISTRY);
  EXPECT_STREQ(conditions[5].Name, "Socket Power");
  EXPECT_EQ(conditions[5].MaxValue, VQS_VALUE_UNBOUNDED);
}

/// A key/value log of one record, key 25 with the value 0x11223344.
TEST(LogRecordHead, stands_before_the_value_that_an_iterator_tells) {
  const Bytes area = hex("19 00 00 00  44 33 22 11  00 00 00 00");
  ScriptedDriver driver;
  OpenSession session{driver};
  driver.expectSame(0x80222058)
      .request(Record{32}.u32(4, 7))
      .reply(Record{32}.u32(0, 5).u64(8, reinterpret_cast<std::uint64_t>(area.data())).u32(24, 1));
  QtfLogKV* log = nullptr;
  ASSERT_EQ(vqsStartQTFLogKV(session, &log), VQS_SUCCESS);
  QtfLogKVIter* iterator = nullptr;
  ASSERT_EQ(vqsCreateQTFLogKVIter(log, &iterator), VQS_SUCCESS);

  std::uint32_t key = kPoisonWord;
  std::uint64_t address = 0;
  ASSERT_EQ(vqsGetQTFLogKVIterData(iterator, &key, &address), VQS_SUCCESS);
  VqsLogRecordHead head{};
  std::memcpy(&head, reinterpret_cast<const VqsLogRecordHead*>(address) - 1, sizeof(head));
  EXPECT_EQ(head.KeyId, 25U);
  EXPECT_EQ(key, 25U);
  ASSERT_EQ(vqsNextQTFLogKVIter(iterator), VQS_SUCCESS);
  std::memcpy(&head, area.data() + 8, sizeof(head));
  EXPECT_EQ(head.KeyId, VQS_LOG_KEY_END);

  EXPECT_EQ(vqsDestroyQTFLogKVIter(iterator), VQS_SUCCESS);
  driver.expectSame(0x80222058).request(Record{32}.u32(0, 5).u32(4, 8));
  EXPECT_EQ(vqsStopQTFLogKV(session, log), VQS_SUCCESS);
}

TEST(StatusText, says_every_result_in_words) {
  EXPECT_STREQ(vqsStatusText(0), "the operation succeeded");
  EXPECT_STREQ(vqsStatusText(1), "the request failed");
  EXPECT_STREQ(vqsStatusText(2), "an argument was refused");
  EXPECT_STREQ(vqsStatusText(3), "memory ran out");
  EXPECT_STREQ(vqsStatusText(4), "the driver is not loaded");
  EXPECT_STREQ(vqsStatusText(5), "the library does not carry out this operation");
  EXPECT_STREQ(vqsStatusText(6), "the driver's data version is not one that the library accepts");
  EXPECT_STREQ(vqsStatusText(7), "not a result of this library");
  EXPECT_STREQ(vqsStatusText(0xFFFFFFFF), "not a result of this library");
}

TEST(Text, is_a_literal_of_16_bit_units) {
  const VqsChar16 text[] = VQS_TEXT("a\u00E9");
  EXPECT_EQ(bytesOf(text), hex("61 00  E9 00  00 00"));
}

}  // namespace
}  // namespace test
