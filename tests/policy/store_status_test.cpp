// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstring>

#include "tests/policy/stores.h"
#include "tests/support/results.h"

namespace test {
namespace {

/// The first request: only count.
Record countStatusRequest() { return modifyRequest(4).u8(3984, 1); }

/// The second request: as long as its entries need.
Record fullStatusRequest(std::uint32_t count) {
  return Record{4000 + std::size_t{140} * count}.u32(0, 4).u32(3976, count);
}

/// An entry of the driver: its values differ by `number`, the name is followed by garbage.
Record entry(std::uint8_t number, const std::string& name) {
  Record record{140, 0xEE};
  record.u32(0, 0x81828300U + number).u8(4, static_cast<std::uint8_t>(0x10 + number));
  record.u8(5, static_cast<std::uint8_t>(0x20 + number)).u32(8, 0x91929300U + number).text(12, name);
  if (name.size() < 128) record.u8(12 + name.size(), 0);
  return record;
}

class GetStatus : public EveryStore {
 protected:
  VqsPolicyStatusList& listOf(std::size_t capacity) {
    entries.assign(capacity, poisoned<VqsPolicyStatus>());
    list = poisoned<VqsPolicyStatusList>();
    list.entries = entries.data();
    list.countOnly = 0;
    return list;
  }
  void expectStatusCount(std::uint32_t count, std::source_location where = std::source_location::current()) {
    driver.expectSame(store().modifyCode, where).request(countStatusRequest()).replyWord(3976, count);
  }
  Exchange& expectStatus(std::uint32_t count, std::source_location where = std::source_location::current()) {
    return driver.expectSame(store().modifyCode, where).request(fullStatusRequest(count));
  }
  vqsStatus get() { return store().getStatus(session, &list); }

  void expectEntry(std::size_t index, std::uint8_t number, const std::string& name) {
    const auto& status = entries[index];
    EXPECT_EQ(status.statusValue, 0x81828300U + number);
    EXPECT_EQ(status.statusFlagA, 0x10 + number);
    EXPECT_EQ(status.statusFlagB, 0x20 + number);
    EXPECT_EQ(status.statusValue2, 0x91929300U + number);
    EXPECT_STREQ(status.name, name.c_str());
  }
  void expectUntouchedEntries() {
    for (const auto& status : entries) EXPECT_EQ(bytesOf(status), Bytes(80, kPoison));
  }

  std::vector<VqsPolicyStatus> entries;
  VqsPolicyStatusList list{};
};

TEST_P(GetStatus, asks_for_the_count_and_then_for_the_entries) {
  listOf(3);
  expectStatusCount(3);
  expectStatus(3)
      .replyAt(3996, entry(1, "first"))
      .replyAt(3996 + 140, entry(2, "second"))
      .replyAt(3996 + 280, entry(3, "third"));
  EXPECT_EQ(get(), kDone);
  expectEntry(0, 1, "first");
  expectEntry(1, 2, "second");
  expectEntry(2, 3, "third");
}

TEST_P(GetStatus, of_one_policy_takes_4140_bytes) {
  listOf(1);
  expectStatusCount(1);
  driver.expectSame(store().modifyCode)
      .request(Record{4140}.u32(0, 4).u32(3976, 1))
      .replyAt(3996, entry(7, std::string(63, 'n')));
  EXPECT_EQ(get(), kDone);
  const Bytes expected = Record{80, kPoison}
                             .text(4, std::string(63, 'n'))
                             .u8(67, 0)
                             .u32(68, 0x81828307)
                             .u8(72, 0x17)
                             .u8(73, 0x27)
                             .u32(76, 0x91929307);
  EXPECT_EQ(difference(bytesOf(entries[0]), expected), "");
}

TEST_P(GetStatus, does_not_write_the_count_when_it_fills_entries) {
  listOf(1);
  expectStatusCount(1);
  expectStatus(1).replyAt(3996, entry(1, "n"));
  EXPECT_EQ(get(), kDone);
  EXPECT_EQ(list.count, kPoisonWord);
}

TEST_P(GetStatus, only_counts_when_told_so) {
  for (const std::uint8_t countOnly : {std::uint8_t{1}, std::uint8_t{0x80}}) {
    for (const std::uint32_t count : {1U, 3U, 0xFFFFFFFFU}) {
      listOf(2).countOnly = countOnly;
      expectStatusCount(count);
      EXPECT_EQ(get(), kDone);
      EXPECT_EQ(list.count, count);
      expectUntouchedEntries();
    }
  }
}

TEST_P(GetStatus, counts_without_an_array) {
  list.countOnly = 1;
  expectStatusCount(2);
  EXPECT_EQ(get(), kDone);
  EXPECT_EQ(list.count, 2U);
}

TEST_P(GetStatus, of_an_empty_store_writes_nothing_at_all) {
  for (const std::uint8_t countOnly : {std::uint8_t{0}, std::uint8_t{1}}) {
    listOf(1).countOnly = countOnly;
    const auto before = bytesOf(list);
    expectStatusCount(0);
    EXPECT_EQ(get(), kDone);
    EXPECT_EQ(bytesOf(list), before);
    expectUntouchedEntries();
  }
}

TEST_P(GetStatus, of_an_empty_store_needs_no_array) {
  expectStatusCount(0);
  EXPECT_EQ(get(), kDone);
}

TEST_P(GetStatus, without_an_array_fails_once_there_is_something_to_write) {
  list.count = kPoisonWord;
  expectStatusCount(1);
  EXPECT_EQ(get(), kFailed);
  EXPECT_EQ(list.count, kPoisonWord);
}

// The driver's name field is twice as long as the caller's.
TEST_P(GetStatus, empties_a_name_that_does_not_fit_and_leaves_the_rest_of_it) {
  for (const std::size_t length : {64U, 65U, 127U, 128U}) {
    listOf(1);
    expectStatusCount(1);
    expectStatus(1).replyAt(3996, entry(1, std::string(length, 'n')));
    EXPECT_EQ(get(), kDone);
    expectEntry(0, 1, "");
    for (std::size_t i = 1; i < 64; ++i) EXPECT_EQ(entries[0].name[i], static_cast<char>(kPoison));
  }
}

TEST_P(GetStatus, keeps_names_of_0_to_63_bytes) {
  for (const std::size_t length : {0U, 1U, 62U, 63U}) {
    listOf(1);
    expectStatusCount(1);
    expectStatus(1).replyAt(3996, entry(1, std::string(length, 'n')));
    EXPECT_EQ(get(), kDone);
    expectEntry(0, 1, std::string(length, 'n'));
  }
}

TEST_P(GetStatus, fills_as_many_entries_as_the_first_answer_said) {
  listOf(2);
  expectStatusCount(2);
  expectStatus(2).replyWord(3976, 100).replyAt(3996, entry(1, "a")).replyAt(3996 + 140, entry(2, "b"));
  EXPECT_EQ(get(), kDone);
  expectEntry(0, 1, "a");
  expectEntry(1, 2, "b");
}

TEST_P(GetStatus, fails_at_the_first_request) {
  for (const std::uint8_t countOnly : {std::uint8_t{0}, std::uint8_t{1}}) {
    listOf(1).countOnly = countOnly;
    driver.expectSame(store().modifyCode).request(countStatusRequest()).replyWord(3976, 1).fails();
    EXPECT_EQ(get(), kFailed);
    EXPECT_EQ(list.count, kPoisonWord);
    expectUntouchedEntries();
  }
}

TEST_P(GetStatus, fails_at_the_second_request) {
  listOf(1);
  expectStatusCount(1);
  expectStatus(1).replyAt(3996, entry(1, "n")).fails();
  EXPECT_EQ(get(), kFailed);
  EXPECT_EQ(list.count, kPoisonWord);
  expectUntouchedEntries();
}

// 600 GB: either there is no memory, or no length can say it.
TEST_P(GetStatus, of_a_driver_that_claims_too_much_fails) {
  listOf(1);
  expectStatusCount(0xFFFFFFFF);
  EXPECT_EQ(get(), kFailed);
  expectUntouchedEntries();
}

TEST_P(GetStatus, reads_the_list_at_these_offsets) {
  std::vector<VqsPolicyStatus> array(1, poisoned<VqsPolicyStatus>());
  const auto pointer = reinterpret_cast<std::uint64_t>(array.data());
  Bytes bytes = Record{24, kPoison}.u64(8, pointer).u8(16, 0);
  auto* raw = reinterpret_cast<VqsPolicyStatusList*>(bytes.data());
  expectStatusCount(1);
  expectStatus(1).replyAt(3996, entry(4, "n"));
  EXPECT_EQ(store().getStatus(session, raw), kDone);
  EXPECT_EQ(array[0].statusValue, 0x81828304U);
  bytes[16] = 1;
  expectStatusCount(6);
  EXPECT_EQ(store().getStatus(session, raw), kDone);
  EXPECT_EQ(difference(bytes, Record{24, kPoison}.u32(0, 6).u64(8, pointer).u8(16, 1).bytes()), "");
}

TEST_P(GetStatus, checks_its_arguments_before_anything_else) {
  listOf(1);
  EXPECT_EQ(store().getStatus(nullptr, &list), kInvalid);
  EXPECT_EQ(store().getStatus(&closed, &list), kInvalid);
  EXPECT_EQ(store().getStatus(session, nullptr), kInvalid);
  EXPECT_EQ(list.count, kPoisonWord);
  EXPECT_EQ(faults.calls(Fault::kAllocation), 0);
}

TEST_P(GetStatus, runs_out_of_memory_for_the_first_request_with_1_unsent) {
  listOf(1);
  faults.fail(Fault::kAllocation, 1);
  EXPECT_EQ(get(), kFailed);
  EXPECT_EQ(list.count, kPoisonWord);
}

TEST_P(GetStatus, runs_out_of_memory_for_the_second_request_with_1) {
  listOf(1);
  faults.fail(Fault::kAllocation, 2);
  expectStatusCount(1);
  EXPECT_EQ(get(), kFailed);
  expectUntouchedEntries();
}

TEST_P(GetStatus, releases_the_first_request_before_the_second) {
  listOf(3);
  expectStatusCount(3);
  expectStatus(3);
  EXPECT_EQ(get(), kDone);
  EXPECT_EQ(faults.calls(Fault::kAllocation), 2);
  EXPECT_EQ(faults.peakBytes(), 4420U);
}

INSTANTIATE_TEST_SUITE_P(Of, GetStatus, ::testing::ValuesIn(allStores()), storeName);

}  // namespace
}  // namespace test
