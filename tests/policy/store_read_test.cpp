// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstring>

#include "tests/policy/stores.h"
#include "tests/support/results.h"
#include "tests/support/windows_calls.h"

namespace test {
namespace {

class GetPolicies : public EveryStore {
 protected:
  /// A list with room for `capacity` policies, all poisoned.
  VqsPolicyList& listOf(std::uint32_t capacity) {
    policies.assign(capacity, poisoned<VqsPolicyV0>());
    list.count = capacity;
    list.policies = policies.data();
    list.countOnly = 0;
    return list;
  }
  vqsStatus get(std::uint32_t capacity) { return store().getPolicies(session, &listOf(capacity)); }

  void expectUntouchedFrom(std::size_t first) {
    for (std::size_t i = first; i < policies.size(); ++i) EXPECT_EQ(bytesOf(policies[i]), Bytes(804, kPoison)) << i;
  }
  /// The first policies are those of packedPolicies, the others have not been touched.
  void expectPolicies(std::uint32_t count) {
    for (std::uint32_t i = 0; i < count; ++i)
      EXPECT_EQ(difference(bytesOf(policies[i]), policyBody(0, numberedPolicy(100 + i), kPoison).bytes()), "") << i;
    expectUntouchedFrom(count);
  }

  std::vector<VqsPolicyV0> policies;
  VqsPolicyList list{};
};

TEST_P(GetPolicies, asks_for_the_count_and_then_for_chunks_of_five) {
  for (const std::uint32_t total : {0U, 1U, 4U, 5U, 6U, 10U, 11U, 12U}) {
    SCOPED_TRACE(total);
    const auto served = driver.requestsServed();
    expectCount(driver, store().readCode, total);
    expectChunks(driver, store().readCode, packedPolicies(total));
    EXPECT_EQ(get(total), kDone);
    EXPECT_EQ(driver.requestsServed() - served, 1 + (total + 4) / 5);
    EXPECT_EQ(list.count, total);
    expectPolicies(total);
  }
}

TEST_P(GetPolicies, reads_a_full_store_in_80_chunks) {
  expectCount(driver, store().readCode, 400);
  expectChunks(driver, store().readCode, packedPolicies(400));
  EXPECT_EQ(get(400), kDone);
  EXPECT_EQ(driver.requestsServed(), 81U);
  expectPolicies(400);
}

TEST_P(GetPolicies, reads_a_store_of_twelve_in_three_chunks_the_last_of_two) {
  const auto packed = packedPolicies(12);
  const auto chunk = [&](std::size_t first, std::size_t count) {
    Record answer{std::size_t{5} * 3972};
    for (std::size_t i = 0; i < count; ++i) answer.put(3972 * i, packed[first + i]);
    return answer.bytes();
  };
  const std::uint32_t code = store().readCode;
  driver.expectSame(code).request(Record{19872}.u8(0, 1)).replyWord(4, 12);
  driver.expectSame(code).request(Record{19872}.u32(4, 12).u32(8, 0)).replyAt(12, chunk(0, 5));
  driver.expectSame(code).request(Record{19872}.u32(4, 12).u32(8, 1).put(12, chunk(0, 5))).replyAt(12, chunk(5, 5));
  driver.expectSame(code).request(Record{19872}.u32(4, 12).u32(8, 2).put(12, chunk(5, 5))).replyAt(12, chunk(10, 2));
  EXPECT_EQ(get(12), kDone);
  expectPolicies(12);
}

// A caller that changes its list while it is read harms only what it has said is there.
TEST_P(GetPolicies, takes_the_list_as_it_found_it_first) {
  listOf(5);
  faults.before(Fault::kAllocation, 1, [&] { list.count = 50; });
  expectCount(driver, store().readCode, 12);
  EXPECT_EQ(store().getPolicies(session, &list), kInvalid);
  EXPECT_EQ(list.count, 5U);

  listOf(50);
  list.countOnly = 1;
  faults.before(Fault::kAllocation, 1, [&] { list.countOnly = 0; });
  expectCount(driver, store().readCode, 12);
  EXPECT_EQ(store().getPolicies(session, &list), kDone);
  EXPECT_EQ(list.count, 12U);
  expectUntouchedFrom(0);
}

TEST_P(GetPolicies, writes_as_many_policies_as_the_store_holds_and_says_so) {
  expectCount(driver, store().readCode, 2);
  expectChunks(driver, store().readCode, packedPolicies(2));
  EXPECT_EQ(get(7), kDone);
  EXPECT_EQ(list.count, 2U);
  expectPolicies(2);
}

TEST_P(GetPolicies, keeps_the_capacity_when_it_is_too_small) {
  for (const std::uint32_t total : {4U, 5U, 400U, 0xFFFFFFFFU}) {
    expectCount(driver, store().readCode, total);
    EXPECT_EQ(get(3), kInvalid);
    EXPECT_EQ(list.count, 3U);
    expectUntouchedFrom(0);
  }
}

TEST_P(GetPolicies, of_no_capacity_is_too_small_for_one_policy) {
  expectCount(driver, store().readCode, 1);
  EXPECT_EQ(get(0), kInvalid);
  EXPECT_EQ(list.count, 0U);
}

TEST_P(GetPolicies, only_counts_when_told_so) {
  for (const std::uint8_t countOnly : {std::uint8_t{1}, std::uint8_t{2}, std::uint8_t{0xFF}}) {
    for (const std::uint32_t total : {0U, 3U, 12U, 0xFFFFFFFFU}) {
      expectCount(driver, store().readCode, total);
      listOf(5).countOnly = countOnly;
      EXPECT_EQ(store().getPolicies(session, &list), kDone);
      EXPECT_EQ(list.count, total);
      EXPECT_EQ(list.countOnly, countOnly);
      expectUntouchedFrom(0);
    }
  }
}

TEST_P(GetPolicies, counts_without_an_array_and_whatever_the_capacity) {
  expectCount(driver, store().readCode, 9);
  list.count = 0xFFFFFFFF;
  list.countOnly = 1;
  EXPECT_EQ(store().getPolicies(session, &list), kDone);
  EXPECT_EQ(list.count, 9U);
}

TEST_P(GetPolicies, fails_at_the_count_and_keeps_the_capacity) {
  for (const std::uint8_t countOnly : {std::uint8_t{0}, std::uint8_t{1}}) {
    driver.expectSame(store().readCode).request(countRequest()).replyWord(4, 2).fails();
    listOf(3).countOnly = countOnly;
    EXPECT_EQ(store().getPolicies(session, &list), kFailed);
    EXPECT_EQ(list.count, 3U);
    expectUntouchedFrom(0);
  }
}

TEST_P(GetPolicies, fails_at_a_chunk_after_the_count_is_known) {
  const auto packed = packedPolicies(7);
  expectCount(driver, store().readCode, 7);
  driver.expectSame(store().readCode).request(chunkRequest(7, 0, {})).replyAt(12, packed[0]);
  driver.expectSame(store().readCode).request(chunkRequest(7, 1, packed[0])).replyAt(12, packed[5]).fails();
  EXPECT_EQ(get(10), kFailed);
  EXPECT_EQ(list.count, 7U);
  expectUntouchedFrom(0);
}

TEST_P(GetPolicies, without_an_array_fails_once_there_is_something_to_write) {
  expectCount(driver, store().readCode, 1);
  expectChunks(driver, store().readCode, packedPolicies(1));
  list.count = 2;
  EXPECT_EQ(store().getPolicies(session, &list), kFailed);
  EXPECT_EQ(list.count, 1U);
}

TEST_P(GetPolicies, without_an_array_succeeds_on_an_empty_store) {
  expectCount(driver, store().readCode, 0);
  list.count = 2;
  EXPECT_EQ(store().getPolicies(session, &list), kDone);
  EXPECT_EQ(list.count, 0U);
}

TEST_P(GetPolicies, stops_at_a_policy_that_version_0_cannot_hold) {
  auto packed = packedPolicies(4);
  packed[2] = Record{3972}.put(0, packed[2]).u8(3076 + 12, 1);
  expectCount(driver, store().readCode, 4);
  expectChunks(driver, store().readCode, packed);
  EXPECT_EQ(get(4), kFailed);
  EXPECT_EQ(list.count, 4U);
  for (std::uint32_t i = 0; i < 2; ++i)
    EXPECT_EQ(difference(bytesOf(policies[i]), policyBody(0, numberedPolicy(100 + i), kPoison).bytes()), "");
  expectUntouchedFrom(3);
}

TEST_P(GetPolicies, reads_the_list_at_these_offsets) {
  std::vector<VqsPolicyV0> array(1, poisoned<VqsPolicyV0>());
  const auto pointer = reinterpret_cast<std::uint64_t>(array.data());
  const Bytes before = Record{32, kPoison}.u32(0, 1).u64(8, pointer).u8(24, 0);
  Bytes bytes = before;
  expectCount(driver, store().readCode, 1);
  expectChunks(driver, store().readCode, packedPolicies(1));
  EXPECT_EQ(store().getPolicies(session, reinterpret_cast<VqsPolicyList*>(bytes.data())), kDone);
  EXPECT_EQ(difference(bytes, before), "");
  EXPECT_EQ(array[0].id, 100U);
}

TEST_P(GetPolicies, checks_its_arguments_before_anything_else) {
  EXPECT_EQ(store().getPolicies(nullptr, &listOf(1)), kInvalid);
  EXPECT_EQ(store().getPolicies(&closed, &listOf(1)), kInvalid);
  EXPECT_EQ(store().getPolicies(session, nullptr), kInvalid);
  EXPECT_EQ(list.count, 1U);
  EXPECT_EQ(faults.calls(Fault::kAllocation), 0);
}

TEST_P(GetPolicies, runs_out_of_memory_for_its_buffer_with_3) {
  faults.fail(Fault::kAllocation, 1);
  EXPECT_EQ(get(2), kNoMemory);
  listOf(2).countOnly = 1;
  faults.fail(Fault::kAllocation, 1);
  EXPECT_EQ(store().getPolicies(session, &list), kNoMemory);
  EXPECT_EQ(list.count, 2U);
}

TEST_P(GetPolicies, runs_out_of_memory_for_the_requests_with_1) {
  faults.fail(Fault::kAllocation, 2);
  EXPECT_EQ(get(2), kFailed);
  EXPECT_EQ(list.count, 2U);
  faults.fail(Fault::kAllocation, 3);
  EXPECT_EQ(get(2), kFailed);
  EXPECT_EQ(list.count, 2U);
  expectUntouchedFrom(0);
}

TEST_P(GetPolicies, allocates_three_times_whatever_the_store_holds) {
  expectCount(driver, store().readCode, 12);
  expectChunks(driver, store().readCode, packedPolicies(12));
  EXPECT_EQ(get(12), kDone);
  EXPECT_EQ(faults.calls(Fault::kAllocation), 3);
}

TEST_P(GetPolicies, of_the_highest_capacity_runs_out_of_memory_unsent) {
  WindowsCalls calls;
  calls.refuse("HeapAlloc");  // 17 TB, which some system might promise
  listOf(1).count = 0xFFFFFFFF;
  EXPECT_EQ(store().getPolicies(session, &list), kNoMemory);
  EXPECT_EQ(list.count, 0xFFFFFFFFU);
  expectUntouchedFrom(0);
}

INSTANTIATE_TEST_SUITE_P(Of, GetPolicies, ::testing::ValuesIn(allStores()), storeName);

class ReadBuffer : public TidySessionTest {
 protected:
  std::vector<VqsPolicyV0> policies = std::vector<VqsPolicyV0>(3, poisoned<VqsPolicyV0>());
  VqsPolicyList list{
      .count = 3, .reserved0 = {}, .policies = policies.data(), .reserved1 = {}, .countOnly = 0, .reserved2 = {}};
};

TEST_F(ReadBuffer, of_the_policy_builder_is_of_the_process_heap) {
  WindowsCalls calls;
  expectCount(driver, 0x80222064, 0);
  EXPECT_EQ(vqsPbGetPolicies(session, &list), kDone);
  list.count = 3;
  list.countOnly = 1;
  expectCount(driver, 0x80222064, 0);
  EXPECT_EQ(vqsPbGetPolicies(session, &list), kDone);
  const auto allocations = calls.of("HeapAlloc");
  ASSERT_EQ(allocations.size(), 2U);
  EXPECT_TRUE(allocations[0].ends_with(", 11924)")) << allocations[0];
  EXPECT_TRUE(allocations[1].ends_with(", 8)")) << allocations[1];
  EXPECT_EQ(calls.of("HeapFree").size(), 2U);
}

TEST_F(ReadBuffer, of_the_policy_builder_does_not_wrap_around) {
  WindowsCalls calls;
  calls.refuse("HeapAlloc");
  list.count = 0xFFFFFFFF;
  EXPECT_EQ(vqsPbGetPolicies(session, &list), kNoMemory);
  EXPECT_TRUE(calls.of("HeapAlloc").at(0).ends_with(", 0xf83fffff084)")) << calls.of("HeapAlloc")[0];
}

class RuntimeReadBuffer : public EveryStore {};

TEST_P(RuntimeReadBuffer, counts_the_capacity_twice) {
  WindowsCalls calls;
  std::vector<VqsPolicyV0> policies(3, poisoned<VqsPolicyV0>());
  VqsPolicyList list{};
  list.count = 3;
  list.policies = policies.data();
  expectCount(driver, store().readCode, 0);
  EXPECT_EQ(store().getPolicies(session, &list), kDone);
  EXPECT_TRUE(calls.of("HeapAlloc").empty());
  // 3 x 11924, and a request of 19872.
  EXPECT_EQ(faults.peakBytes(), 55644U);
}

TEST_P(RuntimeReadBuffer, is_one_head_when_counting) {
  VqsPolicyList list{};
  list.count = 3;
  list.countOnly = 1;
  expectCount(driver, store().readCode, 0);
  EXPECT_EQ(store().getPolicies(session, &list), kDone);
  // 8, and a request of 19872.
  EXPECT_EQ(faults.peakBytes(), 19880U);
}

TEST_P(RuntimeReadBuffer, is_one_head_for_no_capacity) {
  VqsPolicyList list{};
  expectCount(driver, store().readCode, 0);
  EXPECT_EQ(store().getPolicies(session, &list), kDone);
  EXPECT_EQ(faults.peakBytes(), 19880U);
}

INSTANTIATE_TEST_SUITE_P(Of, RuntimeReadBuffer, ::testing::Values(allStores()[1], allStores()[2]), storeName);

}  // namespace
}  // namespace test
