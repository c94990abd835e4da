// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include "format/binary/builder.h"
#include "src/binary/writer.h"
#include "tests/support/packed.h"
#include "tests/support/policy_file.h"
#include "tests/support/results.h"
#include "tests/support/temporary_folder.h"

// What the writer does at the limits of a policy's lists, and where a text leads beyond its field: it takes what
// follows in the driver's record, and nothing behind it.

namespace test {
namespace {

constexpr std::size_t kConditionCount = 184;
constexpr std::size_t kActionCount = 188;
constexpr std::size_t kTextCount = 192;
constexpr std::size_t kConditions = 196;
constexpr std::size_t kTexts = 436;
constexpr std::size_t kActions = 3076;
constexpr std::size_t kRecordSize = 3972;

/// One policy whose last byte is the last that may be touched.
class GuardedPolicy {
 public:
  explicit GuardedPolicy(const Bytes& record) : page_(static_cast<std::size_t>(sysconf(_SC_PAGESIZE))) {
    memory_ = mmap(nullptr, 2 * page_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    EXPECT_NE(memory_, MAP_FAILED);
    auto* second = static_cast<std::byte*>(memory_) + page_;
    EXPECT_EQ(mprotect(second, page_, PROT_NONE), 0);
    policy_ = reinterpret_cast<vqs::PackedPolicy*>(second - kRecordSize);
    std::memcpy(policy_, record.data(), kRecordSize);
  }
  ~GuardedPolicy() { munmap(memory_, 2 * page_); }
  GuardedPolicy(const GuardedPolicy&) = delete;
  GuardedPolicy& operator=(const GuardedPolicy&) = delete;

  [[nodiscard]] std::span<const vqs::PackedPolicy> span() const { return {policy_, 1}; }

 private:
  std::size_t page_;
  void* memory_;
  vqs::PackedPolicy* policy_;
};

/// The entry that the library writes, without the file's header and tail.
Bytes entryOf(const Record& record) {
  const GuardedPolicy policy{record};
  Bytes file(vqs::policyBinarySize(policy.span()), 0);
  if (!vqs::buildPolicyBinary(std::as_writable_bytes(std::span{file}), policy.span(), {1, 2})) return {};
  EXPECT_EQ(Bytes(file.end() - 3, file.end()), Bytes(3, 0));
  return {file.begin() + 16, file.end() - 3};
}

void expectRefused(const Record& record) {
  const GuardedPolicy policy{record};
  EXPECT_EQ(vqs::policyBinarySize(policy.span()), 0U);
  Bytes file(1 << 20, 0);
  EXPECT_FALSE(vqs::buildPolicyBinary(std::as_writable_bytes(std::span{file}), policy.span(), {1, 2}));
  const TemporaryFolder folder;
  const auto path = folder.path("refused.bin");
  EXPECT_EQ(vqs::writePolicyBinary(policy.span(), {1, 2}, path.c_str()), kFailed);
  EXPECT_FALSE(fileExists(path));
}

/// A record without a zero byte where entries and texts stand, each byte different from its neighbours.
Record denseRecord() {
  Record record{kRecordSize};
  for (std::size_t i = kConditions; i < kRecordSize; ++i) record.u8(i, static_cast<std::uint8_t>(1 + i % 251));
  return record.text16(0, u"A").u32(kConditionCount, 0).u32(kActionCount, 0).u32(kTextCount, 0);
}

Bytes part(const Record& record, std::size_t first, std::size_t size) {
  const auto begin = record.bytes().begin() + static_cast<std::ptrdiff_t>(first);
  return {begin, begin + static_cast<std::ptrdiff_t>(size)};
}

/// The 39 bytes that follow name and description, up to the conditions, of a record whose scalars are zero.
Assembly scalars(std::uint32_t conditionCount, std::uint32_t textCount) {
  Assembly bytes;
  bytes.zeros(19).u32(conditionCount).u32(textCount);
  return bytes;
}

const Bytes kNameA = hex("04 00 00 00 41 00 00 00");
const Bytes kNoDescription = hex("01 00 00 00 00");

TEST(WriterBounds, fifteen_conditions_are_the_most) {
  auto record = denseRecord();
  record.u32(kConditionCount, 15);
  const Bytes expected =
      joined({kNameA, kNoDescription, scalars(15, 0), part(record, kConditions, std::size_t{15} * 16), Bytes(4, 0)});
  EXPECT_EQ(difference(entryOf(record), expected), "");
  for (const std::uint32_t count : {16U, 17U, 100U, 236U, 237U, 1000U, 0x10000001U, 0x80000000U, 0xFFFFFFFFU})
    expectRefused(denseRecord().u32(kConditionCount, count));
}

TEST(WriterBounds, five_texts_are_the_most) {
  auto record = denseRecord();
  record.u32(kTextCount, 5);
  for (std::size_t i = 0; i < 6; ++i)
    record.u8(kTexts + i * 528, static_cast<std::uint8_t>(i)).u16(kTexts + i * 528 + 16, 0);
  Assembly expected;
  expected.bytes(kNameA).bytes(kNoDescription).bytes(scalars(0, 5));
  for (std::size_t i = 0; i < 5; ++i)
    expected.u32(4).bytes(part(record, kTexts + i * 528 + 14, 2)).u16(0).u8(static_cast<std::uint8_t>(i));
  expected.u32(0);
  EXPECT_EQ(difference(entryOf(record), joined({expected})), "");
  for (const std::uint32_t count : {6U, 7U, 8U, 1000U, 0x08000000U, 0xFFFFFFFFU})
    expectRefused(record.u32(kTextCount, count));
}

TEST(WriterBounds, thirty_two_actions_are_the_most) {
  auto record = denseRecord();
  record.u32(kActionCount, 32);
  Assembly expected;
  expected.bytes(kNameA).bytes(kNoDescription).bytes(scalars(0, 0)).u32(32);
  for (std::size_t slot = kActions; slot < kRecordSize; slot += 28)
    expected.bytes(part(record, slot, 14)).bytes(part(record, slot + 16, 5)).bytes(part(record, slot + 24, 4));
  EXPECT_EQ(difference(entryOf(record), joined({expected})), "");
  for (const std::uint32_t count : {33U, 1000U, 0x09249249U, 0xFFFFFFFFU})
    expectRefused(denseRecord().u32(kActionCount, count));
}

TEST(WriterBounds, a_description_without_a_zero_byte_runs_into_the_following_fields) {
  Record record{kRecordSize};
  record.fill(128, 32, 'd');
  EXPECT_EQ(difference(entryOf(record), joined({hex("02 00 00 00 00 00  21 00 00 00"), Bytes(32, 'd'), Bytes(1, 0),
                                                scalars(0, 0), Bytes(4, 0)})),
            "");
  record.u8(160, 0x77);
  EXPECT_EQ(difference(entryOf(record), joined({hex("02 00 00 00 00 00  22 00 00 00"), Bytes(32, 'd'), hex("77 00"),
                                                hex("77"), Bytes(18, 0), Bytes(8, 0), Bytes(4, 0)})),
            "");
}

TEST(WriterBounds, a_description_may_run_through_scalars_counts_and_conditions) {
  Record record{kRecordSize, 0xDD};
  record.text16(0, {u"\0", 1}).u32(kConditionCount, 0x01010101).u32(kTextCount, 0);
  expectRefused(record);
  record.u8(kConditionCount, 1).u8(kConditionCount + 1, 0).u16(kConditionCount + 2, 0).u32(kActionCount, 0);
  const Bytes expected = joined({hex("02 00 00 00 00 00  3a 00 00 00"), Bytes(56, 0xDD), hex("01 00"), Bytes(19, 0xDD),
                                 hex("01 00 00 00 00 00 00 00"), Bytes(16, 0xDD), Bytes(4, 0)});
  EXPECT_EQ(difference(entryOf(record), expected), "");
}

TEST(WriterBounds, a_name_without_a_zero_unit_runs_into_the_description) {
  Record record{kRecordSize};
  record.text16(0, std::u16string(64, u'N'));
  EXPECT_EQ(difference(entryOf(record), joined({hex("82 00 00 00"), units(std::u16string(64, u'N')), hex("00 00"),
                                                kNoDescription, scalars(0, 0), Bytes(4, 0)})),
            "");
  record.text(128, "abc");
  EXPECT_EQ(
      difference(entryOf(record), joined({hex("86 00 00 00"), units(std::u16string(64, u'N')), hex("61 62 63 00 00 00"),
                                          hex("04 00 00 00 61 62 63 00"), scalars(0, 0), Bytes(4, 0)})),
      "");
}

TEST(WriterBounds, a_zero_unit_counts_only_at_a_whole_unit) {
  Record record{kRecordSize};
  record.text16(0, u"\u4100").u16(2, 0x0041);
  EXPECT_EQ(difference(entryOf(record),
                       joined({hex("06 00 00 00 00 41 41 00 00 00"), kNoDescription, scalars(0, 0), Bytes(4, 0)})),
            "");
}

TEST(WriterBounds, a_text_without_a_zero_unit_runs_into_the_next_slot) {
  Record record{kRecordSize};
  record.u32(kTextCount, 2).u8(kTexts, 1).text16(kTexts + 14, std::u16string(256, u't'));
  EXPECT_EQ(difference(entryOf(record), joined({hex("02 00 00 00 00 00"), kNoDescription, scalars(0, 2),
                                                hex("02 02 00 00"), units(std::u16string(256, u't')), hex("00 00 01"),
                                                hex("02 00 00 00 00 00 00"), Bytes(4, 0)})),
            "");
}

TEST(WriterBounds, the_last_text_may_run_up_to_the_last_unit_of_the_record_and_no_further) {
  Record record{kRecordSize};
  const std::size_t text = kTexts + 4 * 528 + 14;
  record.u32(kTextCount, 5).fill(text, kRecordSize - text, 'x').u16(kRecordSize - 2, 0);
  const Bytes entry = entryOf(record);
  const Bytes expected =
      joined({hex("02 00 00 00 00 00"), kNoDescription, scalars(0, 5), hex("02 00 00 00 00 00 00"),
              hex("02 00 00 00 00 00 00"), hex("02 00 00 00 00 00 00"), hex("02 00 00 00 00 00 00"), hex("82 05 00 00"),
              Bytes(kRecordSize - text - 2, 'x'), hex("00 00"), hex("00"), Bytes(4, 0)});
  EXPECT_EQ(difference(entry, expected), "");
  expectRefused(record.u16(kRecordSize - 2, 0x0078));
}

TEST(WriterBounds, a_text_without_any_end_in_the_record_is_refused) {
  for (const std::size_t slot : {0U, 1U, 4U}) {
    Record record{kRecordSize};
    record.u32(kTextCount, static_cast<std::uint32_t>(slot + 1));
    const std::size_t text = kTexts + slot * 528 + 14;
    expectRefused(record.fill(text, kRecordSize - text, 1));
  }
  expectRefused(Record{kRecordSize, 0xFF});
}

TEST(WriterBounds, one_policy_with_a_count_above_its_limit_spoils_the_file) {
  const auto policies = packedRecords({packedPolicy(smallPolicy()), Record{kRecordSize}.u32(kActionCount, 33)});
  EXPECT_EQ(vqs::policyBinarySize(policies), 0U);
  const TemporaryFolder folder;
  const auto path = folder.write("kept.bin", {1, 2, 3});
  EXPECT_EQ(vqs::writePolicyBinary(policies, {1, 2}, path.c_str()), kFailed);
  EXPECT_EQ(readFile(path), (Bytes{1, 2, 3}));
}

}  // namespace
}  // namespace test
