// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/policy/stores.h"
#include "tests/support/results.h"
#include "tests/support/windows_calls.h"

namespace test {
namespace {

constexpr std::uint32_t kLookup = 0x80222040;

/// 3984 bytes: the key at 4, the store at 3980, all else zero.
Record lookupRequest(std::uint32_t key, std::uint32_t store) { return Record{3984}.u32(4, key).u32(3980, store); }

class PolicyById : public TidySessionTest {
 protected:
  vqsStatus get(std::uint32_t id) { return vqsPbIDGetPolicy(session, id, &policy); }
  Exchange& expectLookup(std::uint32_t id, std::source_location where = std::source_location::current()) {
    return driver.expectSplit(kLookup, where).request(lookupRequest(id, 0)).answerLength(3972);
  }
  void expectUntouched() { EXPECT_EQ(bytesOf(policy), Bytes(804, kPoison)); }

  VqsPolicyV0 policy = poisoned<VqsPolicyV0>();
};

TEST_F(PolicyById, asks_the_policy_builder_store_for_the_id) {
  const auto content = fullPolicy(0);
  expectLookup(0x71727374).reply(packedPolicy(content));
  EXPECT_EQ(get(0x71727374), kDone);
  EXPECT_EQ(difference(bytesOf(policy), policyBody(0, content, kPoison).bytes()), "");
}

TEST_F(PolicyById, asks_for_any_id) {
  for (const std::uint32_t id : {0U, 0xFFFFFFFFU}) {
    expectLookup(id).reply(packedPolicy(fullPolicy(0)));
    EXPECT_EQ(get(id), kDone);
  }
}

TEST_F(PolicyById, has_a_zeroed_place_for_the_answer) {
  auto head = packedPolicy(numberedPolicy(5)).bytes();
  head.resize(180);
  expectLookup(5).reply(head);
  EXPECT_EQ(get(5), kDone);
  EXPECT_EQ(policy.id, 5U);
  EXPECT_EQ(policy.param2, 0U);
  EXPECT_EQ(policy.conditionCount, 0U);
  EXPECT_EQ(policy.textCount, 0U);
  EXPECT_EQ(policy.actionCount, 0U);
}

TEST_F(PolicyById, fails_with_the_request_and_writes_nothing) {
  expectLookup(5).reply(packedPolicy(numberedPolicy(5))).fails();
  EXPECT_EQ(get(5), kFailed);
  expectUntouched();
}

TEST_F(PolicyById, fails_for_a_policy_that_version_0_cannot_hold) {
  expectLookup(5).reply(packedPolicy(fullPolicy(1)));
  EXPECT_EQ(get(5), kFailed);
  expectLookup(5).reply(packedPolicy(fullPolicy(0)).u32(184, 16));
  EXPECT_EQ(get(5), kFailed);
  auto wide = numberedPolicy(5);
  wide.name[0] = 0x3042;
  expectLookup(5).reply(packedPolicy(wide));
  EXPECT_EQ(get(5), kFailed);
}

TEST_F(PolicyById, checks_its_arguments_before_anything_else) {
  EXPECT_EQ(vqsPbIDGetPolicy(nullptr, 1, &policy), kInvalid);
  EXPECT_EQ(vqsPbIDGetPolicy(&closed, 1, &policy), kInvalid);
  EXPECT_EQ(vqsPbIDGetPolicy(session, 1, nullptr), kInvalid);
  expectUntouched();
  EXPECT_EQ(faults.calls(Fault::kAllocation), 0);
}

TEST_F(PolicyById, runs_out_of_memory_with_3_unsent) {
  faults.fail(Fault::kAllocation, 1);
  EXPECT_EQ(get(1), kNoMemory);
  expectUntouched();
}

TEST_F(PolicyById, allocates_the_policy_alone) {
  expectLookup(1).reply(packedPolicy(fullPolicy(0)));
  EXPECT_EQ(get(1), kDone);
  EXPECT_EQ(faults.calls(Fault::kAllocation), 1);
}

class PolicyByPriority : public EveryStore {
 protected:
  vqsStatus get(VersionedBytes& record, std::uint64_t size) {
    return vqsPbGetPolicyByPrioV2(session, 0x71727374, record, size, store().number);
  }
  vqsStatus get(VersionedBytes& record) { return get(record, record.size()); }
  Exchange& expectLookup(std::source_location where = std::source_location::current()) {
    return driver.expectSplit(kLookup, where).request(lookupRequest(0x71727374, store().number)).answerLength(3972);
  }
  static VersionedBytes poisonedRecord(std::uint32_t version) {
    return {version, Bytes(layoutOf(version > 2 ? 2 : version).size, kPoison)};
  }
  static void expectUntouched(const VersionedBytes& record, std::uint32_t version) {
    EXPECT_EQ(difference(record.bytes(), poisonedRecord(version).bytes()), "");
  }
};

TEST_P(PolicyByPriority, unpacks_into_the_version_that_the_record_asks_for) {
  for (const std::uint32_t version : {0U, 1U, 2U}) {
    const auto content = fullPolicy(version);
    auto record = poisonedRecord(version);
    expectLookup().reply(packedPolicy(content));
    EXPECT_EQ(get(record), kDone);
    const VersionedBytes expected{version, policyBody(version, content, kPoison)};
    EXPECT_EQ(difference(record.bytes(), expected.bytes()), "");
  }
}

TEST_P(PolicyByPriority, has_a_zeroed_place_for_the_answer) {
  auto record = poisonedRecord(2);
  expectLookup();
  EXPECT_EQ(get(record), kDone);
  const VersionedBytes expected{2, policyBody(2, emptyPolicy(), kPoison)};
  EXPECT_EQ(difference(record.bytes(), expected.bytes()), "");
}

// The request comes first, so that it is sent for a record that nothing fits in.
TEST_P(PolicyByPriority, looks_at_the_size_after_the_request) {
  for (const std::uint32_t version : {0U, 1U, 2U}) {
    for (const std::uint64_t size : {std::uint64_t{1}, std::uint64_t{3}, std::uint64_t{4}, std::uint64_t{5},
                                     std::uint64_t{4 + layoutOf(version).size - 1}}) {
      auto record = poisonedRecord(version);
      expectLookup().reply(packedPolicy(fullPolicy(version)));
      EXPECT_EQ(get(record, size), kFailed) << size;
      expectUntouched(record, version);
    }
  }
}

TEST_P(PolicyByPriority, looks_at_the_version_after_the_request) {
  for (const std::uint32_t version : {3U, 0xFFFFFFFFU}) {
    auto record = poisonedRecord(version);
    expectLookup().reply(packedPolicy(fullPolicy(2)));
    EXPECT_EQ(get(record), kFailed);
    expectUntouched(record, version);
  }
}

TEST_P(PolicyByPriority, fails_with_the_request_whatever_the_record) {
  for (const std::uint32_t version : {0U, 2U, 3U}) {
    auto record = poisonedRecord(version);
    expectLookup().reply(packedPolicy(fullPolicy(0))).fails();
    EXPECT_EQ(get(record), kFailed);
    expectUntouched(record, version);
  }
}

TEST_P(PolicyByPriority, leaves_what_lies_behind_the_body) {
  VersionedBytes record{0, Bytes(900, kPoison)};
  expectLookup().reply(packedPolicy(fullPolicy(0)));
  EXPECT_EQ(get(record), kDone);
  const Bytes rest(record.bytes().begin() + 4 + 804, record.bytes().end());
  EXPECT_EQ(rest, Bytes(96, kPoison));
}

TEST_P(PolicyByPriority, fails_for_a_malformed_policy) {
  for (const std::uint32_t version : {0U, 1U, 2U}) {
    auto record = poisonedRecord(version);
    expectLookup().reply(packedPolicy(fullPolicy(version)).u32(192, 6));
    EXPECT_EQ(get(record), kFailed);
  }
}

TEST_P(PolicyByPriority, checks_its_arguments_before_anything_else) {
  auto record = poisonedRecord(0);
  const auto number = store().number;
  EXPECT_EQ(vqsPbGetPolicyByPrioV2(nullptr, 1, record, 808, number), kInvalid);
  EXPECT_EQ(vqsPbGetPolicyByPrioV2(&closed, 1, record, 808, number), kInvalid);
  EXPECT_EQ(vqsPbGetPolicyByPrioV2(session, 1, nullptr, 808, number), kInvalid);
  EXPECT_EQ(vqsPbGetPolicyByPrioV2(session, 1, record, 0, number), kInvalid);
  expectUntouched(record, 0);
  EXPECT_EQ(faults.calls(Fault::kAllocation), 0);
}

TEST_P(PolicyByPriority, takes_its_buffer_of_the_process_heap) {
  WindowsCalls calls;
  auto record = poisonedRecord(2);
  expectLookup();
  EXPECT_EQ(get(record), kDone);
  ASSERT_EQ(calls.of("HeapAlloc").size(), 1U);
  EXPECT_TRUE(calls.of("HeapAlloc")[0].ends_with(", 3972)")) << calls.of("HeapAlloc")[0];
  EXPECT_EQ(calls.of("HeapFree").size(), 1U);
  EXPECT_EQ(faults.calls(Fault::kAllocation), 1);
}

TEST_P(PolicyByPriority, runs_out_of_memory_with_3_unsent) {
  auto record = poisonedRecord(0);
  faults.fail(Fault::kAllocation, 1);
  EXPECT_EQ(get(record), kNoMemory);
  expectUntouched(record, 0);
}

INSTANTIATE_TEST_SUITE_P(Of, PolicyByPriority, ::testing::ValuesIn(allStores()), storeName);

class PolicyByPriorityOfNoStore : public TidySessionTest {};

TEST_F(PolicyByPriorityOfNoStore, is_for_the_driver_to_judge) {
  for (const std::uint8_t store : {std::uint8_t{3}, std::uint8_t{0xFF}}) {
    VersionedBytes record{0, Bytes(804, kPoison)};
    driver.expectSplit(kLookup).request(lookupRequest(9, store)).answerLength(3972).fails();
    EXPECT_EQ(vqsPbGetPolicyByPrioV2(session, 9, record, record.size(), store), kFailed);
  }
}

}  // namespace
}  // namespace test
