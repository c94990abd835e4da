// SPDX-License-Identifier: Apache-2.0
#include "format/binary/builder.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "tests/support/packed.h"
#include "tests/support/policy_file.h"

namespace test {
namespace {

using vqs::buildPolicyBinary;
using vqs::policyBinarySize;

/// The whole file as the library builds it, in a buffer of exactly the size it asked for.
Bytes built(const std::vector<vqs::PackedPolicy>& policies, vqs::BinaryVersions versions = {1, 2}) {
  Bytes buffer(policyBinarySize(policies), 0);
  EXPECT_TRUE(buildPolicyBinary(std::as_writable_bytes(std::span{buffer}), policies, versions));
  return buffer;
}

Bytes built(const Policy& policy) { return built({packedRecord(packedPolicy(policy))}); }

TEST(PolicyBinarySize, starts_at_16_and_adds_the_counted_fields_of_each_policy) {
  // "Full" 10, "every field" 12, 42, two conditions 32, texts 6 + 5 and 24 + 5, two actions 46.
  const auto full = packedRecord(packedPolicy(richPolicy()));
  EXPECT_EQ(policyBinarySize(std::vector{full}), 16U + 10 + 12 + 42 + 32 + 11 + 29 + 46);
  const auto small = packedRecord(packedPolicy(smallPolicy()));
  EXPECT_EQ(policyBinarySize(std::vector{small}), 79U);
  EXPECT_EQ(policyBinarySize(std::vector{small, full, small}), 16U + 63 + 182 + 63);
}

TEST(PolicyBinarySize, of_a_policy_of_zeros_counts_both_terminators) {
  EXPECT_EQ(policyBinarySize(std::vector{vqs::PackedPolicy{}}), 16U + 2 + 1 + 42);
}

TEST(BuildPolicyBinary, lays_one_small_policy_into_79_bytes) {
  EXPECT_EQ(difference(built(smallPolicy()), hex("01 00 05 00 01 00 02 00 24 51 54 46 01 00 00 00"
                                                 "04 00 00 00 41 00 00 00 01 00 00 00 00"
                                                 "01 0a 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00"
                                                 "01 00 00 00 00 00 00 00"
                                                 "00 00 00 00 02 00 00 00 01 00 00 00 00 00 00 00"
                                                 "00 00 00 00"
                                                 "00 00 00")),
            "");
}

TEST(BuildPolicyBinary, writes_every_field_in_order_without_padding) {
  EXPECT_EQ(difference(built(richPolicy()),
                       hex("01 00 05 00 01 00 02 00 24 51 54 46 01 00 00 00"
                           "0a 00 00 00  46 00 75 00 6c 00 6c 00 00 00"
                           "0c 00 00 00  65 76 65 72 79 20 66 69 65 6c 64 00"
                           "11  25 24 23 22  35 34 33 32  41 51  65 64 63 62  75 74 73 72"
                           "02 00 00 00  02 00 00 00"
                           "84 83 82 81  04 00 00 00  94 93 92 91  a4 a3 a2 a1"
                           "b4 b3 b2 b1  00 00 00 00  c4 c3 c2 c1  d4 d3 d2 d1"
                           "06 00 00 00  61 00 62 00 00 00  01"
                           "18 00 00 00  73 00 65 00 63 00 6f 00 6e 00 64 00 20 00 74 00 65 00 78 00 74 00 00 00  00"
                           "02 00 00 00"
                           "04 03 02 01  08 07 06 05  0c 0b 0a 09  0d 0e  12 11 10 0f  13  17 16 15 14"
                           "e4 e3 e2 e1  e8 e7 e6 e5  00 00 00 00  00 00  00 00 00 00  00  ff ff ff ff"
                           "00 00 00")),
            "");
}

TEST(BuildPolicyBinary, keeps_the_order_of_the_array_and_ends_in_three_zero_bytes_a_policy) {
  const auto policies =
      packedRecords({packedPolicy(richPolicy()), packedPolicy(smallPolicy()), packedPolicy(richPolicy())});
  const Bytes file = built(policies, {0xFFFF, 0});
  EXPECT_EQ(difference(file, joined({hex("01 00 05 00 ff ff 00 00 24 51 54 46 03 00 00 00"),
                                     entryBytes(wideEntry(richPolicy())), entryBytes(wideEntry(smallPolicy())),
                                     entryBytes(wideEntry(richPolicy())), Bytes(9, 0)})),
            "");
}

TEST(BuildPolicyBinary, writes_a_description_up_to_its_first_zero_byte) {
  auto policy = smallPolicy();
  policy.description = std::string{"ab\0cd", 5};
  auto shown = policy;
  shown.description = "ab";
  EXPECT_EQ(difference(built(policy), writtenFile({shown}, 1, 2)), "");
}

TEST(BuildPolicyBinary, writes_name_and_texts_up_to_their_first_zero_unit) {
  auto policy = smallPolicy();
  policy.name = {u"AB\0CD", 5};
  policy.texts = {{{u"x\0y", 3}, 1}, {u"", 0}};
  auto shown = policy;
  shown.name = std::u16string{u"AB"};
  shown.texts = {{u"x", 1}, {u"", 0}};
  EXPECT_EQ(difference(built(policy), writtenFile({shown}, 1, 2)), "");
}

TEST(BuildPolicyBinary, does_not_look_at_the_length_word_of_a_text) {
  auto policy = smallPolicy();
  policy.texts = {{u"abc", 1}};
  const Bytes packed = packedPolicy(policy);
  for (const int length : {0, 1, 300, 0xFFFF}) {
    Record record{3972};
    record.put(0, packed).u16(436 + 12, static_cast<std::uint16_t>(length));
    EXPECT_EQ(difference(built({packedRecord(record)}), writtenFile({policy}, 1, 2)), "") << length;
  }
}

TEST(BuildPolicyBinary, writes_a_policy_without_conditions_that_no_reader_takes) {
  auto policy = smallPolicy();
  policy.conditions.clear();
  EXPECT_EQ(difference(built(policy), writtenFile({policy}, 1, 2)), "");
}

TEST(BuildPolicyBinary, does_not_judge_ops_and_flags) {
  auto policy = smallPolicy();
  policy.conditions = {{0xFFFFFFFF, 77, 1, 2}};
  policy.texts = {{u"x", 0xFE}};
  EXPECT_EQ(difference(built(policy), writtenFile({policy}, 1, 2)), "");
}

TEST(BuildPolicyBinary, leaves_the_buffer_behind_the_last_entry_alone) {
  const auto policies = packedRecords({packedPolicy(smallPolicy())});
  Bytes buffer(200, kPoison);
  ASSERT_TRUE(buildPolicyBinary(std::as_writable_bytes(std::span{buffer}), policies, {1, 2}));
  Bytes expected = writtenFile({smallPolicy()}, 1, 2);
  expected.resize(76);
  expected.resize(200, kPoison);
  EXPECT_EQ(difference(buffer, expected), "");
}

TEST(BuildPolicyBinary, fails_in_every_buffer_too_short_for_the_entries_and_stays_inside) {
  const auto policies = packedRecords({packedPolicy(richPolicy()), packedPolicy(smallPolicy())});
  const std::size_t entries = 16 + 179 + 60;
  for (std::size_t size = 0; size <= entries + 6; ++size) {
    Bytes buffer(entries + 64, kPoison);
    const auto room = std::as_writable_bytes(std::span{buffer}).first(size);
    EXPECT_EQ(buildPolicyBinary(room, policies, {1, 2}), size >= entries) << size;
    EXPECT_EQ(Bytes(buffer.begin() + static_cast<std::ptrdiff_t>(size), buffer.end()),
              Bytes(buffer.size() - size, kPoison))
        << size;
  }
}

TEST(BuildPolicyBinary, fails_without_a_buffer_or_without_policies) {
  const auto policies = packedRecords({packedPolicy(smallPolicy())});
  Bytes buffer(100, kPoison);
  EXPECT_FALSE(buildPolicyBinary({}, policies, {1, 2}));
  EXPECT_FALSE(buildPolicyBinary(std::as_writable_bytes(std::span{buffer}), {}, {1, 2}));
  EXPECT_FALSE(buildPolicyBinary(std::as_writable_bytes(std::span{buffer}), std::span{policies}.first(0), {1, 2}));
  EXPECT_EQ(buffer, Bytes(100, kPoison));
}

}  // namespace
}  // namespace test
