// SPDX-License-Identifier: Apache-2.0
#include "binary/parser.h"

#include <gtest/gtest.h>

#include "binary/assembly.h"
#include "binary/packed.h"

namespace test {
namespace {

using vqs::announcedPolicyCount;

std::span<const std::byte> span(const Bytes& bytes) { return std::as_bytes(std::span{bytes}); }

/// The front of a file, of exactly that size in memory.
Bytes front(const Bytes& file, std::size_t size) { return {file.begin(), file.begin() + static_cast<long>(size)}; }

struct Parsed {
  bool valid;
  vqs::BinaryVersions versions;
  std::vector<VqsPackedPolicy> policies;
};

using Parser = bool (*)(std::span<const std::byte>, std::span<VqsPackedPolicy>, vqs::BinaryVersions&);

Parsed parsed(Parser parser, const Bytes& file, std::size_t count = 1) {
  Parsed result{.valid = false, .versions = {0xAAAA, 0xBBBB}, .policies = std::vector<VqsPackedPolicy>(count)};
  result.valid = parser(span(file), result.policies, result.versions);
  return result;
}

TEST(AnnouncedPolicyCount, is_the_word_at_12_of_revision_5_and_at_8_of_the_older_ones) {
  EXPECT_EQ(announcedPolicyCount(span(hex("01 00 05 00 00 00 00 00 24 51 54 46 04 03 02 01"))), 0x01020304U);
  EXPECT_EQ(announcedPolicyCount(span(hex("01 00 03 00 00 00 00 00 04 03 02 01"))), 0x01020304U);
  EXPECT_EQ(announcedPolicyCount(span(hex("01 00 04 00 00 00 00 00 ff ff ff ff"))), 0xFFFFFFFFU);
}

TEST(AnnouncedPolicyCount, needs_12_bytes_of_the_older_revisions_and_16_of_revision_5) {
  const Bytes revision5 = hex("01 00 05 00 00 00 00 00 24 51 54 46 01 00 00 00");
  for (std::size_t size = 0; size <= 16; ++size)
    EXPECT_EQ(announcedPolicyCount(span(front(revision5, size))), size < 16 ? 0U : 1U) << size;
  for (const std::uint8_t revision : {std::uint8_t{3}, std::uint8_t{4}}) {
    const Bytes old = Record(12).u16(0, 1).u16(2, revision).u32(8, 1);
    for (std::size_t size = 0; size <= 12; ++size)
      EXPECT_EQ(announcedPolicyCount(span(front(old, size))), size < 12 ? 0U : 1U) << size;
  }
}

TEST(AnnouncedPolicyCount, refuses_other_format_versions_and_revisions) {
  for (const std::uint16_t version : std::vector<std::uint16_t>{0, 2, 0x0101, 0xFFFF})
    EXPECT_EQ(announcedPolicyCount(span(fileOf({{}}, {.formatVersion = version}))), 0U) << version;
  for (const std::uint16_t revision : std::vector<std::uint16_t>{0, 1, 2, 6, 0x0105, 0xFFFF}) {
    EXPECT_EQ(announcedPolicyCount(span(fileOf({{}}, {.revision = revision}))), 0U) << revision;
    EXPECT_EQ(announcedPolicyCount(span(oldFileOf(revision, {narrowEntry()}))), 0U) << revision;
  }
}

TEST(AnnouncedPolicyCount, needs_the_magic_in_revision_5_only) {
  for (const std::string_view magic : {"$QTf", "$qTF", "FTQ$", "\0\0\0\0", " QTF", "$QT "})
    EXPECT_EQ(announcedPolicyCount(span(fileOf({{}}, {.magic = {magic.data(), 4}}))), 0U) << magic;
  EXPECT_EQ(announcedPolicyCount(span(oldFileOf(3, {narrowEntry()}))), 1U);
}

TEST(AnnouncedPolicyCount, is_zero_for_a_file_of_no_policies) {
  EXPECT_EQ(announcedPolicyCount(span(fileOf({}))), 0U);
  EXPECT_EQ(announcedPolicyCount(span(oldFileOf(4, {}))), 0U);
}

TEST(ParsePolicyBinary, hands_out_the_versions_before_it_checks_anything_else) {
  const Bytes revision5 = fileOf({{}}, {.version1 = 0x1122, .version2 = 0x3344});
  const Bytes old = oldFileOf(3, {narrowEntry()}, {}, {.version1 = 0x1122, .version2 = 0x3344});
  for (const auto& [parser, file] : {std::pair<Parser, Bytes>{vqs::parsePolicyBinaryRev5, revision5},
                                     {vqs::parsePolicyBinaryRev3, old},
                                     {vqs::parsePolicyBinaryRev4, old}}) {
    const auto five = parsed(parser, front(file, 5));
    EXPECT_FALSE(five.valid);
    EXPECT_EQ(five.versions.first, 0xAAAA);
    const auto six = parsed(parser, front(file, 6));
    EXPECT_FALSE(six.valid);
    EXPECT_EQ(six.versions.first, 0x1122);
    EXPECT_EQ(six.versions.second, 0xBBBB);
    const auto eight = parsed(parser, front(file, 8));
    EXPECT_FALSE(eight.valid);
    EXPECT_EQ(eight.versions.second, 0x3344);
  }
}

TEST(ParsePolicyBinary, fills_packed_policies_whose_length_words_stay_zero) {
  const auto result = parsed(vqs::parsePolicyBinaryRev5, fileOf({wideEntry(fullPolicy()), {}}), 2);
  ASSERT_TRUE(result.valid);
  Record expected{3972};
  expected.put(0, packedPolicy(fullPolicy())).u16(436 + 12, 0).u16(436 + 528 + 12, 0);
  EXPECT_EQ(difference(bytesOf(result.policies[0]), expected.bytes()), "");
  Record smallest{3972};
  EXPECT_EQ(difference(bytesOf(result.policies[1]), smallest.text16(0, u"A").u32(184, 1).bytes()), "");
}

TEST(ParsePolicyBinary, does_the_same_for_the_older_revisions) {
  auto entry = narrowEntry();
  entry.flag0 = 9;
  entry.id = 0x01020304;
  entry.texts = {{characters("ab!"), 7}, {characters("c\0"), 1}};
  entry.texts[1].text = {'c', 0};
  entry.actions = fullPolicy().actions;
  Record expected{3972};
  expected.text16(0, u"A").u8(160, 9).u32(164, 0x01020304).u32(184, 1).u32(188, 2).u32(192, 2);
  expected.u8(436, 7).text16(436 + 14, u"ab").u8(436 + 528, 1).text16(436 + 528 + 14, u"c");
  auto shortened = expected;
  for (std::size_t i = 0; i < 2; ++i)
    shortened.u32(3076 + 28 * i, entry.actions[i].actionId).u32(3080 + 28 * i, entry.actions[i].value);
  const Bytes packed = packedPolicy(fullPolicy());
  expected.put(3076, Bytes(packed.begin() + 3076, packed.begin() + 3076 + 56));

  const auto revision4 = parsed(vqs::parsePolicyBinaryRev4, oldFileOf(4, {entry}));
  EXPECT_TRUE(revision4.valid);
  EXPECT_EQ(difference(bytesOf(revision4.policies[0]), expected.bytes()), "");
  entry.shortActions = true;
  const auto revision3 = parsed(vqs::parsePolicyBinaryRev3, oldFileOf(3, {entry}));
  EXPECT_TRUE(revision3.valid);
  EXPECT_EQ(difference(bytesOf(revision3.policies[0]), shortened.bytes()), "");
}

TEST(ParsePolicyBinary, takes_nothing_of_no_policies_in_revision_5_and_all_of_none_in_the_older_ones) {
  EXPECT_FALSE(parsed(vqs::parsePolicyBinaryRev5, fileOf({}), 0).valid);
  EXPECT_TRUE(parsed(vqs::parsePolicyBinaryRev3, oldFileOf(3, {}), 0).valid);
  EXPECT_TRUE(parsed(vqs::parsePolicyBinaryRev4, oldFileOf(4, {}), 0).valid);
  EXPECT_FALSE(parsed(vqs::parsePolicyBinaryRev3, front(oldFileOf(3, {}), 63), 0).valid);
  EXPECT_FALSE(parsed(vqs::parsePolicyBinaryRev4, front(oldFileOf(4, {}), 63), 0).valid);
}

TEST(ParsePolicyBinary, goes_by_the_revision_of_the_file) {
  EXPECT_TRUE(parsed(vqs::parsePolicyBinary, fileOf({{}})).valid);
  EXPECT_TRUE(parsed(vqs::parsePolicyBinary, oldFileOf(3, {narrowEntry()})).valid);
  EXPECT_TRUE(parsed(vqs::parsePolicyBinary, oldFileOf(4, {narrowEntry()})).valid);
  EXPECT_FALSE(parsed(vqs::parsePolicyBinary, fileOf({{}}, {.revision = 6})).valid);
  EXPECT_FALSE(parsed(vqs::parsePolicyBinary, {}).valid);
}

}  // namespace
}  // namespace test
