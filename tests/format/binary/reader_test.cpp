// SPDX-License-Identifier: Apache-2.0
#include "format/binary/reader.h"

#include <gtest/gtest.h>

#include "tests/support/packed.h"
#include "tests/support/policy_file.h"

namespace test {
namespace {

using vqs::announcedPolicyCount;
using namespace std::string_view_literals;

std::span<const std::byte> span(const Bytes& bytes) { return std::as_bytes(std::span{bytes}); }

/// The front of a file, of exactly that size in memory.
Bytes front(const Bytes& file, std::size_t size) { return {file.begin(), file.begin() + static_cast<long>(size)}; }

struct Read {
  bool valid;
  vqs::BinaryVersions versions;
  std::vector<vqs::PackedPolicy> policies;
};

Read read(const Bytes& file, std::size_t count = 1) {
  Read result{.valid = false, .versions = {0xAAAA, 0xBBBB}, .policies = std::vector<vqs::PackedPolicy>(count)};
  result.valid = vqs::readBinary(span(file), result.policies, result.versions);
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
  for (const std::string_view magic : {"$QTf"sv, "$qTF"sv, "FTQ$"sv, "\0\0\0\0"sv, " QTF"sv, "$QT "sv})
    EXPECT_EQ(announcedPolicyCount(span(fileOf({{}}, {.magic = magic}))), 0U) << magic;
  EXPECT_EQ(announcedPolicyCount(span(oldFileOf(3, {narrowEntry()}))), 1U);
}

TEST(AnnouncedPolicyCount, is_zero_for_a_file_of_no_policies) {
  EXPECT_EQ(announcedPolicyCount(span(fileOf({}))), 0U);
  EXPECT_EQ(announcedPolicyCount(span(oldFileOf(4, {}))), 0U);
}

TEST(BinaryReader, hands_out_the_versions_before_it_checks_anything_else) {
  const Bytes revision5 = fileOf({{}}, {.version1 = 0x1122, .version2 = 0x3344});
  const Bytes old = oldFileOf(3, {narrowEntry()}, {}, {.version1 = 0x1122, .version2 = 0x3344});
  for (const Bytes& file : {revision5, old}) {
    const auto five = read(front(file, 5));
    EXPECT_FALSE(five.valid);
    EXPECT_EQ(five.versions.first, 0xAAAA);
    const auto six = read(front(file, 6));
    EXPECT_FALSE(six.valid);
    EXPECT_EQ(six.versions.first, 0x1122);
    EXPECT_EQ(six.versions.second, 0xBBBB);
    const auto eight = read(front(file, 8));
    EXPECT_FALSE(eight.valid);
    EXPECT_EQ(eight.versions.second, 0x3344);
  }
}

TEST(BinaryReader, fills_packed_policies_whose_length_words_stay_zero) {
  const auto result = read(fileOf({wideEntry(richPolicy()), {}}), 2);
  ASSERT_TRUE(result.valid);
  Record expected{3972};
  expected.put(0, packedPolicy(richPolicy())).u16(436 + 12, 0).u16(436 + 528 + 12, 0);
  EXPECT_EQ(difference(bytesOf(result.policies[0]), expected.bytes()), "");
  Record smallest{3972};
  EXPECT_EQ(difference(bytesOf(result.policies[1]), smallest.text16(0, u"A").u32(184, 1).bytes()), "");
}

TEST(BinaryReader, does_the_same_for_the_older_revisions) {
  auto entry = narrowEntry();
  entry.flag0 = 9;
  entry.id = 0x01020304;
  entry.texts = {{characters("ab!"), 7}, {characters("c\0"), 1}};
  entry.texts[1].text = {'c', 0};
  entry.actions = richPolicy().actions;
  Record expected{3972};
  expected.text16(0, u"A").u8(160, 9).u32(164, 0x01020304).u32(184, 1).u32(188, 2).u32(192, 2);
  expected.u8(436, 7).text16(436 + 14, u"ab").u8(436 + 528, 1).text16(436 + 528 + 14, u"c");
  auto shortened = expected;
  for (std::size_t i = 0; i < 2; ++i)
    shortened.u32(3076 + 28 * i, entry.actions[i].actionId).u32(3080 + 28 * i, entry.actions[i].value);
  const Bytes packed = packedPolicy(richPolicy());
  expected.put(3076, Bytes(packed.begin() + 3076, packed.begin() + 3076 + 56));

  const auto revision4 = read(oldFileOf(4, {entry}));
  EXPECT_TRUE(revision4.valid);
  EXPECT_EQ(difference(bytesOf(revision4.policies[0]), expected.bytes()), "");
  entry.shortActions = true;
  const auto revision3 = read(oldFileOf(3, {entry}));
  EXPECT_TRUE(revision3.valid);
  EXPECT_EQ(difference(bytesOf(revision3.policies[0]), shortened.bytes()), "");
}

TEST(BinaryReader, takes_nothing_of_no_policies_in_revision_5_and_all_of_none_in_the_older_ones) {
  EXPECT_FALSE(read(fileOf({}), 0).valid);
  EXPECT_TRUE(read(oldFileOf(3, {}), 0).valid);
  EXPECT_TRUE(read(oldFileOf(4, {}), 0).valid);
  EXPECT_FALSE(read(front(oldFileOf(3, {}), 63), 0).valid);
  EXPECT_FALSE(read(front(oldFileOf(4, {}), 63), 0).valid);
}

TEST(BinaryReader, goes_by_the_revision_of_the_file) {
  EXPECT_TRUE(read(fileOf({{}})).valid);
  EXPECT_TRUE(read(oldFileOf(3, {narrowEntry()})).valid);
  EXPECT_TRUE(read(oldFileOf(4, {narrowEntry()})).valid);
  EXPECT_FALSE(read(fileOf({{}}, {.revision = 6})).valid);
  EXPECT_FALSE(read({}).valid);
}

using vqs::Defect;
using vqs::DefectKind;

/// The defect of a file whose policies, as many as it announces, are read, or are not.
Defect defectOf(const Bytes& file, bool isRead = false) {
  std::vector<vqs::PackedPolicy> policies(announcedPolicyCount(span(file)) % 1000);
  vqs::BinaryVersions versions{};
  Defect defect{};
  EXPECT_EQ(vqs::readBinary(span(file), policies, versions, &defect), isRead);
  return defect;
}

std::string show(const Defect& defect) {
  std::string text = std::to_string(static_cast<int>(defect.kind));
  for (const std::uint64_t number : {defect.offset, std::uint64_t{defect.policy}, std::uint64_t{defect.entry},
                                     defect.value, defect.least, defect.most})
    text += ' ' + std::to_string(number);
  return text;
}

void expectDefect(const Defect& found, const Defect& expected) { EXPECT_EQ(show(found), show(expected)); }

Bytes fullFile() { return fileOf({wideEntry(richPolicy())}); }

Bytes patched(Bytes file, std::size_t offset, std::uint8_t value) {
  file.at(offset) = value;
  return file;
}

TEST(BinaryDefect, is_none_of_a_good_file) {
  expectDefect(defectOf(fullFile(), true), {});
  expectDefect(defectOf(oldFileOf(4, {narrowEntry()}), true), {});
  expectDefect(vqs::headerDefect(span(fullFile())), {});
}

TEST(BinaryDefect, of_the_header_says_what_stands_there_and_what_may) {
  expectDefect(defectOf(front(fullFile(), 11)), {.kind = DefectKind::kHeaderCut, .offset = 11});
  expectDefect(defectOf(front(fullFile(), 15)), {.kind = DefectKind::kHeaderCut, .offset = 15});
  expectDefect(defectOf(front(oldFileOf(3, {narrowEntry()}), 63)), {.kind = DefectKind::kHeaderCut, .offset = 63});
  expectDefect(defectOf(patched(fullFile(), 1, 2)),
               {.kind = DefectKind::kUnknownFormatVersion, .value = 513, .least = 1, .most = 1});
  expectDefect(defectOf(patched(fullFile(), 2, 6)),
               {.kind = DefectKind::kUnknownRevision, .offset = 2, .value = 6, .least = 3, .most = 5});
  expectDefect(defectOf(patched(fullFile(), 9, 'q')), {.kind = DefectKind::kNoMagic, .offset = 8});
}

TEST(BinaryDefect, of_the_count) {
  expectDefect(defectOf(fileOf({})), {.kind = DefectKind::kNoPolicies, .offset = 12, .least = 1});
  expectDefect(defectOf(oldFileOf(3, {}), true), {.kind = DefectKind::kNoPolicies, .offset = 8, .least = 1});
  // The smallest entry has 57 bytes of its own.
  const Bytes three = fileOf({{}}, {.policyCount = 3});
  expectDefect(defectOf(joined({three, Bytes(16 + 3 * 57 - three.size() - 1, 0)})),
               {.kind = DefectKind::kNoRoom, .offset = 12, .value = 3, .least = 1, .most = 2});
  expectDefect(defectOf(fileOf(std::vector<Entry>(401))),
               {.kind = DefectKind::kTooManyPolicies, .offset = 12, .value = 401, .least = 1, .most = 400});
}

/// A defect of the second policy.
Defect second(DefectKind kind, std::uint64_t offset, std::uint64_t value, std::uint64_t least, std::uint64_t most,
              std::uint32_t entry = 0) {
  return {.kind = kind, .offset = offset, .policy = 1, .entry = entry, .value = value, .least = least, .most = most};
}

TEST(BinaryDefect, of_a_policy_names_its_place) {
  // The first entry takes 60 bytes.
  const Bytes two = fileOf({{}, wideEntry(richPolicy())});
  expectDefect(defectOf(patched(two, 76, 0)), second(DefectKind::kNameLength, 76, 0, 1, 128));
  expectDefect(defectOf(patched(two, 90, 33)), second(DefectKind::kDescriptionLength, 90, 33, 1, 32));
  expectDefect(defectOf(patched(two, 125, 16)), second(DefectKind::kConditionCount, 125, 16, 1, 15));
  expectDefect(defectOf(patched(two, 129, 6)), second(DefectKind::kTextCount, 129, 6, 0, 5));
  expectDefect(defectOf(patched(two, 178, 2)), second(DefectKind::kTextLength, 176, 24 + 0x20000, 0, 512, 1));
  expectDefect(defectOf(patched(two, 205, 33)), second(DefectKind::kActionCount, 205, 33, 0, 32));
}

TEST(BinaryDefect, of_a_file_that_is_read_is_its_first) {
  const Bytes two = fileOf({{}, wideEntry(richPolicy())});
  const Bytes flag = patched(two, 175, 2);
  expectDefect(defectOf(flag, true), second(DefectKind::kUnknownTextFlag, 175, 2, 0, 1));
  const Bytes comparison = patched(flag, 153, 5);
  expectDefect(defectOf(comparison, true), second(DefectKind::kUnknownComparison, 153, 5, 0, 4, 1));
  expectDefect(defectOf(patched(comparison, 205, 33)), second(DefectKind::kUnknownComparison, 153, 5, 0, 4, 1));
}

TEST(BinaryDefect, of_a_text_that_is_nothing_but_its_terminator) {
  auto entry = narrowEntry();
  entry.texts = {{characters("ab"), 0}, {characters("x"), 0}};
  entry.texts[1] = {.text = {0}, .flag = 0};
  const auto found = defectOf(oldFileOf(4, {entry}));
  // 64 + 4 + 1 + 4 + 1 + 19 + 8 + 16, and the first text
  expectDefect(found, {.kind = DefectKind::kTextWithoutCharacters,
                       .offset = 117 + 4 + entry.texts[0].text.size() + 1,
                       .entry = 1,
                       .value = 1,
                       .least = 0,
                       .most = 256});
}

TEST(BinaryDefect, of_a_cut_file_is_at_its_end) {
  expectDefect(defectOf(front(fullFile(), 100)), {.kind = DefectKind::kPolicyCut, .offset = 100});
}

TEST(ReadEach, hands_out_the_policies_in_order) {
  const auto file = fileOf({{.id = 7}, {.id = 5}, {.id = 6}});
  std::vector<std::uint32_t> ids;
  vqs::readEach(span(file), {.take =
                                 [](void* target, const vqs::PackedPolicy& policy) {
                                   static_cast<std::vector<std::uint32_t>*>(target)->push_back(policy.id);
                                 },
                             .target = &ids});
  EXPECT_EQ(ids, (std::vector<std::uint32_t>{7, 5, 6}));
}

}  // namespace
}  // namespace test
