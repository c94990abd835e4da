// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

#include "tests/support/bytes.h"
#include "tests/windows/device_handle.h"

namespace test {
namespace {

const Bytes kAnnouncement = hex("03 00 00 00  00 00 00 00  00 00 00 00");

bool isUntouched(const Bytes& output) {
  return std::all_of(output.begin(), output.end(), [](std::uint8_t byte) { return byte == 0xA5; });
}

TEST(DriverRequests, an_announcement_is_answered_with_its_own_words) {
  const DeviceHandle device;
  const auto answer = device.request(0x80222068, kAnnouncement, 12);
  EXPECT_EQ(answer.error, 0U);
  EXPECT_EQ(answer.returned, 12U);
  EXPECT_EQ(answer.output, kAnnouncement);
}

TEST(DriverRequests, an_unknown_code_is_an_invalid_function) {
  const DeviceHandle device;
  const auto answer = device.request(0x80222004, kAnnouncement, 12);
  EXPECT_EQ(answer.error, DWORD{ERROR_INVALID_FUNCTION});
  EXPECT_EQ(answer.returned, 0U);
  EXPECT_TRUE(isUntouched(answer.output));
}

TEST(DriverRequests, a_known_code_in_another_buffer_form_is_an_invalid_function) {
  const DeviceHandle device;
  for (const DWORD form : {1U, 2U, 3U}) {
    const auto answer = device.request(0x80222068 | form, kAnnouncement, 12);
    EXPECT_EQ(answer.error, DWORD{ERROR_INVALID_FUNCTION}) << form;
    EXPECT_EQ(answer.returned, 0U) << form;
  }
}

TEST(DriverRequests, a_wrong_length_is_refused_as_such) {
  const DeviceHandle device;
  Bytes longer = kAnnouncement;
  longer.push_back(0);
  for (const auto& [input, outputLength] :
       {std::pair<Bytes, DWORD>{longer, 12}, {kAnnouncement, 13}, {kAnnouncement, 0}, {{}, 12}, {{}, 0}}) {
    const auto answer = device.request(0x80222068, input, outputLength);
    EXPECT_EQ(answer.error, DWORD{ERROR_BAD_LENGTH}) << input.size() << " in, " << outputLength << " out";
    EXPECT_EQ(answer.returned, 0U);
    EXPECT_TRUE(isUntouched(answer.output));
  }
}

TEST(DriverRequests, a_senseless_field_is_an_invalid_parameter) {
  const DeviceHandle device;
  const auto answer = device.request(0x80222064, Record{19872}.u8(0, 2), 19872);
  EXPECT_EQ(answer.error, DWORD{ERROR_INVALID_PARAMETER});
  EXPECT_TRUE(isUntouched(answer.output));
}

TEST(DriverRequests, what_is_not_there_is_refused) {
  const DeviceHandle device;
  const auto answer = device.request(0x80222040, Record{3984}.u32(4, 61166), 3972);
  EXPECT_EQ(answer.error, DWORD{ERROR_REQ_NOT_ACCEP});
  EXPECT_TRUE(isUntouched(answer.output));
}

TEST(DriverRequests, lengths_beyond_all_records_are_refused) {
  const DeviceHandle device;
  const auto answer = device.request(0x80222034, Bytes(4'000'000, 0xFF), 4'000'000);
  EXPECT_NE(answer.error, 0U);
  EXPECT_TRUE(isUntouched(answer.output));
}

}  // namespace
}  // namespace test
