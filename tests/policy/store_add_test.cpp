// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/policy/stores.h"
#include "tests/support/results.h"
#include "tests/support/windows_calls.h"

namespace test {
namespace {

class AddPolicy : public EveryStore {
 protected:
  vqsStatus add() { return store().add(session, &policy, &id, &driverResult); }
  void expectRefusedUnsent(vqsStatus result) {
    EXPECT_EQ(add(), result);
    EXPECT_EQ(driverResult, kPoisonWord);
    EXPECT_EQ(id, kPoisonWord);
  }

  const Policy content = fullPolicy(0);
  VqsPolicyV0 policy = recordOf<VqsPolicyV0>(policyBody(0, content, 0xEE));
  std::uint32_t id = kPoisonWord;
  std::uint32_t driverResult = kPoisonWord;
};

TEST_P(AddPolicy, sends_the_packed_policy_on_the_stores_modify_code) {
  driver.expectSame(store().modifyCode).request(addRequest(packedPolicy(content)));
  EXPECT_EQ(add(), kDone);
  EXPECT_EQ(driverResult, 0U);
}

TEST_P(AddPolicy, leaves_the_callers_record_alone) {
  driver.expectSame(store().modifyCode).anyRequest(4000).reply(Bytes(4000, 0xFF));
  EXPECT_EQ(add(), kDone);
  EXPECT_EQ(difference(bytesOf(policy), policyBody(0, content, 0xEE).bytes()), "");
}

TEST_P(AddPolicy, passes_the_drivers_verdict_on_and_succeeds) {
  for (const std::uint32_t verdict : {0U, 1U, 7U, 0xFFFFFFFFU}) {
    driver.expectSame(store().modifyCode).request(addRequest(packedPolicy(content))).replyWord(3980, verdict);
    EXPECT_EQ(add(), kDone);
    EXPECT_EQ(driverResult, verdict);
  }
}

TEST_P(AddPolicy, answers_1_in_both_places_when_the_request_fails) {
  driver.expectSame(store().modifyCode).request(addRequest(packedPolicy(content))).replyWord(3980, 7).fails();
  EXPECT_EQ(add(), kFailed);
  EXPECT_EQ(driverResult, 1U);
  EXPECT_EQ(id, kPoisonWord);
}

TEST_P(AddPolicy, gives_back_the_callers_own_id_whatever_the_driver_says) {
  driver.expectSame(store().modifyCode).anyRequest(4000).replyWord(168, 0x99999999).replyWord(3980, 3);
  EXPECT_EQ(add(), kDone);
  EXPECT_EQ(id, 0x12131415U);
}

TEST_P(AddPolicy, takes_no_place_for_the_id) {
  driver.expectSame(store().modifyCode).request(addRequest(packedPolicy(content)));
  EXPECT_EQ(store().add(session, &policy, nullptr, &driverResult), kDone);
  EXPECT_EQ(driverResult, 0U);
}

TEST_P(AddPolicy, sends_counts_above_their_limits_as_they_are) {
  policy = recordOf<VqsPolicyV0>(policyBody(0, content).u32(120, 16).u32(124, 6).u32(800, 33));
  auto packed = packedPolicy(content);
  driver.expectSame(store().modifyCode).request(addRequest(packed.u32(184, 16).u32(188, 33).u32(192, 6)));
  EXPECT_EQ(add(), kDone);
}

TEST_P(AddPolicy, checks_its_arguments_before_anything_else) {
  EXPECT_EQ(store().add(nullptr, &policy, &id, &driverResult), kInvalid);
  EXPECT_EQ(store().add(&closed, &policy, &id, &driverResult), kInvalid);
  EXPECT_EQ(store().add(session, nullptr, &id, &driverResult), kInvalid);
  EXPECT_EQ(store().add(session, &policy, &id, nullptr), kInvalid);
  EXPECT_EQ(driverResult, kPoisonWord);
  EXPECT_EQ(id, kPoisonWord);
  EXPECT_EQ(faults.calls(Fault::kAllocation), 0);
}

TEST_P(AddPolicy, sends_no_malformed_policy) {
  policy = recordOf<VqsPolicyV0>(policyBody(0, content).u32(136 + 4, 5));
  expectRefusedUnsent(kFailed);
  policy = recordOf<VqsPolicyV0>(policyBody(0, content).u8(376 + 32, 2));
  expectRefusedUnsent(kFailed);
  policy = recordOf<VqsPolicyV0>(policyBody(0, content).fill(0, 64, 'n'));
  expectRefusedUnsent(kFailed);
  const Locale utf8{"C.UTF-8"};
  policy = recordOf<VqsPolicyV0>(policyBody(0, content).u8(0, 0xFF));
  expectRefusedUnsent(kFailed);
}

TEST_P(AddPolicy, runs_out_of_memory_for_the_policy_with_3) {
  faults.fail(Fault::kAllocation, 1);
  expectRefusedUnsent(kNoMemory);
}

TEST_P(AddPolicy, runs_out_of_memory_for_the_request_with_1) {
  faults.fail(Fault::kAllocation, 2);
  expectRefusedUnsent(kFailed);
  EXPECT_EQ(faults.calls(Fault::kAllocation), 2);
}

INSTANTIATE_TEST_SUITE_P(To, AddPolicy, ::testing::ValuesIn(allStores()), storeName);

class AddPolicyV2 : public EveryStore {
 protected:
  vqsStatus add(VersionedBytes& record, std::uint64_t size) {
    return vqsPbAddPolicyV2(session, record, size, &driverResult, store().number);
  }
  vqsStatus add(VersionedBytes& record) { return add(record, record.size()); }

  std::uint32_t driverResult = kPoisonWord;
  VersionedBytes valid{2, policyBody(2, fullPolicy(2), 0xEE)};
};

TEST_P(AddPolicyV2, sends_the_packed_policy_of_every_version) {
  for (const std::uint32_t version : {0U, 1U, 2U}) {
    const auto content = fullPolicy(version);
    VersionedBytes record{version, policyBody(version, content, 0xEE)};
    driverResult = kPoisonWord;
    driver.expectSame(store().modifyCode).request(addRequest(packedPolicy(content)));
    EXPECT_EQ(add(record), kDone);
    EXPECT_EQ(driverResult, 0U);
  }
}

TEST_P(AddPolicyV2, passes_the_drivers_verdict_on_and_succeeds) {
  driver.expectSame(store().modifyCode).request(addRequest(packedPolicy(fullPolicy(2)))).replyWord(3980, 0xC0000001);
  EXPECT_EQ(add(valid), kDone);
  EXPECT_EQ(driverResult, 0xC0000001U);
}

TEST_P(AddPolicyV2, answers_1_in_both_places_when_the_request_fails) {
  driver.expectSame(store().modifyCode).anyRequest(4000).replyWord(3980, 7).fails();
  EXPECT_EQ(add(valid), kFailed);
  EXPECT_EQ(driverResult, 1U);
}

TEST_P(AddPolicyV2, needs_the_whole_body_of_the_version) {
  for (const std::uint32_t version : {0U, 1U, 2U}) {
    VersionedBytes record{version, policyBody(version, fullPolicy(version))};
    for (const std::uint64_t size : {std::uint64_t{1}, std::uint64_t{3}, std::uint64_t{4}, std::uint64_t{5},
                                     std::uint64_t{4 + layoutOf(version).size - 1}})
      EXPECT_EQ(add(record, size), kFailed) << version << ' ' << size;
  }
  EXPECT_EQ(driverResult, kPoisonWord);
}

TEST_P(AddPolicyV2, takes_more_bytes_than_the_version_needs) {
  VersionedBytes record{0, Record{3916}.put(0, policyBody(0, fullPolicy(0)).bytes())};
  driver.expectSame(store().modifyCode).request(addRequest(packedPolicy(fullPolicy(0))));
  EXPECT_EQ(add(record), kDone);
}

TEST_P(AddPolicyV2, knows_no_further_version) {
  for (const std::uint32_t version : {3U, 0xFFFFFFFFU}) {
    VersionedBytes record{version, policyBody(2, fullPolicy(2))};
    EXPECT_EQ(add(record), kFailed);
  }
  EXPECT_EQ(driverResult, kPoisonWord);
}

TEST_P(AddPolicyV2, sends_no_malformed_policy) {
  for (const std::uint32_t version : {0U, 1U, 2U}) {
    VersionedBytes record{version, policyBody(version, fullPolicy(version)).u32(layoutOf(version).conditions + 4, 5)};
    EXPECT_EQ(add(record), kFailed);
  }
  VersionedBytes withoutZero{2, policyBody(2, fullPolicy(2)).fill(448, 512, 0x21)};
  EXPECT_EQ(add(withoutZero), kFailed);
  VersionedBytes withoutNul{1, policyBody(1, fullPolicy(1)).fill(4, 64, 'n')};
  EXPECT_EQ(add(withoutNul), kFailed);
  EXPECT_EQ(driverResult, kPoisonWord);
}

TEST_P(AddPolicyV2, checks_its_arguments_before_anything_else) {
  const auto number = store().number;
  EXPECT_EQ(vqsPbAddPolicyV2(nullptr, valid, valid.size(), &driverResult, number), kInvalid);
  EXPECT_EQ(vqsPbAddPolicyV2(&closed, valid, valid.size(), &driverResult, number), kInvalid);
  EXPECT_EQ(vqsPbAddPolicyV2(session, nullptr, valid.size(), &driverResult, number), kInvalid);
  EXPECT_EQ(vqsPbAddPolicyV2(session, valid, 0, &driverResult, number), kInvalid);
  EXPECT_EQ(vqsPbAddPolicyV2(session, valid, valid.size(), nullptr, number), kInvalid);
  EXPECT_EQ(driverResult, kPoisonWord);
  EXPECT_EQ(faults.calls(Fault::kAllocation), 0);
}

TEST_P(AddPolicyV2, asks_the_process_heap_for_the_policy) {
  driver.expectSame(store().modifyCode).anyRequest(4000);
  WindowsCalls calls;
  EXPECT_EQ(add(valid), kDone);
  ASSERT_EQ(calls.of("HeapAlloc").size(), 1U);
  EXPECT_TRUE(calls.of("HeapAlloc")[0].ends_with(", 4000)")) << calls.of("HeapAlloc")[0];
  EXPECT_EQ(calls.of("HeapFree").size(), 1U);
}

TEST_P(AddPolicyV2, runs_out_of_memory_for_the_policy_with_3) {
  faults.fail(Fault::kAllocation, 1);
  EXPECT_EQ(add(valid), kNoMemory);
  WindowsCalls calls;
  calls.refuse("HeapAlloc");
  EXPECT_EQ(add(valid), kNoMemory);
  EXPECT_EQ(driverResult, kPoisonWord);
}

TEST_P(AddPolicyV2, runs_out_of_memory_for_the_request_with_1) {
  faults.fail(Fault::kAllocation, 2);
  EXPECT_EQ(add(valid), kFailed);
  EXPECT_EQ(driverResult, kPoisonWord);
  EXPECT_EQ(faults.calls(Fault::kAllocation), 2);
}

INSTANTIATE_TEST_SUITE_P(To, AddPolicyV2, ::testing::ValuesIn(allStores()), storeName);

class AddPolicyV2ToNoStore : public TidySessionTest {};

TEST_F(AddPolicyV2ToNoStore, is_refused_unsent) {
  VersionedBytes record{2, policyBody(2, fullPolicy(2))};
  for (const VqsPolicyStore store : {VqsPolicyStore{3}, VqsPolicyStore{4}, VqsPolicyStore{255}}) {
    std::uint32_t driverResult = kPoisonWord;
    EXPECT_EQ(vqsPbAddPolicyV2(session, record, record.size(), &driverResult, store), kInvalid);
    EXPECT_EQ(driverResult, kPoisonWord);
  }
}

TEST_F(AddPolicyV2ToNoStore, is_refused_for_its_policy_first) {
  VersionedBytes malformed{0, policyBody(0, fullPolicy(0)).u32(136 + 4, 5)};
  std::uint32_t driverResult = kPoisonWord;
  EXPECT_EQ(vqsPbAddPolicyV2(session, malformed, malformed.size(), &driverResult, 3), kFailed);
}

}  // namespace
}  // namespace test
