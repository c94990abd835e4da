// SPDX-License-Identifier: Apache-2.0
#include "simulator/embedded/buffered_request.h"

#include <gtest/gtest.h>

#include "host/host.h"
#include "tests/simulator/embedded/client.h"

namespace test {
namespace {

class BufferedRequest : public testing::Test {
 protected:
  bool run(std::uint32_t code, const Bytes& input, Bytes& output, DWORD* count) {
    Bytes copy = input;
    const bool done = simulator::runBuffered(*driver, surroundings, 1,
                                             {code, copy.data(), static_cast<DWORD>(copy.size()), output.data(),
                                              static_cast<DWORD>(output.size()), count, nullptr});
    EXPECT_EQ(copy, input) << "the input was written to";
    return done;
  }

  ScriptedSurroundings surroundings;
  std::unique_ptr<simulator::Driver> driver = std::make_unique<simulator::Driver>();
  DWORD returned = kPoisonWord;
};

TEST_F(BufferedRequest, answer_goes_to_the_output_and_its_length_is_told) {
  Bytes output(12, kPoison);
  EXPECT_TRUE(run(kAppIo, Record{12}.u32(0, 3), output, &returned));
  EXPECT_EQ(output, hex("03 00 00 00  00 00 00 00  00 00 00 00"));
  EXPECT_EQ(returned, 12);
}

TEST_F(BufferedRequest, one_buffer_may_be_input_and_output) {
  Bytes record = addRequest(simplePolicy(7));
  ASSERT_TRUE(simulator::runBuffered(*driver, surroundings, 1,
                                     {kModifyPb, record.data(), 4000, record.data(), 4000, &returned, {}}));
  EXPECT_EQ(returned, 4000);
  ASSERT_TRUE(simulator::runBuffered(*driver, surroundings, 1,
                                     {kModifyPb, record.data(), 4000, record.data(), 4000, &returned, {}}));
  EXPECT_EQ(word(record, 3980), 2);
}

TEST_F(BufferedRequest, short_answer_leaves_the_rest_of_the_callers_memory) {
  Bytes memory = deleteRequest(7);
  const Bytes before = memory;
  ASSERT_TRUE(simulator::runBuffered(*driver, surroundings, 1,
                                     {kModifyPb, memory.data(), 4000, memory.data(), 4, &returned, {}}));
  EXPECT_EQ(returned, 4);
  EXPECT_EQ(part(memory, 0, 4), hex("04 00 00 00"));
  EXPECT_EQ(part(memory, 4, 3996), part(before, 4, 3996));
}

TEST_F(BufferedRequest, failure_leaves_the_output_untouched_and_returns_no_bytes) {
  Bytes output(3972, kPoison);
  EXPECT_FALSE(run(kLookup, lookupRequest(0, 7), output, &returned));
  EXPECT_EQ(output, Bytes(3972, kPoison));
  EXPECT_EQ(returned, 0);
}

TEST_F(BufferedRequest, nobody_has_to_ask_for_the_length) {
  Bytes output(12, kPoison);
  EXPECT_TRUE(run(kAppIo, Record{12}.u32(0, 3), output, nullptr));
  EXPECT_EQ(output, Record{12}.u32(0, 3).bytes());
  EXPECT_FALSE(run(kAppIo, Record{12}.u32(0, 5), output, nullptr));
}

TEST_F(BufferedRequest, missing_buffers_fail_where_the_driver_needs_them) {
  Bytes record = Record{12}.u32(0, 3);
  EXPECT_FALSE(
      simulator::runBuffered(*driver, surroundings, 1, {kAppIo, record.data(), 12, nullptr, 0, &returned, {}}));
  EXPECT_EQ(returned, 0);
  EXPECT_FALSE(
      simulator::runBuffered(*driver, surroundings, 1, {kAppIo, nullptr, 0, record.data(), 12, &returned, {}}));
  EXPECT_EQ(record, Record{12}.u32(0, 3).bytes());
  EXPECT_FALSE(simulator::runBuffered(*driver, surroundings, 1, {kAppIo, nullptr, 0, nullptr, 0, &returned, {}}));
  Bytes add = addRequest(simplePolicy(7));
  EXPECT_FALSE(
      simulator::runBuffered(*driver, surroundings, 1, {kModifyPb, add.data(), 4000, nullptr, 0, &returned, {}}));
  EXPECT_EQ(driver->policies().store(0).count(), 0);
}

TEST_F(BufferedRequest, rest_of_the_system_buffer_is_zero) {
  // Were a part of the output taken for input, this read would be malformed.
  Bytes output(19872, kPoison);
  EXPECT_FALSE(run(kReadPb, Record{4}.u32(0, 1), output, &returned));
  EXPECT_TRUE(run(kReadPb, countQuery(), output, &returned));
  EXPECT_EQ(output, countQuery().bytes());
}

TEST_F(BufferedRequest, length_beyond_all_memory_fails) {
  std::uint8_t byte = kPoison;
  EXPECT_FALSE(
      simulator::runBuffered(*driver, surroundings, 1, {kModifyPb, &byte, 1, &byte, 0xFFFFFFFF, &returned, {}}));
  EXPECT_EQ(byte, kPoison);
}

}  // namespace
}  // namespace test
