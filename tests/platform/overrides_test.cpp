// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <array>

#include <vqs/platform.h>
#include "tests/support/results.h"
#include "tests/support/session_test.h"
#include "tests/support/windows_calls.h"
#include "tests/support/witness_device.h"

namespace test {
namespace {

class OverrideInput : public FrugalSessionTest {
 protected:
  Exchange& expectInput(std::string_view request, std::source_location where = std::source_location::current()) {
    return driver.expectIn(0x80222060, where).withoutCount().request(request);
  }
};

TEST_F(OverrideInput, sends_flag_key_and_value_without_a_bytes_returned_variable) {
  expectInput("01 00 00 00  44 33 22 11  88 77 66 F5");
  EXPECT_EQ(vqsOverrideInput(session, 0x11223344, 1, 0xF5667788), kDone);
}

TEST_F(OverrideInput, lifts_an_override_with_flag_0) {
  expectInput("00 00 00 00  01 00 00 00  02 00 00 00");
  EXPECT_EQ(vqsOverrideInput(session, 1, 0, 2), kDone);
}

TEST_F(OverrideInput, sends_the_flag_as_it_is) {
  expectInput("FE 00 00 00  00 00 00 00  FF FF FF FF");
  EXPECT_EQ(vqsOverrideInput(session, 0, 0xFE, 0xFFFFFFFF), kDone);
}

TEST_F(OverrideInput, fails_with_its_request) {
  expectInput("01 00 00 00  01 00 00 00  02 00 00 00").fails();
  EXPECT_EQ(vqsOverrideInput(session, 1, 1, 2), kFailed);
}

TEST_F(OverrideInput, needs_an_open_session) {
  EXPECT_EQ(vqsOverrideInput(nullptr, 1, 1, 2), kInvalid);
  EXPECT_EQ(vqsOverrideInput(&closed, 1, 1, 2), kInvalid);
}

class KeyValue : public FrugalSessionTest {
 protected:
  Exchange& expectKey(std::string_view key, std::source_location where = std::source_location::current()) {
    return driver.expectSplit(0x80222098, where).request(key).answerLength(8);
  }

  VqsOverrideValue value = poisoned<VqsOverrideValue>();
};

TEST_F(KeyValue, receives_the_drivers_8_bytes) {
  expectKey("44 33 22 F1").reply("01 02 03 04 05 06 07 08");
  EXPECT_EQ(vqsGetInputOverrideKeyValue(session, 0xF1223344, &value), kDone);
  EXPECT_EQ(bytesOf(value), hex("01 02 03 04 05 06 07 08"));
}

TEST_F(KeyValue, is_written_by_the_driver_itself) {
  expectKey("00 00 00 00").reply("01 02 03");
  EXPECT_EQ(vqsGetInputOverrideKeyValue(session, 0, &value), kDone);
  EXPECT_EQ(bytesOf(value), hex("01 02 03 A5 A5 A5 A5 A5"));
}

TEST_F(KeyValue, stays_as_it_is_when_the_request_fails) {
  expectKey("01 00 00 00").fails();
  EXPECT_EQ(vqsGetInputOverrideKeyValue(session, 1, &value), kFailed);
  EXPECT_EQ(bytesOf(value), Bytes(8, kPoison));
}

TEST_F(KeyValue, needs_an_open_session_and_its_output) {
  EXPECT_EQ(vqsGetInputOverrideKeyValue(nullptr, 1, &value), kInvalid);
  EXPECT_EQ(vqsGetInputOverrideKeyValue(&closed, 1, &value), kInvalid);
  EXPECT_EQ(vqsGetInputOverrideKeyValue(session, 1, nullptr), kInvalid);
  EXPECT_EQ(bytesOf(value), Bytes(8, kPoison));
}

class KeyListSize : public FrugalSessionTest {
 protected:
  Exchange& expectSize(std::source_location where = std::source_location::current()) {
    return driver.expectOut(0x8022209C, where).answerLength(4);
  }

  std::uint32_t size = kPoisonWord;
};

TEST_F(KeyListSize, is_asked_for_with_any_flag_but_0) {
  for (const std::uint8_t flag : hex("01 02 80 FF")) {
    expectSize().replyWord(0, 0xF2345600U + flag);
    EXPECT_EQ(vqsGetInputOverrideKeyList(session, nullptr, &size, flag), kDone);
    EXPECT_EQ(size, 0xF2345600U + flag);
  }
}

TEST_F(KeyListSize, does_not_touch_the_list) {
  auto list = poisoned<std::array<std::uint8_t, 8>>();
  expectSize().replyWord(0, 8);
  EXPECT_EQ(vqsGetInputOverrideKeyList(session, list.data(), &size, 1), kDone);
  EXPECT_EQ(size, 8U);
  EXPECT_EQ(bytesOf(list), Bytes(8, kPoison));
}

TEST_F(KeyListSize, is_written_by_the_driver_itself) {
  expectSize().reply("11");
  EXPECT_EQ(vqsGetInputOverrideKeyList(session, nullptr, &size, 1), kDone);
  EXPECT_EQ(size, 0xA5A5A511U);
}

TEST_F(KeyListSize, stays_as_it_is_when_the_request_fails) {
  expectSize().fails();
  EXPECT_EQ(vqsGetInputOverrideKeyList(session, nullptr, &size, 1), kFailed);
  EXPECT_EQ(size, kPoisonWord);
}

TEST_F(KeyListSize, answers_1_when_its_output_is_missing) {
  std::uint32_t list = kPoisonWord;
  EXPECT_EQ(vqsGetInputOverrideKeyList(session, &list, nullptr, 1), kFailed);
  EXPECT_EQ(list, kPoisonWord);
}

TEST_F(KeyListSize, needs_an_open_session_before_its_output) {
  EXPECT_EQ(vqsGetInputOverrideKeyList(nullptr, nullptr, &size, 1), kInvalid);
  EXPECT_EQ(vqsGetInputOverrideKeyList(&closed, nullptr, &size, 1), kInvalid);
  EXPECT_EQ(vqsGetInputOverrideKeyList(&closed, nullptr, nullptr, 1), kInvalid);
  EXPECT_EQ(size, kPoisonWord);
}

class KeyList : public FrugalSessionTest {
 protected:
  Exchange& expectSize(std::source_location where = std::source_location::current()) {
    return driver.expectOut(0x8022209C, where).answerLength(4);
  }
  Exchange& expectList(std::size_t length, std::source_location where = std::source_location::current()) {
    return driver.expectOut(0x802220A0, where).answerLength(length);
  }
  vqsStatus get() { return vqsGetInputOverrideKeyList(session, list.data(), &size, 0); }

  Bytes list = Bytes(12, kPoison);
  std::uint32_t size = kPoisonWord;
};

TEST_F(KeyList, takes_two_requests_the_second_as_long_as_the_first_says) {
  expectSize().replyWord(0, 8);
  expectList(8).reply("01 02 03 04 05 06 07 08");
  EXPECT_EQ(get(), kDone);
  EXPECT_EQ(list, hex("01 02 03 04 05 06 07 08 A5 A5 A5 A5"));
}

TEST_F(KeyList, does_not_touch_or_need_the_size_output) {
  expectSize().replyWord(0, 4);
  expectList(4).reply("01 02 03 04");
  EXPECT_EQ(get(), kDone);
  EXPECT_EQ(size, kPoisonWord);
  expectSize().replyWord(0, 4);
  expectList(4).reply("05 06 07 08");
  EXPECT_EQ(vqsGetInputOverrideKeyList(session, list.data(), nullptr, 0), kDone);
  EXPECT_EQ(list, hex("05 06 07 08 A5 A5 A5 A5 A5 A5 A5 A5"));
}

TEST_F(KeyList, is_written_by_the_driver_itself_whatever_its_length) {
  expectSize().replyWord(0, 0xFFFFFFFF);
  expectList(0xFFFFFFFF).reply("01 02 03");
  EXPECT_EQ(get(), kDone);
  EXPECT_EQ(list, hex("01 02 03 A5 A5 A5 A5 A5 A5 A5 A5 A5"));
}

TEST_F(KeyList, is_asked_for_even_when_its_size_is_0) {
  expectSize().replyWord(0, 0);
  expectList(0);
  EXPECT_EQ(get(), kDone);
  expectSize().replyWord(0, 0);
  expectList(0).fails();
  EXPECT_EQ(get(), kFailed);
  EXPECT_EQ(list, Bytes(12, kPoison));
}

TEST_F(KeyList, is_not_asked_for_when_its_size_cannot_be_had) {
  expectSize().replyWord(0, 8).fails();
  EXPECT_EQ(get(), kFailed);
  EXPECT_EQ(list, Bytes(12, kPoison));
  EXPECT_EQ(size, kPoisonWord);
}

TEST_F(KeyList, stays_as_it_is_when_the_second_request_fails) {
  expectSize().replyWord(0, 8);
  expectList(8).fails();
  EXPECT_EQ(get(), kFailed);
  EXPECT_EQ(list, Bytes(12, kPoison));
}

TEST_F(KeyList, answers_1_when_its_output_is_missing) {
  EXPECT_EQ(vqsGetInputOverrideKeyList(session, nullptr, &size, 0), kFailed);
  EXPECT_EQ(size, kPoisonWord);
}

TEST_F(KeyList, needs_an_open_session_before_its_output) {
  EXPECT_EQ(vqsGetInputOverrideKeyList(nullptr, list.data(), &size, 0), kInvalid);
  EXPECT_EQ(vqsGetInputOverrideKeyList(&closed, list.data(), &size, 0), kInvalid);
  EXPECT_EQ(vqsGetInputOverrideKeyList(nullptr, nullptr, &size, 0), kInvalid);
  EXPECT_EQ(list, Bytes(12, kPoison));
}

TEST_F(KeyList, takes_nothing_but_its_requests_one_after_the_other) {
  const WindowsCalls calls;
  expectSize().replyWord(0, 12);
  expectList(12).reply(Bytes(12, 1));
  EXPECT_EQ(get(), kDone);
  EXPECT_EQ(calls.all(),
            (std::vector<std::string>{"DeviceIoControl(0x8022209c, 0, 4)", "DeviceIoControl(0x802220a0, 0, 12)"}));
}

TEST_F(KeyList, reaches_nothing_when_it_is_refused) {
  const WindowsCalls calls;
  for (const std::uint8_t sizeOnly : {std::uint8_t{0}, std::uint8_t{1}}) {
    EXPECT_EQ(vqsGetInputOverrideKeyList(nullptr, list.data(), &size, sizeOnly), kInvalid);
    EXPECT_EQ(vqsGetInputOverrideKeyList(&closed, list.data(), &size, sizeOnly), kInvalid);
    EXPECT_EQ(vqsGetInputOverrideKeyList(session, nullptr, nullptr, sizeOnly), kFailed);
  }
  EXPECT_TRUE(calls.all().empty());
}

TEST(KeyListBuffers, are_the_callers_own) {
  WitnessDevice device;
  QtfSession session{};
  session.handle = CreateFileW(u"\\\\?\\witness", GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  std::uint32_t size = 0;
  std::uint32_t list = 0;
  EXPECT_EQ(vqsGetInputOverrideKeyList(&session, &list, &size, 1), kDone);
  EXPECT_EQ(vqsGetInputOverrideKeyList(&session, &list, &size, 0), kDone);
  CloseHandle(session.handle);
  EXPECT_EQ(device.handles, std::vector<HANDLE>(3, session.handle));
  ASSERT_EQ(device.requests.size(), 3U);
  EXPECT_EQ(device.requests[0].call.output, &size);
  EXPECT_NE(device.requests[1].call.output, &size);
  EXPECT_EQ(device.requests[2].call.output, &list);
}

class KeyMetadata : public FrugalSessionTest {
 protected:
  Exchange& expectKey(std::string_view key, std::source_location where = std::source_location::current()) {
    return driver.expectSplit(0x802220A4, where).request(key).answerLength(52);
  }

  VqsOverrideMetadata metadata = poisoned<VqsOverrideMetadata>();
};

TEST_F(KeyMetadata, receives_the_drivers_52_bytes) {
  const Bytes answer = Record(52, 0x5A).u32(0, 0x11223344).u32(48, 0x55667788);
  expectKey("44 33 22 F1").reply(answer);
  EXPECT_EQ(vqsGetInputOverrideKeyMetadata(session, 0xF1223344, &metadata), kDone);
  EXPECT_EQ(bytesOf(metadata), answer);
}

TEST_F(KeyMetadata, is_written_by_the_driver_itself) {
  expectKey("01 00 00 00").reply("01");
  EXPECT_EQ(vqsGetInputOverrideKeyMetadata(session, 1, &metadata), kDone);
  EXPECT_EQ(bytesOf(metadata), Record(52, kPoison).u8(0, 1).bytes());
}

TEST_F(KeyMetadata, stays_as_it_is_when_the_request_fails) {
  expectKey("01 00 00 00").fails();
  EXPECT_EQ(vqsGetInputOverrideKeyMetadata(session, 1, &metadata), kFailed);
  EXPECT_EQ(bytesOf(metadata), Bytes(52, kPoison));
}

TEST_F(KeyMetadata, leaves_a_missing_output_to_the_driver_to_refuse) {
  expectKey("01 00 00 00").answerLength(0).fails();
  EXPECT_EQ(vqsGetInputOverrideKeyMetadata(session, 1, nullptr), kFailed);
}

TEST_F(KeyMetadata, needs_an_open_session) {
  EXPECT_EQ(vqsGetInputOverrideKeyMetadata(nullptr, 1, &metadata), kInvalid);
  EXPECT_EQ(vqsGetInputOverrideKeyMetadata(&closed, 1, &metadata), kInvalid);
  EXPECT_EQ(bytesOf(metadata), Bytes(52, kPoison));
}

}  // namespace
}  // namespace test
