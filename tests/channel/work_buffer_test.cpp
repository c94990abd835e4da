// SPDX-License-Identifier: Apache-2.0
#include "src/channel/work_buffer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>

#include "tests/support/faults.h"
#include "tests/support/windows_calls.h"

namespace test {
namespace {

constexpr std::size_t kMost = 0xFFFFFFFFFFFFFFFF;

TEST(SaturatingProduct, is_the_product_while_it_fits) {
  EXPECT_EQ(vqs::saturatingProduct(61, 2), 122U);
  EXPECT_EQ(vqs::saturatingProduct(0, 3972), 0U);
  EXPECT_EQ(vqs::saturatingProduct(3972, 0), 0U);
  EXPECT_EQ(vqs::saturatingProduct(0x7FFFFFFFFFFFFFFF, 2), 0xFFFFFFFFFFFFFFFEU);
}

TEST(SaturatingProduct, stops_at_the_highest_size) {
  EXPECT_EQ(vqs::saturatingProduct(0x8000000000000000, 2), kMost);
  EXPECT_EQ(vqs::saturatingProduct(kMost, kMost), kMost);
}

TEST(WorkBuffer, what_saturates_cannot_be_allocated) {
  const Faults faults;
  // Volatile, since the compiler refuses a size that it can see to be impossible.
  const volatile std::size_t count = kMost;
  const vqs::RuntimeBuffer buffer{vqs::saturatingProduct(count, 2)};
  EXPECT_FALSE(static_cast<bool>(buffer));
}

TEST(WorkBuffer, is_zero_and_released_with_its_scope) {
  const Faults faults;
  {
    const vqs::RuntimeBuffer buffer{300};
    ASSERT_TRUE(static_cast<bool>(buffer));
    ASSERT_EQ(buffer.bytes().size(), 300U);
    EXPECT_TRUE(std::ranges::all_of(buffer.bytes(), [](std::byte byte) { return byte == std::byte{0}; }));
    EXPECT_EQ(faults.outstanding(), 1);
  }
  EXPECT_EQ(faults.outstanding(), 0);
}

TEST(WorkBuffer, leaves_what_was_handed_over_to_its_new_owner) {
  const Faults faults;
  // Volatile, or the compiler sees that nothing needs the memory and leaves it out.
  void* volatile memory = nullptr;
  {
    vqs::RuntimeBuffer buffer{16};
    memory = buffer.handOver();
    EXPECT_FALSE(static_cast<bool>(buffer));
  }
  EXPECT_EQ(faults.outstanding(), 1);
  vqs::RuntimeMemory::release(memory);
  EXPECT_EQ(faults.outstanding(), 0);
}

TEST(WorkBuffer, of_the_process_heap_goes_back_to_it) {
  const Faults faults;
  WindowsCalls calls;
  {
    const vqs::ProcessHeapBuffer buffer{3972};
    ASSERT_TRUE(static_cast<bool>(buffer));
    EXPECT_TRUE(std::ranges::all_of(buffer.bytes(), [](std::byte byte) { return byte == std::byte{0}; }));
  }
  const std::vector<std::string> expected = {"HeapAlloc(8, 3972)", "HeapFree(0)"};
  EXPECT_EQ(calls.all(), expected);
  EXPECT_EQ(faults.outstanding(), 0);
}

TEST(WorkBuffer, of_the_process_heap_that_is_not_cleared_goes_back_to_it) {
  const Faults faults;
  WindowsCalls calls;
  {
    const vqs::UnclearedProcessHeapBuffer buffer{11924};
    ASSERT_TRUE(static_cast<bool>(buffer));
  }
  const std::vector<std::string> expected = {"HeapAlloc(0, 11924)", "HeapFree(0)"};
  EXPECT_EQ(calls.all(), expected);
  EXPECT_EQ(faults.outstanding(), 0);
}

TEST(WorkBuffer, is_false_when_the_process_heap_refuses) {
  WindowsCalls calls;
  calls.refuse("HeapAlloc");
  {
    const vqs::ProcessHeapBuffer buffer{8};
    EXPECT_FALSE(static_cast<bool>(buffer));
  }
  EXPECT_TRUE(calls.of("HeapFree").empty());
}

struct Pair {
  std::uint32_t first;
  std::uint64_t second;
};

TEST(MemoryForARecord, is_asked_for_and_given_back) {
  Faults faults;
  EXPECT_TRUE(vqs::isThereMemoryFor<Pair>());
  EXPECT_EQ(faults.calls(Fault::kAllocation), 1);
  EXPECT_EQ(faults.peakBytes(), 16U);
  EXPECT_EQ(faults.outstanding(), 0);
  faults.fail(Fault::kAllocation, 1);
  EXPECT_FALSE(vqs::isThereMemoryFor<Pair>());
}

TEST(HeapRecord, is_zero_and_released_with_its_scope) {
  const Faults faults;
  {
    const vqs::HeapRecord<Pair> record;
    ASSERT_TRUE(static_cast<bool>(record));
    EXPECT_EQ(record->first, 0U);
    EXPECT_EQ((*record).second, 0U);
    EXPECT_EQ(faults.outstanding(), 1);
  }
  EXPECT_EQ(faults.outstanding(), 0);
}

TEST(HeapRecord, is_false_without_memory) {
  Faults faults;
  faults.fail(Fault::kAllocation, 1);
  const vqs::HeapRecord<Pair> record;
  EXPECT_FALSE(static_cast<bool>(record));
}

TEST(HeapRecord, is_gone_when_reset_or_handed_over) {
  const Faults faults;
  vqs::HeapRecord<Pair> record;
  record->second = 7;
  Pair* const handed = record.handOver();
  EXPECT_FALSE(static_cast<bool>(record));
  EXPECT_EQ(handed->second, 7U);
  EXPECT_EQ(faults.outstanding(), 1);
  vqs::RuntimeMemory::release(handed);
  vqs::HeapRecord<Pair> other;
  other.reset();
  EXPECT_FALSE(static_cast<bool>(other));
  EXPECT_EQ(faults.outstanding(), 0);
}

TEST(HeapRecord, of_the_process_heap_goes_back_to_it) {
  WindowsCalls calls;
  {
    const vqs::ProcessHeapRecord<Pair> record;
  }
  const std::vector<std::string> expected = {"HeapAlloc(8, 16)", "HeapFree(0)"};
  EXPECT_EQ(calls.all(), expected);
}

}  // namespace
}  // namespace test
