// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/policy/stores.h"
#include "tests/support/results.h"
#include "tests/support/windows_calls.h"
#include "tests/support/witness_device.h"

namespace test {
namespace {

constexpr std::uint32_t kId = 0x61626364;

class DeletePolicy : public EveryStore {
 protected:
  vqsStatus remove() { return store().remove(session, kId, &driverResult); }
  Exchange& expectDelete(std::source_location where = std::source_location::current()) {
    return driver.expectSplit(store().modifyCode, where).request(deleteRequest(kId)).answerLength(4);
  }

  std::uint32_t driverResult = kPoisonWord;
};

TEST_P(DeletePolicy, sends_the_id_and_passes_the_drivers_verdict_on) {
  for (const std::uint32_t verdict : {0U, 1U, 0xC0000001U}) {
    expectDelete().replyWord(0, verdict);
    EXPECT_EQ(remove(), kDone);
    EXPECT_EQ(driverResult, verdict);
  }
}

TEST_P(DeletePolicy, of_any_id) {
  for (const std::uint32_t id : {0U, 0xFFFFFFFFU}) {
    driver.expectSplit(store().modifyCode).request(deleteRequest(id)).answerLength(4);
    EXPECT_EQ(store().remove(session, id, &driverResult), kDone);
  }
}

TEST_P(DeletePolicy, lets_the_driver_write_into_the_callers_word) {
  WitnessDevice witness{u"\\\\?\\witness"};
  QtfSession watched{};
  watched.handle = CreateFileW(u"\\\\?\\witness", 0xC0000000, 3, nullptr, 3, 0x80, nullptr);
  EXPECT_EQ(store().remove(&watched, kId, &driverResult), kDone);
  EXPECT_EQ(witness.requests.at(0).call.output, &driverResult);
  EXPECT_EQ(witness.requests.at(0).call.outputLength, 4U);
  EXPECT_EQ(driverResult, kPoisonWord);
  CloseHandle(watched.handle);
}

TEST_P(DeletePolicy, that_fails_leaves_what_the_driver_wrote) {
  expectDelete().fails();
  EXPECT_EQ(remove(), kFailed);
  EXPECT_EQ(driverResult, kPoisonWord);
  expectDelete().replyWord(0, 7).fails();
  EXPECT_EQ(remove(), kFailed);
  EXPECT_EQ(driverResult, 7U);
}

/// The driver sees such a call as one without an answer.
TEST_P(DeletePolicy, hands_a_null_pointer_to_the_driver) {
  const WindowsCalls calls;
  expectDelete().answerLength(0);
  EXPECT_EQ(store().remove(session, kId, nullptr), kDone);
  expectDelete().answerLength(0).fails();
  EXPECT_EQ(store().remove(session, kId, nullptr), kFailed);
  for (const auto& call : calls.of("DeviceIoControl")) EXPECT_TRUE(call.ends_with(", 4000, 4)")) << call;
}

TEST_P(DeletePolicy, checks_the_session_before_anything_else) {
  EXPECT_EQ(store().remove(nullptr, kId, &driverResult), kInvalid);
  EXPECT_EQ(store().remove(&closed, kId, &driverResult), kInvalid);
  EXPECT_EQ(driverResult, kPoisonWord);
  EXPECT_EQ(faults.calls(Fault::kAllocation), 0);
}

TEST_P(DeletePolicy, runs_out_of_memory_for_the_request_with_1) {
  faults.fail(Fault::kAllocation, 1);
  EXPECT_EQ(remove(), kFailed);
  EXPECT_EQ(driverResult, kPoisonWord);
  expectDelete().replyWord(0, 0);
  EXPECT_EQ(remove(), kDone);
  EXPECT_EQ(faults.calls(Fault::kAllocation), 2);
}

INSTANTIATE_TEST_SUITE_P(From, DeletePolicy, ::testing::ValuesIn(allStores()), storeName);

class ReplaceAny : public EveryStore {
 protected:
  Exchange& expectDelete(std::source_location where = std::source_location::current()) {
    return driver.expectSplit(store().modifyCode, where).request(deleteRequest(kId)).answerLength(4);
  }
  Exchange& expectAdd(const Bytes& packed, std::source_location where = std::source_location::current()) {
    return driver.expectSame(store().modifyCode, where).request(addRequest(packed));
  }

  std::uint32_t driverResult = kPoisonWord;
};

class ReplacePolicy : public ReplaceAny {
 protected:
  vqsStatus replace() { return store().replace(session, kId, &policy, &driverResult); }
  /// The record as it was, but for its id.
  void expectRecordWithId(std::uint32_t id) {
    EXPECT_EQ(difference(bytesOf(policy), policyBody(0, fullPolicy(0), 0xEE).u32(100, id).bytes()), "");
  }
  /// What is added: the policy under the id of the call.
  static Bytes packedUnderId() {
    auto content = fullPolicy(0);
    content.id = kId;
    return packedPolicy(content);
  }

  VqsPolicyV0 policy = recordOf<VqsPolicyV0>(policyBody(0, fullPolicy(0), 0xEE));
};

TEST_P(ReplacePolicy, deletes_the_id_and_adds_the_policy_under_it) {
  expectDelete().replyWord(0, 0);
  expectAdd(packedUnderId()).replyWord(3980, 0);
  EXPECT_EQ(replace(), kDone);
  EXPECT_EQ(driverResult, 0U);
  expectRecordWithId(kId);
}

TEST_P(ReplacePolicy, passes_the_verdict_on_the_add_on) {
  expectDelete().replyWord(0, 0);
  expectAdd(packedUnderId()).replyWord(3980, 9);
  EXPECT_EQ(replace(), kDone);
  EXPECT_EQ(driverResult, 9U);
}

TEST_P(ReplacePolicy, adds_nothing_after_a_delete_that_the_driver_refused) {
  for (const std::uint32_t verdict : {1U, 0x80000000U}) {
    policy.id = 1;
    expectDelete().replyWord(0, verdict);
    EXPECT_EQ(replace(), kDone);
    EXPECT_EQ(driverResult, verdict);
    expectRecordWithId(kId);
  }
}

TEST_P(ReplacePolicy, adds_nothing_after_a_delete_that_failed) {
  expectDelete().replyWord(0, 0).fails();
  EXPECT_EQ(replace(), kFailed);
  EXPECT_EQ(driverResult, 0U);
  expectRecordWithId(kId);
}

TEST_P(ReplacePolicy, writes_the_id_between_delete_and_add) {
  expectDelete().replyWord(0, 0);
  expectAdd(packedUnderId());
  WindowsCalls calls;
  std::vector<std::uint32_t> ids;
  calls.before("DeviceIoControl", [&] { ids.push_back(policy.id); });
  EXPECT_EQ(replace(), kDone);
  EXPECT_EQ(ids, (std::vector<std::uint32_t>{0x12131415, kId}));
}

TEST_P(ReplacePolicy, fails_at_an_add_that_failed_with_the_old_policy_gone) {
  expectDelete().replyWord(0, 0);
  expectAdd(packedUnderId()).replyWord(3980, 9).fails();
  EXPECT_EQ(replace(), kFailed);
  EXPECT_EQ(driverResult, 1U);
}

TEST_P(ReplacePolicy, finds_a_malformed_policy_after_the_delete) {
  policy.conditions[3].op = 5;
  expectDelete().replyWord(0, 0);
  EXPECT_EQ(replace(), kFailed);
  EXPECT_EQ(driverResult, 0U);
  EXPECT_EQ(policy.id, kId);
}

TEST_P(ReplacePolicy, does_not_judge_a_policy_that_is_not_added) {
  policy.conditions[3].op = 5;
  expectDelete().replyWord(0, 4);
  EXPECT_EQ(replace(), kDone);
  EXPECT_EQ(driverResult, 4U);
}

TEST_P(ReplacePolicy, checks_the_session_before_anything_else) {
  EXPECT_EQ(store().replace(nullptr, kId, &policy, &driverResult), kInvalid);
  EXPECT_EQ(store().replace(&closed, kId, &policy, &driverResult), kInvalid);
  expectRecordWithId(0x12131415);
  EXPECT_EQ(driverResult, kPoisonWord);
  EXPECT_EQ(faults.calls(Fault::kAllocation), 0);
}

TEST_P(ReplacePolicy, runs_out_of_memory_for_the_policy_with_3_unsent) {
  faults.fail(Fault::kAllocation, 1);
  EXPECT_EQ(replace(), kNoMemory);
  expectRecordWithId(0x12131415);
  EXPECT_EQ(driverResult, kPoisonWord);
}

TEST_P(ReplacePolicy, runs_out_of_memory_for_the_delete_with_1_and_the_id_written) {
  faults.fail(Fault::kAllocation, 2);
  EXPECT_EQ(replace(), kFailed);
  expectRecordWithId(kId);
  EXPECT_EQ(driverResult, kPoisonWord);
}

TEST_P(ReplacePolicy, runs_out_of_memory_for_the_add_with_1) {
  faults.fail(Fault::kAllocation, 3);
  expectDelete().replyWord(0, 0);
  EXPECT_EQ(replace(), kFailed);
  EXPECT_EQ(driverResult, 0U);
  EXPECT_EQ(faults.calls(Fault::kAllocation), 3);
}

INSTANTIATE_TEST_SUITE_P(In, ReplacePolicy, ::testing::ValuesIn(allStores()), storeName);

class ReplacePbPolicy : public TidySessionTest {};

TEST_F(ReplacePbPolicy, checks_policy_and_verdict_too) {
  auto policy = recordOf<VqsPolicyV0>(policyBody(0, fullPolicy(0)));
  std::uint32_t driverResult = kPoisonWord;
  EXPECT_EQ(vqsPbReplacePolicy(session, kId, nullptr, &driverResult), kInvalid);
  EXPECT_EQ(vqsPbReplacePolicy(session, kId, &policy, nullptr), kInvalid);
  EXPECT_EQ(policy.id, 0x12131415U);
  EXPECT_EQ(driverResult, kPoisonWord);
  EXPECT_EQ(faults.calls(Fault::kAllocation), 0);
}

/// Asm and BalanceProfile check the session alone.
class ReplaceUnchecked : public ReplacePolicy {};

TEST_P(ReplaceUnchecked, without_a_policy_deletes_and_then_fails) {
  expectDelete().replyWord(0, 0);
  EXPECT_EQ(store().replace(session, kId, nullptr, &driverResult), kFailed);
  EXPECT_EQ(driverResult, 0U);
}

TEST_P(ReplaceUnchecked, without_a_policy_ends_at_a_refused_delete) {
  expectDelete().replyWord(0, 6);
  EXPECT_EQ(store().replace(session, kId, nullptr, &driverResult), kDone);
  EXPECT_EQ(driverResult, 6U);
  expectDelete().fails();
  EXPECT_EQ(store().replace(session, kId, nullptr, &driverResult), kFailed);
}

TEST_P(ReplaceUnchecked, without_a_verdict_deletes_and_adds_nothing) {
  expectDelete().answerLength(0);
  EXPECT_EQ(store().replace(session, kId, &policy, nullptr), kDone);
  expectRecordWithId(kId);
  expectDelete().answerLength(0).fails();
  EXPECT_EQ(store().replace(session, kId, &policy, nullptr), kFailed);
}

TEST_P(ReplaceUnchecked, without_both_still_deletes) {
  expectDelete().answerLength(0);
  EXPECT_EQ(store().replace(session, kId, nullptr, nullptr), kDone);
  EXPECT_EQ(store().replace(&closed, kId, nullptr, nullptr), kInvalid);
}

INSTANTIATE_TEST_SUITE_P(In, ReplaceUnchecked, ::testing::Values(allStores()[1], allStores()[2]), storeName);

class ReplacePolicyV2 : public ReplaceAny {
 protected:
  vqsStatus replace(VersionedBytes& record, std::uint64_t size) {
    return vqsPbReplacePolicyV2(session, kId, record, size, &driverResult, store().number);
  }
  vqsStatus replace(VersionedBytes& record) { return replace(record, record.size()); }
  void expectRefusedUnsent(VersionedBytes& record, std::uint64_t size, vqsStatus result) {
    EXPECT_EQ(replace(record, size), result);
    EXPECT_EQ(driverResult, kPoisonWord);
  }

  VersionedBytes valid{2, policyBody(2, fullPolicy(2), 0xEE)};
};

// Unlike the version 0 replace, this one adds the record under the id that it carries.
TEST_P(ReplacePolicyV2, deletes_the_id_and_adds_the_record_under_its_own) {
  for (const std::uint32_t version : {0U, 1U, 2U}) {
    const auto content = fullPolicy(version);
    VersionedBytes record{version, policyBody(version, content, 0xEE)};
    const auto before = record.bytes();
    expectDelete().replyWord(0, 0);
    expectAdd(packedPolicy(content));
    EXPECT_EQ(replace(record), kDone);
    EXPECT_EQ(driverResult, 0U);
    EXPECT_EQ(difference(record.bytes(), before), "");
  }
}

TEST_P(ReplacePolicyV2, passes_the_verdicts_on) {
  expectDelete().replyWord(0, 5);
  EXPECT_EQ(replace(valid), kDone);
  EXPECT_EQ(driverResult, 5U);
  expectDelete().replyWord(0, 0);
  expectAdd(packedPolicy(fullPolicy(2))).replyWord(3980, 8);
  EXPECT_EQ(replace(valid), kDone);
  EXPECT_EQ(driverResult, 8U);
}

TEST_P(ReplacePolicyV2, stops_at_the_first_request_that_fails) {
  expectDelete().replyWord(0, 0).fails();
  EXPECT_EQ(replace(valid), kFailed);
  EXPECT_EQ(driverResult, 0U);
  expectDelete().replyWord(0, 0);
  expectAdd(packedPolicy(fullPolicy(2))).fails();
  EXPECT_EQ(replace(valid), kFailed);
  EXPECT_EQ(driverResult, 1U);
}

TEST_P(ReplacePolicyV2, refuses_a_malformed_record_before_the_delete) {
  for (const std::uint32_t version : {0U, 1U, 2U}) {
    VersionedBytes record{version, policyBody(version, fullPolicy(version)).u32(layoutOf(version).conditions + 4, 5)};
    expectRefusedUnsent(record, record.size(), kFailed);
  }
}

TEST_P(ReplacePolicyV2, needs_the_whole_body_of_a_known_version) {
  for (const std::uint32_t version : {0U, 1U, 2U}) {
    VersionedBytes record{version, policyBody(version, fullPolicy(version))};
    for (const std::uint64_t size :
         {std::uint64_t{1}, std::uint64_t{4}, std::uint64_t{5}, std::uint64_t{4 + layoutOf(version).size - 1}})
      expectRefusedUnsent(record, size, kFailed);
  }
  VersionedBytes unknown{3, policyBody(2, fullPolicy(2))};
  expectRefusedUnsent(unknown, unknown.size(), kFailed);
}

TEST_P(ReplacePolicyV2, checks_its_arguments_before_anything_else) {
  const auto number = store().number;
  EXPECT_EQ(vqsPbReplacePolicyV2(nullptr, kId, valid, valid.size(), &driverResult, number), kInvalid);
  EXPECT_EQ(vqsPbReplacePolicyV2(&closed, kId, valid, valid.size(), &driverResult, number), kInvalid);
  EXPECT_EQ(vqsPbReplacePolicyV2(session, kId, nullptr, valid.size(), &driverResult, number), kInvalid);
  EXPECT_EQ(vqsPbReplacePolicyV2(session, kId, valid, 0, &driverResult, number), kInvalid);
  EXPECT_EQ(vqsPbReplacePolicyV2(session, kId, valid, valid.size(), nullptr, number), kInvalid);
  EXPECT_EQ(driverResult, kPoisonWord);
  EXPECT_EQ(faults.calls(Fault::kAllocation), 0);
}

TEST_P(ReplacePolicyV2, runs_out_of_memory_with_3_for_the_policy_and_1_for_the_requests) {
  faults.fail(Fault::kAllocation, 1);
  expectRefusedUnsent(valid, valid.size(), kNoMemory);
  faults.fail(Fault::kAllocation, 2);
  expectRefusedUnsent(valid, valid.size(), kFailed);
  faults.fail(Fault::kAllocation, 3);
  expectDelete().replyWord(0, 0);
  EXPECT_EQ(replace(valid), kFailed);
  EXPECT_EQ(driverResult, 0U);
}

INSTANTIATE_TEST_SUITE_P(In, ReplacePolicyV2, ::testing::ValuesIn(allStores()), storeName);

class ReplacePolicyV2InNoStore : public TidySessionTest {};

TEST_F(ReplacePolicyV2InNoStore, is_refused_unsent) {
  VersionedBytes record{2, policyBody(2, fullPolicy(2))};
  std::uint32_t driverResult = kPoisonWord;
  for (const VqsPolicyStore store : {VqsPolicyStore{3}, VqsPolicyStore{255}})
    EXPECT_EQ(vqsPbReplacePolicyV2(session, kId, record, record.size(), &driverResult, store), kInvalid);
  VersionedBytes malformed{2, policyBody(2, fullPolicy(2)).u32(208 + 4, 5)};
  EXPECT_EQ(vqsPbReplacePolicyV2(session, kId, malformed, malformed.size(), &driverResult, 3), kFailed);
  EXPECT_EQ(driverResult, kPoisonWord);
}

}  // namespace
}  // namespace test
