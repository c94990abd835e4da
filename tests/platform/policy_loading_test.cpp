// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <vqs/platform.h>
#include "tests/platform/pointers.h"
#include "tests/support/results.h"
#include "tests/support/session_test.h"

namespace test {
namespace {

constexpr std::uint32_t kCode = 0x80222070;

class PolicyLoading : public FrugalSessionTest {
 protected:
  void expectOutputs(std::uint32_t one, std::uint32_t two) {
    EXPECT_EQ(first, one);
    EXPECT_EQ(second, two);
  }

  std::uint32_t first = kPoisonWord;
  std::uint32_t second = kPoisonWord;
};

class LoadDynamicPolicy : public PolicyLoading {
 protected:
  vqsStatus load(std::uint64_t size) { return vqsExLoadDynamicPolicy(session, size, marker(), &first, &second); }
  Exchange& expectLoad(std::uint32_t size, std::source_location where = std::source_location::current()) {
    return driver.expectSame(kCode, where).request(Record(24).u32(8, size).u64(16, 0x1122334455667788));
  }
};

TEST_F(LoadDynamicPolicy, sends_size_and_address_and_receives_two_words) {
  driver.expectSame(kCode)
      .request("00 00 00 00 00 00 00 00  00 B0 04 00 00 00 00 00  88 77 66 55 44 33 22 11")
      .reply("EE EE EE EE EE EE EE EE  04 03 02 F1 08 07 06 F5  EE EE EE EE EE EE EE EE");
  EXPECT_EQ(load(307200), kDone);
  expectOutputs(0xF1020304, 0xF5060708);
}

TEST_F(LoadDynamicPolicy, takes_1_byte) {
  expectLoad(1).replyWord(8, 5).replyWord(12, 6);
  EXPECT_EQ(load(1), kDone);
  expectOutputs(5, 6);
}

TEST_F(LoadDynamicPolicy, refuses_0_bytes_and_more_than_307200) {
  for (const std::uint64_t size : {0ULL, 307201ULL, 0x100000000ULL, 0x100000001ULL, ~0ULL})
    EXPECT_EQ(load(size), kInvalid);
  expectOutputs(kPoisonWord, kPoisonWord);
}

TEST_F(LoadDynamicPolicy, hands_out_what_the_record_holds_when_nothing_was_answered) {
  expectLoad(0x1234);
  EXPECT_EQ(load(0x1234), kDone);
  expectOutputs(0x1234, 0);
}

TEST_F(LoadDynamicPolicy, writes_its_outputs_although_the_request_failed) {
  expectLoad(0x1234).fails();
  EXPECT_EQ(load(0x1234), kFailed);
  expectOutputs(0x1234, 0);
  expectLoad(0x1234).replyWord(8, 5).replyWord(12, 6).fails();
  EXPECT_EQ(load(0x1234), kFailed);
  expectOutputs(5, 6);
}

TEST_F(LoadDynamicPolicy, can_do_without_each_output) {
  for (const bool fails : {false, true}) {
    for (int i = 0; i < 3; ++i) {
      auto& exchange = expectLoad(9).replyWord(8, 5).replyWord(12, 6);
      if (fails) exchange.fails();
    }
    const vqsStatus result = fails ? kFailed : kDone;
    EXPECT_EQ(vqsExLoadDynamicPolicy(session, 9, marker(), &first, nullptr), result);
    expectOutputs(5, kPoisonWord);
    first = kPoisonWord;
    EXPECT_EQ(vqsExLoadDynamicPolicy(session, 9, marker(), nullptr, &second), result);
    expectOutputs(kPoisonWord, 6);
    second = kPoisonWord;
    EXPECT_EQ(vqsExLoadDynamicPolicy(session, 9, marker(), nullptr, nullptr), result);
    expectOutputs(kPoisonWord, kPoisonWord);
  }
}

TEST_F(LoadDynamicPolicy, needs_an_open_session_and_data) {
  EXPECT_EQ(vqsExLoadDynamicPolicy(nullptr, 9, marker(), &first, &second), kInvalid);
  EXPECT_EQ(vqsExLoadDynamicPolicy(&closed, 9, marker(), &first, &second), kInvalid);
  EXPECT_EQ(vqsExLoadDynamicPolicy(session, 9, nullptr, &first, &second), kInvalid);
  expectOutputs(kPoisonWord, kPoisonWord);
}

class ClearDynamicPolicy : public PolicyLoading {};

TEST_F(ClearDynamicPolicy, sends_its_operation_alone) {
  driver.expectSame(kCode)
      .request("01 00 00 00 00 00 00 00  00 00 00 00 00 00 00 00  00 00 00 00 00 00 00 00")
      .reply(Bytes(24, 0xFF));
  EXPECT_EQ(vqsExClearDynamicPolicy(session), kDone);
}

TEST_F(ClearDynamicPolicy, fails_with_its_request) {
  driver.expectSame(kCode).request(Record(24).u32(0, 1)).fails();
  EXPECT_EQ(vqsExClearDynamicPolicy(session), kFailed);
}

TEST_F(ClearDynamicPolicy, needs_an_open_session) {
  EXPECT_EQ(vqsExClearDynamicPolicy(nullptr), kInvalid);
  EXPECT_EQ(vqsExClearDynamicPolicy(&closed), kInvalid);
}

/// The calls that send an operation and receive two words.
struct TwoWords {
  std::string title;
  decltype(&vqsExLoadStaticBinary) call;
  std::uint32_t operation;
};

class TwoWordCall : public PolicyLoading, public ::testing::WithParamInterface<TwoWords> {
 protected:
  vqsStatus call() { return GetParam().call(session, &first, &second); }
  Exchange& expectCall(std::source_location where = std::source_location::current()) {
    return driver.expectSame(kCode, where).request(Record(24).u32(0, GetParam().operation));
  }
};

TEST_P(TwoWordCall, sends_its_operation_alone_and_receives_two_words) {
  expectCall().reply("EE EE EE EE EE EE EE EE  04 03 02 F1 08 07 06 F5  EE EE EE EE EE EE EE EE");
  EXPECT_EQ(call(), kDone);
  expectOutputs(0xF1020304, 0xF5060708);
}

TEST_P(TwoWordCall, begins_with_an_empty_answer) {
  expectCall();
  EXPECT_EQ(call(), kDone);
  expectOutputs(0, 0);
}

TEST_P(TwoWordCall, writes_its_outputs_although_the_request_failed) {
  expectCall().fails();
  EXPECT_EQ(call(), kFailed);
  expectOutputs(0, 0);
  expectCall().replyWord(8, 5).replyWord(12, 6).fails();
  EXPECT_EQ(call(), kFailed);
  expectOutputs(5, 6);
}

TEST_P(TwoWordCall, needs_an_open_session) {
  EXPECT_EQ(GetParam().call(nullptr, &first, &second), kInvalid);
  EXPECT_EQ(GetParam().call(&closed, &first, &second), kInvalid);
  expectOutputs(kPoisonWord, kPoisonWord);
}

const auto twoWordsName = [](const auto& instance) { return instance.param.title; };

const TwoWords kVersion{"GetPolicyBinaryVersion", vqsExGetPolicyBinaryVersion, 2};
const TwoWords kStatic{"LoadStaticBinary", vqsExLoadStaticBinary, 3};
const TwoWords kDisk{"LoadDiskBinary", vqsExLoadDiskBinary, 4};

INSTANTIATE_TEST_SUITE_P(Of, TwoWordCall, ::testing::Values(kVersion, kStatic, kDisk), twoWordsName);

class LoadBinary : public TwoWordCall {};

TEST_P(LoadBinary, can_do_without_each_output) {
  for (int i = 0; i < 3; ++i) expectCall().replyWord(8, 5).replyWord(12, 6);
  EXPECT_EQ(GetParam().call(session, &first, nullptr), kDone);
  expectOutputs(5, kPoisonWord);
  first = kPoisonWord;
  EXPECT_EQ(GetParam().call(session, nullptr, &second), kDone);
  expectOutputs(kPoisonWord, 6);
  second = kPoisonWord;
  EXPECT_EQ(GetParam().call(session, nullptr, nullptr), kDone);
  expectOutputs(kPoisonWord, kPoisonWord);
}

INSTANTIATE_TEST_SUITE_P(Of, LoadBinary, ::testing::Values(kStatic, kDisk), twoWordsName);

class GetPolicyBinaryVersion : public PolicyLoading {};

TEST_F(GetPolicyBinaryVersion, needs_both_outputs) {
  EXPECT_EQ(vqsExGetPolicyBinaryVersion(session, nullptr, &second), kInvalid);
  EXPECT_EQ(vqsExGetPolicyBinaryVersion(session, &first, nullptr), kInvalid);
  expectOutputs(kPoisonWord, kPoisonWord);
}

}  // namespace
}  // namespace test
