// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <utility>

#include "tests/log/logs.h"
#include "tests/support/results.h"

namespace test {
namespace {

/// The bytes of a log area, in exactly as much memory as they take, and a log started on them.
class KVIterator : public LogTest, public ::testing::WithParamInterface<KVGeneration> {
 protected:
  static const KVGeneration& logs() { return GetParam(); }

  void TearDown() override {
    if (iterator != nullptr) {
      EXPECT_EQ(logs().destroy(iterator), kDone);
    }
    if (log != nullptr) {
      expectLog(logs().stopOperation, 5);
      EXPECT_EQ(logs().stop(session, log), kDone);
    }
    LogTest::TearDown();
  }

  void startOn(const Bytes& bytes) {
    area = bytes;
    area.shrink_to_fit();
    expectLog(logs().startOperation).reply(logReply(logs().startOperation, 5, addressAt(0), 1));
    ASSERT_EQ(logs().start(session, &log), kDone);
    ASSERT_EQ(logs().create(log, &iterator), kDone);
  }
  [[nodiscard]] std::uint64_t addressAt(std::size_t offset) const {
    return reinterpret_cast<std::uint64_t>(area.data()) + offset;
  }
  /// The first key id of the area, as the driver may write it at any time.
  void writeKey(std::uint32_t key) { std::ranges::copy(Record{4}.u32(0, key).bytes(), area.begin()); }

  void expectOn(std::uint32_t expectedKey, std::size_t valueOffset) {
    std::uint8_t done = kPoison;
    EXPECT_EQ(logs().isDone(iterator, &done), kDone);
    EXPECT_EQ(done, 0U);
    std::uint32_t key = kPoisonWord;
    std::uint64_t address = kPoisonLong;
    EXPECT_EQ(logs().data(iterator, &key, &address), kDone);
    EXPECT_EQ(key, expectedKey);
    EXPECT_EQ(address, addressAt(valueOffset));
  }
  void expectNoRecord() {
    std::uint32_t key = kPoisonWord;
    std::uint64_t address = kPoisonLong;
    EXPECT_EQ(logs().data(iterator, &key, &address), kFailed);
    EXPECT_EQ(key, kPoisonWord);
    EXPECT_EQ(address, kPoisonLong);
    EXPECT_EQ(logs().next(iterator), kFailed);
  }
  void expectEnd() {
    std::uint8_t done = kPoison;
    EXPECT_EQ(logs().isDone(iterator, &done), kDone);
    EXPECT_EQ(done, 1U);
    expectNoRecord();
  }
  void expectUnknownKey() {
    std::uint8_t done = kPoison;
    EXPECT_EQ(logs().isDone(iterator, &done), kFailed);
    EXPECT_EQ(done, kPoison);
    expectNoRecord();
  }

  Bytes area;
  QtfLogKV* log = nullptr;
  QtfLogKVIter* iterator = nullptr;
};

TEST_P(KVIterator, starts_on_the_first_record) {
  startOn(Record{12}.u32(0, 4).u32(4, 0x11223344));
  expectOn(4, 4);
  expectOn(4, 4);
}

TEST_P(KVIterator, is_one_allocation_of_its_own) {
  startOn(Record{4});
  EXPECT_EQ(faults.outstanding(), 2);
  EXPECT_EQ(faults.peakBytes(), 16U) << "8 for the log's handle and 8 for the iterator";
  EXPECT_EQ(logs().destroy(std::exchange(iterator, nullptr)), kDone);
  EXPECT_EQ(faults.outstanding(), 1);
}

TEST_P(KVIterator, holds_the_address_of_its_record_and_nothing_else) {
  startOn(Record{12}.u32(0, 4));
  const auto* object = reinterpret_cast<const std::uint8_t*>(iterator);
  EXPECT_EQ(Bytes(object, object + 8), bytesOf(addressAt(0)));
  EXPECT_EQ(logs().next(iterator), kDone);
  EXPECT_EQ(Bytes(object, object + 8), bytesOf(addressAt(8)));
  EXPECT_EQ(logs().next(iterator), kFailed);
  EXPECT_EQ(Bytes(object, object + 8), bytesOf(addressAt(8)));
  EXPECT_EQ(logs().reset(log, iterator), kDone);
  EXPECT_EQ(Bytes(object, object + 8), bytesOf(addressAt(0)));
}

TEST_P(KVIterator, walks_apart_from_a_second_one_on_the_same_log) {
  startOn(Record{20}.u32(0, 4).u32(8, 5));
  QtfLogKVIter* second = nullptr;
  ASSERT_EQ(logs().create(log, &second), kDone);
  EXPECT_NE(second, iterator);
  EXPECT_EQ(logs().next(second), kDone);
  expectOn(4, 4);
  EXPECT_EQ(logs().next(iterator), kDone);
  EXPECT_EQ(logs().destroy(second), kDone);
  expectOn(5, 12);
}

TEST_P(KVIterator, reads_nothing_but_the_key_id) {
  startOn(Record{4}.u32(0, logs().keys));
  expectOn(logs().keys, 4);
  EXPECT_EQ(logs().next(iterator), kDone);
}

TEST_P(KVIterator, writes_one_byte_of_the_flag) {
  startOn(Record{4});
  auto around = poisoned<std::array<std::uint8_t, 3>>();
  EXPECT_EQ(logs().isDone(iterator, &around[1]), kDone);
  EXPECT_EQ(bytesOf(around), hex("A5 01 A5"));
  writeKey(1);
  EXPECT_EQ(logs().isDone(iterator, &around[1]), kDone);
  EXPECT_EQ(bytesOf(around), hex("A5 00 A5"));
}

TEST_P(KVIterator, answers_3_when_it_cannot_be_allocated) {
  startOn(Record{4});
  auto* const untouched = reinterpret_cast<QtfLogKVIter*>(kPoisonLong);
  QtfLogKVIter* second = untouched;
  faults.fail(Fault::kAllocation, 1);
  EXPECT_EQ(logs().create(log, &second), kNoMemory);
  EXPECT_EQ(second, untouched);
}

TEST_P(KVIterator, ends_on_key_id_0_and_stays_there) {
  startOn(Record{4});
  expectEnd();
  expectEnd();
}

TEST_P(KVIterator, knows_the_first_and_the_last_key) {
  startOn(Record{4});
  for (const std::uint32_t key : {1U, logs().keys}) {
    writeKey(key);
    expectOn(key, 4);
  }
}

TEST_P(KVIterator, stays_on_a_key_id_that_does_not_exist) {
  startOn(Record{4});
  for (const std::uint32_t key : {logs().keys + 1, 0x100U + 1, 0x10001U, 0x7FFFFFFFU, 0x80000000U, 0x80000001U,
                                  0x80000000U + logs().keys, 0xFFFFFFFFU}) {
    writeKey(key);
    expectUnknownKey();
  }
  writeKey(1);
  expectOn(1, 4);
}

TEST_P(KVIterator, steps_from_record_to_record_up_to_the_end) {
  startOn(Record{20}.u32(0, 4).u32(4, 0xFFFFFFFF).u32(8, 5).u32(12, 0xFFFFFFFF));
  expectOn(4, 4);
  EXPECT_EQ(logs().next(iterator), kDone);
  expectOn(5, 12);
  EXPECT_EQ(logs().next(iterator), kDone);
  expectEnd();
}

TEST_P(KVIterator, walks_an_area_at_an_odd_address) {
  Bytes odd = Record{17}.u32(1, 4).u32(5, 0xFFFFFFFF).u32(9, 5);
  expectLog(logs().startOperation)
      .reply(logReply(logs().startOperation, 5, reinterpret_cast<std::uint64_t>(odd.data()) + 1, 1));
  ASSERT_EQ(logs().start(session, &log), kDone);
  ASSERT_EQ(logs().create(log, &iterator), kDone);
  EXPECT_EQ(logs().next(iterator), kDone);
  std::uint32_t key = 0;
  std::uint64_t address = 0;
  EXPECT_EQ(logs().data(iterator, &key, &address), kDone);
  EXPECT_EQ(key, 5U);
  EXPECT_EQ(address, reinterpret_cast<std::uint64_t>(odd.data()) + 13);
}

TEST_P(KVIterator, goes_back_to_the_first_record) {
  startOn(Record{20}.u32(0, 4).u32(8, 5));
  EXPECT_EQ(logs().next(iterator), kDone);
  EXPECT_EQ(logs().next(iterator), kDone);
  expectEnd();
  EXPECT_EQ(logs().reset(log, iterator), kDone);
  expectOn(4, 4);
}

TEST_P(KVIterator, goes_over_to_another_log) {
  startOn(Record{12}.u32(0, 4));
  Bytes other = Record{8}.u32(0, 5);
  auto address = reinterpret_cast<std::uint64_t>(other.data());
  EXPECT_EQ(logs().reset(reinterpret_cast<QtfLogKV*>(&address), iterator), kDone);
  std::uint32_t key = 0;
  std::uint64_t value = 0;
  EXPECT_EQ(logs().data(iterator, &key, &value), kDone);
  EXPECT_EQ(key, 5U);
  EXPECT_EQ(value, address + 4);
}

TEST_P(KVIterator, reads_what_the_driver_has_written_since) {
  startOn(Record{12}.u32(0, 4));
  expectOn(4, 4);
  writeKey(5);
  expectOn(5, 4);
  writeKey(0);
  expectEnd();
}

TEST_P(KVIterator, checks_its_arguments) {
  startOn(Record{8}.u32(0, 4));
  std::uint8_t done = kPoison;
  std::uint32_t key = kPoisonWord;
  std::uint64_t address = kPoisonLong;
  QtfLogKVIter* second = nullptr;
  EXPECT_EQ(logs().create(nullptr, &second), kInvalid);
  EXPECT_EQ(logs().create(log, nullptr), kInvalid);
  EXPECT_EQ(logs().destroy(nullptr), kInvalid);
  EXPECT_EQ(logs().reset(nullptr, iterator), kInvalid);
  EXPECT_EQ(logs().reset(log, nullptr), kInvalid);
  EXPECT_EQ(logs().next(nullptr), kInvalid);
  EXPECT_EQ(logs().isDone(nullptr, &done), kInvalid);
  EXPECT_EQ(logs().isDone(iterator, nullptr), kInvalid);
  EXPECT_EQ(logs().data(nullptr, &key, &address), kInvalid);
  EXPECT_EQ(logs().data(iterator, nullptr, &address), kInvalid);
  EXPECT_EQ(logs().data(iterator, &key, nullptr), kInvalid);
  EXPECT_EQ(second, nullptr);
  EXPECT_EQ(done, kPoison);
  EXPECT_EQ(key, kPoisonWord);
  EXPECT_EQ(address, kPoisonLong);
  EXPECT_EQ(faults.calls(Fault::kAllocation), 2) << "the log and the iterator";
  expectOn(4, 4);
}

/// Every key of a list, its value filled with anything but zero, and the end marker.
Bytes areaOf(const std::vector<KeyRow>& rows) {
  Bytes area;
  for (const auto& row : rows) {
    const auto id = Record{4}.u32(0, row.id).bytes();
    area.insert(area.end(), id.begin(), id.end());
    area.insert(area.end(), row.valueSize, 0xEE);
  }
  area.insert(area.end(), 4, 0);
  return area;
}

TEST_P(KVIterator, walks_every_key_without_an_allocation_or_a_request) {
  const auto rows = keyRows(logs().listing);
  startOn(areaOf(rows));
  const int allocations = faults.calls(Fault::kAllocation);
  const auto requests = driver.requestsServed();
  std::size_t offset = 0;
  for (const auto& row : rows) {
    expectOn(row.id, offset + 4);
    EXPECT_EQ(logs().next(iterator), kDone) << row.name;
    offset += 4 + row.valueSize;
  }
  expectEnd();
  EXPECT_EQ(offset + 4, area.size());
  EXPECT_EQ(logs().reset(log, iterator), kDone);
  expectOn(rows.front().id, 4);
  EXPECT_EQ(faults.calls(Fault::kAllocation), allocations);
  EXPECT_EQ(driver.requestsServed(), requests);
}

/// How far apart the records of one key and of the next are.
TEST_P(KVIterator, steps_over_a_key_by_its_size) {
  using Steps = std::vector<std::pair<std::uint32_t, std::size_t>>;
  const Steps plain = {{1, 16}, {4, 8}, {29, 404}, {30, 404}, {47, 12}, {48, 16}, {123, 44}, {228, 8}};
  const Steps ex = {{1, 8}, {3, 8}, {10, 20}, {11, 8}, {13, 32}, {20, 44}, {21, 44}, {27, 8}, {35, 36}, {50, 36}};
  startOn(Bytes(408, 0));
  for (const auto& [key, step] : logs().listing == kExKeyListing ? ex : plain) {
    std::ranges::fill(area, std::uint8_t{0xFF});
    writeKey(key);
    std::ranges::copy(Record{4}.u32(0, 2).bytes(), area.begin() + static_cast<std::ptrdiff_t>(step));
    EXPECT_EQ(logs().reset(log, iterator), kDone);
    EXPECT_EQ(logs().next(iterator), kDone);
    expectOn(2, step + 4);
  }
}

INSTANTIATE_TEST_SUITE_P(Of, KVIterator, ::testing::ValuesIn(kvGenerations()), generationName);

/// Read through memory that the compiler cannot see into: it takes two names for two functions.
template <class Function>
bool sameAddress(Function* one, Function* other) {
  Function* volatile first = one;
  Function* volatile second = other;
  return first == second;
}

TEST(ExIteratorNames, are_second_names_of_the_same_functions) {
  EXPECT_TRUE(sameAddress(&vqsCreateQTFLogKVIter, &vqsExCreateQTFLogExKVIter));
  EXPECT_TRUE(sameAddress(&vqsDestroyQTFLogKVIter, &vqsExDestroyQTFLogExKVIter));
  EXPECT_TRUE(sameAddress(&vqsResetQTFLogKVIter, &vqsExResetQTFLogExKVIter));
}

TEST(ExIteratorNames, are_functions_of_their_own_where_the_keys_matter) {
  EXPECT_FALSE(sameAddress(&vqsNextQTFLogKVIter, &vqsExNextQTFLogExKVIter));
  EXPECT_FALSE(sameAddress(&vqsDoneQTFLogKVIter, &vqsExDoneQTFLogExKVIter));
  EXPECT_FALSE(sameAddress(&vqsGetQTFLogKVIterData, &vqsExGetQTFLogExKVIterData));
}

}  // namespace
}  // namespace test
