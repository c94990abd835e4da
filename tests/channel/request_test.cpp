// SPDX-License-Identifier: Apache-2.0
#include "src/channel/request.h"

#include <gtest/gtest.h>

#include <array>

#include "src/channel/control_codes.h"
#include "src/channel/driver_handle.h"
#include "tests/support/faults.h"
#include "tests/support/results.h"
#include "tests/support/windows_calls.h"
#include "tests/support/witness_device.h"

namespace test {
namespace {

using ::testing::Test;

struct Pair {
  std::uint32_t first;
  std::uint32_t second;
};

class Request : public Test {
 protected:
  Request() { EXPECT_EQ(vqs::openDriver(&handle), kDone); }
  ~Request() override { CloseHandle(handle); }

  [[nodiscard]] const WitnessedRequest& only() const {
    EXPECT_EQ(device.requests.size(), 1U);
    return device.requests.at(0);
  }

  WitnessDevice device;
  HANDLE handle = nullptr;
};

TEST(ControlCode, runs_from_the_first_function_to_the_last_in_steps_of_four) {
  EXPECT_EQ(vqs::controlCode(0x800), 0x80222000U);
  EXPECT_EQ(vqs::controlCode(0x801), 0x80222004U);
  EXPECT_EQ(vqs::controlCode(0x82B), 0x802220ACU);
}

TEST_F(Request, of_one_record_uses_it_both_ways) {
  Pair record{0x11121314, 0x21222324};
  EXPECT_EQ(vqs::sendSame(handle, 0x80222094, record), kDone);
  EXPECT_EQ(device.handles.at(0), handle);
  EXPECT_EQ(only().call.code, 0x80222094U);
  EXPECT_EQ(only().call.input, &record);
  EXPECT_EQ(only().call.output, &record);
  EXPECT_EQ(only().call.inputLength, 8U);
  EXPECT_EQ(only().call.outputLength, 8U);
  EXPECT_EQ(only().input, hex("14 13 12 11  24 23 22 21"));
}

TEST_F(Request, of_a_computed_length_uses_one_buffer_both_ways) {
  std::array<std::byte, 4140> buffer{};
  EXPECT_EQ(vqs::sendSame(handle, 0x80222034, std::span{buffer}), kDone);
  EXPECT_EQ(only().call.input, buffer.data());
  EXPECT_EQ(only().call.output, buffer.data());
  EXPECT_EQ(only().call.inputLength, 4140U);
  EXPECT_EQ(only().call.outputLength, 4140U);
}

TEST_F(Request, of_two_records_has_a_length_for_each) {
  std::uint32_t request = 0x31323334;
  Pair answer{};
  EXPECT_EQ(vqs::sendSplit(handle, 0x80222000, request, &answer), kDone);
  EXPECT_EQ(only().call.input, &request);
  EXPECT_EQ(only().call.output, &answer);
  EXPECT_EQ(only().call.inputLength, 4U);
  EXPECT_EQ(only().call.outputLength, 8U);
  EXPECT_EQ(only().input, hex("34 33 32 31"));
}

TEST_F(Request, is_never_overlapped_and_has_a_zeroed_count_of_its_own) {
  Pair record{};
  EXPECT_EQ(vqs::sendSame(handle, 0x80222094, record), kDone);
  EXPECT_EQ(only().call.overlapped, nullptr);
  ASSERT_NE(only().call.returned, nullptr);
  EXPECT_EQ(only().returnedBefore, 0U);
}

TEST_F(Request, is_one_call_without_memory_of_its_own) {
  const Faults faults;
  WindowsCalls calls;
  Pair record{};
  EXPECT_EQ(vqs::sendSame(handle, 0x80222094, record), kDone);
  const std::vector<std::string> expected = {"DeviceIoControl(0x80222094, 8, 8)"};
  EXPECT_EQ(calls.all(), expected);
  EXPECT_EQ(faults.calls(Fault::kAllocation), 0);
}

TEST_F(Request, that_fails_gives_1_and_is_not_repeated) {
  device.succeeds = false;
  Pair record{};
  EXPECT_EQ(vqs::sendSame(handle, 0x80222094, record), kFailed);
  EXPECT_EQ(vqs::sendSplit(handle, 0x80222000, record, &record), kFailed);
  EXPECT_EQ(device.requests.size(), 2U);
}

TEST_F(Request, on_no_device_gives_1) {
  Pair record{};
  EXPECT_EQ(vqs::sendSame(nullptr, 0x80222094, record), kFailed);
  EXPECT_EQ(vqs::sendSame(INVALID_HANDLE_VALUE, 0x80222094, record), kFailed);
  EXPECT_TRUE(device.requests.empty());
}

TEST_F(Request, longer_than_a_length_can_say_is_not_sent) {
  std::array<std::byte, 8> buffer{};
  const std::span tooLong{buffer.data(), std::size_t{0x100000000}};
  EXPECT_EQ(vqs::sendCounted(handle, 0x80222034, {tooLong, buffer.data(), 8}), kFailed);
  EXPECT_EQ(vqs::sendCounted(handle, 0x80222034, {std::span{buffer}, buffer.data(), 0x100000000}), kFailed);
  EXPECT_TRUE(device.requests.empty());
}

TEST(RefusedRequest, that_filled_part_of_its_answer_gives_1) {
  ScriptedDriver driver;
  OpenSession session{driver};
  driver.expectSplit(0x80222000).request("00 00 00 00").answerLength(8).reply("01 02").fails();
  std::uint32_t request = 0;
  Pair answer{};
  EXPECT_EQ(vqs::sendSplit(session->handle, 0x80222000, request, &answer), kFailed);
  EXPECT_EQ(answer.first, 0x0201U);
}

}  // namespace
}  // namespace test
