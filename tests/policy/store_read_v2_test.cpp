// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/policy/stores.h"
#include "tests/support/results.h"
#include "tests/support/windows_calls.h"

namespace test {
namespace {

/// A list and its bodies, in exactly as many bytes as they take; the bodies are poisoned.
class ListV2 {
 public:
  ListV2(std::uint32_t version, std::uint32_t count, std::uint64_t size)
      : bytes_(Record{16 + size, kPoison}.u32(0, version).u32(4, count).u64(8, size)) {}
  operator VqsPolicyListV2*() {  // NOLINT(google-explicit-constructor): stands for the pointer
    return reinterpret_cast<VqsPolicyListV2*>(bytes_.data());
  }
  VqsPolicyListV2* operator->() { return *this; }
  [[nodiscard]] const Bytes& bytes() const { return bytes_; }
  [[nodiscard]] Bytes body(std::size_t index, std::size_t size) const {
    const auto first = bytes_.begin() + static_cast<std::ptrdiff_t>(16 + index * size);
    return {first, first + static_cast<std::ptrdiff_t>(size)};
  }

 private:
  Bytes bytes_;
};

class GetPoliciesV2 : public EveryStore {
 protected:
  vqsStatus get(VqsPolicyListV2* list) { return vqsPbGetPoliciesV2(session, list, store().number); }
  static ListV2 listOf(std::uint32_t version, std::uint32_t count) {
    return {version, count, count * layoutOf(version).size};
  }
  static void expectBody(const ListV2& list, std::uint32_t version, std::uint32_t index) {
    EXPECT_EQ(difference(list.body(index, layoutOf(version).size),
                         policyBody(version, numberedPolicy(100 + index), kPoison).bytes()),
              "");
  }
  static void expectUntouched(const ListV2& list, const ListV2& before) {
    EXPECT_EQ(difference(list.bytes(), before.bytes()), "");
  }
};

void expectEmptyPolicy(const Bytes& body, const Layout& layout) {
  EXPECT_EQ(body[layout.name], 0);
  const auto zeros = [&](std::size_t offset, std::size_t count) {
    for (std::size_t i = offset; i < offset + count; ++i) EXPECT_EQ(body[i], 0) << i;
  };
  zeros(layout.description, 33);
  zeros(layout.id, 10);
  zeros(layout.param1, 12);
  zeros(layout.actionCount, 4);
  zeros(layout.textCount, 4);
  EXPECT_EQ(body[layout.conditions], kPoison);
  EXPECT_EQ(body[layout.texts], kPoison);
  EXPECT_EQ(body[layout.actions], kPoison);
}

TEST_P(GetPoliciesV2, only_counts_for_a_count_of_zero) {
  for (const std::uint32_t total : {0U, 1U, 12U, 0xFFFFFFFFU}) {
    ListV2 list{2, 0, 3916};
    expectCount(driver, store().readCode, total);
    EXPECT_EQ(get(list), kDone);
    EXPECT_EQ(list->count, total);
    list->count = 0;
    expectUntouched(list, {2, 0, 3916});
  }
}

TEST_P(GetPoliciesV2, counts_without_looking_at_size_or_version) {
  ListV2 list{9, 0, 0};
  expectCount(driver, store().readCode, 4);
  EXPECT_EQ(get(list), kDone);
  EXPECT_EQ(list->count, 4U);
}

TEST_P(GetPoliciesV2, lays_the_bodies_of_every_version_behind_the_head) {
  for (const std::uint32_t version : {0U, 1U, 2U}) {
    for (const std::uint32_t total : {1U, 5U, 6U, 12U}) {
      auto list = listOf(version, total);
      expectCount(driver, store().readCode, total);
      expectChunks(driver, store().readCode, packedPolicies(total));
      EXPECT_EQ(get(list), kDone);
      EXPECT_EQ(list->count, total);
      EXPECT_EQ(list->size, total * layoutOf(version).size);
      for (std::uint32_t i = 0; i < total; ++i) expectBody(list, version, i);
    }
  }
}

TEST_P(GetPoliciesV2, reads_a_full_store_in_80_chunks) {
  auto list = listOf(2, 400);
  expectCount(driver, store().readCode, 400);
  expectChunks(driver, store().readCode, packedPolicies(400));
  EXPECT_EQ(get(list), kDone);
  EXPECT_EQ(driver.requestsServed(), 81U);
  for (std::uint32_t i = 0; i < 400; ++i) expectBody(list, 2, i);
}

// The capacity decides, not the store's count: the bodies beyond come out as empty policies.
TEST_P(GetPoliciesV2, fills_the_capacity_with_empty_policies) {
  for (const std::uint32_t version : {0U, 1U, 2U}) {
    auto list = listOf(version, 5);
    expectCount(driver, store().readCode, 2);
    expectChunks(driver, store().readCode, packedPolicies(2));
    EXPECT_EQ(get(list), kDone);
    EXPECT_EQ(list->count, 5U);
    expectBody(list, version, 0);
    expectBody(list, version, 1);
    for (const std::size_t i : {2U, 3U, 4U}) expectEmptyPolicy(list.body(i, layoutOf(version).size), layoutOf(version));
  }
}

// A caller that changes its list while it is read harms only what it has said is there.
TEST_P(GetPoliciesV2, takes_the_capacity_that_it_found_first) {
  for (const char* call : {"HeapAlloc", "DeviceIoControl"}) {
    ListV2 list{2, 5, 50 * 3916};
    WindowsCalls calls;
    calls.before(call, [&] { list->count = 50; });
    expectCount(driver, store().readCode, 5);
    expectChunks(driver, store().readCode, packedPolicies(5));
    EXPECT_EQ(get(list), kDone);
    for (std::uint32_t i = 0; i < 5; ++i) expectBody(list, 2, i);
    EXPECT_EQ(list.body(5, 3916), Bytes(3916, kPoison));
  }
}

TEST_P(GetPoliciesV2, takes_an_answer_for_no_longer_than_it_found_first) {
  ListV2 list{2, 5, 50 * 3916};
  WindowsCalls calls;
  calls.before("HeapAlloc", [&] { list->count = 50; });
  expectCount(driver, store().readCode, 12);
  EXPECT_EQ(get(list), kInvalid);
}

TEST_P(GetPoliciesV2, of_an_empty_store_is_all_empty_policies) {
  auto list = listOf(1, 2);
  expectCount(driver, store().readCode, 0);
  EXPECT_EQ(get(list), kDone);
  EXPECT_EQ(list->count, 2U);
  for (const std::size_t i : {0U, 1U}) expectEmptyPolicy(list.body(i, 1448), kVersion1);
}

TEST_P(GetPoliciesV2, keeps_everything_when_the_capacity_is_too_small) {
  auto list = listOf(0, 3);
  expectCount(driver, store().readCode, 4);
  EXPECT_EQ(get(list), kInvalid);
  expectUntouched(list, listOf(0, 3));
}

TEST_P(GetPoliciesV2, looks_at_the_size_after_the_requests) {
  for (const std::uint32_t version : {0U, 1U, 2U}) {
    for (const std::uint64_t size :
         {std::uint64_t{0}, std::uint64_t{1}, std::uint64_t{2 * layoutOf(version).size - 1}}) {
      ListV2 list{version, 2, size};
      expectCount(driver, store().readCode, 2);
      expectChunks(driver, store().readCode, packedPolicies(2));
      EXPECT_EQ(get(list), kFailed);
      expectUntouched(list, {version, 2, size});
    }
  }
}

TEST_P(GetPoliciesV2, needs_room_for_the_capacity_not_for_the_store) {
  ListV2 list{0, 3, 2 * 804};
  expectCount(driver, store().readCode, 2);
  expectChunks(driver, store().readCode, packedPolicies(2));
  EXPECT_EQ(get(list), kFailed);
  expectUntouched(list, {0, 3, 2 * 804});
}

TEST_P(GetPoliciesV2, leaves_what_lies_behind_the_bodies) {
  ListV2 list{0, 1, 900};
  expectCount(driver, store().readCode, 1);
  expectChunks(driver, store().readCode, packedPolicies(1));
  EXPECT_EQ(get(list), kDone);
  expectBody(list, 0, 0);
  const Bytes rest(list.bytes().begin() + 16 + 804, list.bytes().end());
  EXPECT_EQ(rest, Bytes(96, kPoison));
}

TEST_P(GetPoliciesV2, looks_at_the_version_after_the_requests) {
  for (const std::uint32_t version : {3U, 0xFFFFFFFFU}) {
    ListV2 list{version, 1, 3916};
    expectCount(driver, store().readCode, 1);
    expectChunks(driver, store().readCode, packedPolicies(1));
    EXPECT_EQ(get(list), kFailed);
    expectUntouched(list, {version, 1, 3916});
  }
}

TEST_P(GetPoliciesV2, stops_at_a_malformed_policy) {
  for (const std::uint32_t version : {0U, 1U, 2U}) {
    auto packed = packedPolicies(3);
    packed[1] = Record{3972}.put(0, packed[1]).u32(192, 6);
    auto list = listOf(version, 3);
    expectCount(driver, store().readCode, 3);
    expectChunks(driver, store().readCode, packed);
    EXPECT_EQ(get(list), kFailed);
    EXPECT_EQ(list->count, 3U);
    expectBody(list, version, 0);
    EXPECT_EQ(list.body(2, layoutOf(version).size), Bytes(layoutOf(version).size, kPoison));
  }
}

TEST_P(GetPoliciesV2, fails_at_a_request_and_keeps_everything) {
  auto list = listOf(1, 6);
  driver.expectSame(store().readCode).request(countRequest()).replyWord(4, 1).fails();
  EXPECT_EQ(get(list), kFailed);
  expectCount(driver, store().readCode, 6);
  driver.expectSame(store().readCode).request(chunkRequest(6, 0, {}));
  driver.expectSame(store().readCode).request(chunkRequest(6, 1, {})).fails();
  EXPECT_EQ(get(list), kFailed);
  expectUntouched(list, listOf(1, 6));
}

TEST_P(GetPoliciesV2, fails_at_the_count_alone_and_keeps_zero) {
  ListV2 list{0, 0, 0};
  driver.expectSame(store().readCode).request(countRequest()).replyWord(4, 7).fails();
  EXPECT_EQ(get(list), kFailed);
  EXPECT_EQ(list->count, 0U);
}

TEST_P(GetPoliciesV2, checks_its_arguments_before_anything_else) {
  auto list = listOf(0, 1);
  EXPECT_EQ(vqsPbGetPoliciesV2(nullptr, list, store().number), kInvalid);
  EXPECT_EQ(vqsPbGetPoliciesV2(&closed, list, store().number), kInvalid);
  EXPECT_EQ(vqsPbGetPoliciesV2(session, nullptr, store().number), kInvalid);
  expectUntouched(list, listOf(0, 1));
  EXPECT_EQ(faults.calls(Fault::kAllocation), 0);
}

TEST_P(GetPoliciesV2, reads_into_the_process_heap) {
  WindowsCalls calls;
  for (const std::uint32_t count : {3U, 0U}) {
    auto list = listOf(0, count);
    expectCount(driver, store().readCode, 0);
    EXPECT_EQ(get(list), kDone);
  }
  const auto allocations = calls.of("HeapAlloc");
  ASSERT_EQ(allocations.size(), 2U);
  EXPECT_TRUE(allocations[0].ends_with(", 11924)")) << allocations[0];
  EXPECT_TRUE(allocations[1].ends_with(", 8)")) << allocations[1];
  EXPECT_EQ(calls.of("HeapFree").size(), 2U);
}

TEST_P(GetPoliciesV2, of_the_highest_capacity_runs_out_of_memory_unsent) {
  WindowsCalls calls;
  calls.refuse("HeapAlloc");
  ListV2 list{2, 0xFFFFFFFF, 0};
  EXPECT_EQ(get(list), kNoMemory);
  EXPECT_TRUE(calls.of("HeapAlloc").at(0).ends_with(", 0xf83fffff084)")) << calls.of("HeapAlloc")[0];
  expectUntouched(list, {2, 0xFFFFFFFF, 0});
}

TEST_P(GetPoliciesV2, runs_out_of_memory_for_its_buffer_with_3_and_for_the_requests_with_1) {
  auto list = listOf(0, 2);
  faults.fail(Fault::kAllocation, 1);
  EXPECT_EQ(get(list), kNoMemory);
  faults.fail(Fault::kAllocation, 2);
  EXPECT_EQ(get(list), kFailed);
  faults.fail(Fault::kAllocation, 3);
  EXPECT_EQ(get(list), kFailed);
  expectUntouched(list, listOf(0, 2));
  EXPECT_EQ(faults.calls(Fault::kAllocation), 6);
}

INSTANTIATE_TEST_SUITE_P(Of, GetPoliciesV2, ::testing::ValuesIn(allStores()), storeName);

class GetPoliciesV2OfNoStore : public TidySessionTest {};

TEST_F(GetPoliciesV2OfNoStore, is_refused_unsent) {
  for (const VqsPolicyStore store : {VqsPolicyStore{3}, VqsPolicyStore{255}}) {
    for (const std::uint32_t count : {0U, 1U}) {
      ListV2 list{0, count, 804};
      EXPECT_EQ(vqsPbGetPoliciesV2(session, list, store), kInvalid);
      EXPECT_EQ(list->count, count);
    }
  }
}

}  // namespace
}  // namespace test
