// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/binary/reading.h"
#include "tests/support/results.h"

// What both readers take and refuse in a file of revision 5, field by field.

namespace test {
namespace {

class Revision5 : public BinaryReading {
 protected:
  void expectTaken(const Entry& entry) { onlyBody(fileOf({entry})); }
  void expectRefusedEntry(const Entry& entry) {
    // With plenty of bytes behind the entry, so that only the limit can be the reason.
    expectRefused(joined({fileOf({entry}), Bytes(4000, 0)}));
  }
};

Bytes bodyPart(const Bytes& body, std::size_t first, std::size_t size) {
  return {body.begin() + static_cast<long>(first), body.begin() + static_cast<long>(first + size)};
}

TEST_F(Revision5, every_field_arrives_and_the_rest_of_the_body_is_zero) {
  expectBodies(fileOf({wideEntry(richPolicy()), wideEntry(smallPolicy()), wideEntry(richPolicy())}),
               {policyBody(2, richPolicy()), policyBody(2, smallPolicy()), policyBody(2, richPolicy())});
}

TEST_F(Revision5, bytes_after_the_last_entry_are_ignored) {
  const Bytes file = fileOf({wideEntry(richPolicy()), wideEntry(smallPolicy())});
  const std::vector<Bytes> bodies = {policyBody(2, richPolicy()), policyBody(2, smallPolicy())};
  expectBodies(joined({file, Bytes(6, 0)}), bodies);
  expectBodies(joined({file, Bytes(1, 0xFF)}), bodies);
  expectBodies(joined({file, Bytes(10000, 0xFF)}), bodies);
}

TEST_F(Revision5, an_entry_cut_short_by_one_byte_is_refused) {
  Bytes file = fileOf({wideEntry(richPolicy()), wideEntry(smallPolicy())});
  file.pop_back();
  expectRefused(file);
}

TEST_F(Revision5, policy_counts_from_1_to_400) {
  const std::vector<Entry> entries(401);
  const std::uint64_t room = 200 + 402 * 3916;
  const auto most = file(fileOf({entries.begin() + 1, entries.end()}));
  EXPECT_EQ(read(most, 2, room).status, kDone);
  EXPECT_EQ(readSummary(most).status, kDone);
  const auto tooMany = file(fileOf(entries));
  const auto outcome = read(tooMany, 2, room);
  EXPECT_EQ(outcome.status, kFailed);
  EXPECT_EQ(outcome.buffer, Bytes(outcome.buffer.size(), kPoison));
  EXPECT_EQ(readSummary(tooMany).status, kFailed);
  expectRefused(fileOf({{}}, {.policyCount = 0}));
}

TEST_F(Revision5, a_count_that_the_file_cannot_hold_is_refused) {
  for (const std::uint32_t count : {2U, 400U, 401U, 0x80000000U, 0xFFFFFFFFU}) {
    const auto path = file(fileOf({{}}, {.policyCount = count}));
    const auto outcome = read(path, 0, 200 + 402 * 804);
    EXPECT_EQ(outcome.status, kFailed) << count;
    EXPECT_EQ(outcome.buffer, Bytes(outcome.buffer.size(), kPoison)) << count;
    EXPECT_EQ(readSummary(path).status, kFailed) << count;
  }
}

TEST_F(Revision5, name_sizes_from_1_to_128) {
  for (const std::uint32_t size : {1U, 2U, 127U, 128U}) {
    Entry entry{.name = Bytes(size, 0x41)};
    const Bytes body = onlyBody(fileOf({entry}));
    EXPECT_EQ(bodyPart(body, 4, 128), joined({entry.name, Bytes(128 - size, 0)})) << size;
  }
  for (const std::uint32_t size : {0U, 129U, 130U, 4000U}) expectRefusedEntry({.name = Bytes(size, 0x41)});
  for (const std::uint32_t size : {0x80000000U, 0xFFFFFFFFU}) expectRefusedEntry({.nameSize = size});
}

TEST_F(Revision5, an_odd_name_size_fills_half_a_unit) {
  const Bytes body = onlyBody(fileOf({{.name = hex("41 01 42")}}));
  EXPECT_EQ(bodyPart(body, 4, 6), hex("41 01 42 00 00 00"));
}

TEST_F(Revision5, a_name_needs_no_zero_unit) {
  const Bytes body = onlyBody(fileOf({{.name = units(std::u16string(64, u'\u3042'))}}));
  EXPECT_EQ(bodyPart(body, 4, 128), units(std::u16string(64, u'\u3042')));
  EXPECT_EQ(bodyPart(body, 132, 32), Bytes(32, 0));
}

TEST_F(Revision5, description_sizes_from_1_to_32) {
  for (const std::uint32_t size : {1U, 31U, 32U}) {
    const Bytes body = onlyBody(fileOf({{.description = Bytes(size, 'd')}}));
    EXPECT_EQ(bodyPart(body, 132, 33), joined({Bytes(size, 'd'), Bytes(33 - size, 0)})) << size;
  }
  for (const std::uint32_t size : {0U, 33U, 100U}) expectRefusedEntry({.description = Bytes(size, 'd')});
  for (const std::uint32_t size : {0x80000001U, 0xFFFFFFFFU}) expectRefusedEntry({.descriptionSize = size});
}

TEST_F(Revision5, condition_counts_from_1_to_15) {
  expectTaken({.conditions = std::vector<Condition>(1)});
  const std::vector<Condition> most(15, {7, 4, 8, 9});
  const Bytes body = onlyBody(fileOf({{.conditions = most}}));
  EXPECT_EQ(bodyPart(body, 208 + 14 * 16, 16), hex("07 00 00 00 04 00 00 00 08 00 00 00 09 00 00 00"));
  EXPECT_EQ(bodyPart(body, 188, 4), hex("0f 00 00 00"));
  expectRefusedEntry({.conditions = {}});
  expectRefusedEntry({.conditions = std::vector<Condition>(16)});
  for (const std::uint32_t count : {17U, 0x10000001U, 0x80000000U, 0xFFFFFFFFU})
    expectRefusedEntry({.conditionCount = count});
}

TEST_F(Revision5, text_counts_from_0_to_5) {
  const EntryText text{.text = hex("74 00 00 00"), .flag = 1};
  expectTaken({.texts = std::vector<EntryText>(5, text)});
  expectRefusedEntry({.texts = std::vector<EntryText>(6, text)});
  expectRefusedEntry({.texts = std::vector<EntryText>(6, {.text = {}, .flag = {}})});
  for (const std::uint32_t count : {7U, 0x80000000U, 0xFFFFFFFFU}) expectRefusedEntry({.textCount = count});
}

TEST_F(Revision5, text_sizes_up_to_512) {
  for (const std::uint32_t size : {1U, 2U, 3U, 511U, 512U}) {
    const Bytes body = onlyBody(fileOf({{.texts = {{.text = Bytes(size, 't'), .flag = 1}}}}));
    EXPECT_EQ(bodyPart(body, 448, 514), joined({Bytes(size, 't'), Bytes(512 - size, 0), hex("01 00")})) << size;
  }
  for (const std::uint32_t size : {513U, 514U, 1000U})
    expectRefusedEntry({.texts = {{.text = Bytes(size, 't'), .flag = 1}}});
  for (const std::uint32_t size : {0x80000000U, 0xFFFFFFFFU})
    expectRefusedEntry({.texts = {{.text = {}, .flag = 1, .size = size}}});
}

TEST_F(Revision5, an_empty_text_has_no_flag_and_leaves_its_slot_empty) {
  Entry entry{.texts = {{.text = {}, .flag = {}}, {.text = hex("78 00 00 00"), .flag = 1}, {.text = {}, .flag = {}}}};
  entry.actions = {{5, 6}};
  const Policy policy{.name = u"A", .description = "", .texts = {{u"", 0}, {u"x", 1}, {u"", 0}}, .actions = {{5, 6}}};
  expectBodies(fileOf({entry}), {policyBody(2, policy)});
}

TEST_F(Revision5, flags_and_ops_are_the_conversions_affair) {
  Entry flag{.texts = {{.text = hex("78 00 00 00"), .flag = 2}}};
  expectTaken(flag);
  expectTaken({.conditions = {{1, 5, 0, 0}}});
}

TEST_F(Revision5, action_counts_up_to_32) {
  std::vector<Action> most(32);
  most[31] = richPolicy().actions[0];
  const Bytes body = onlyBody(fileOf({{.actions = most}}));
  EXPECT_EQ(bodyPart(body, 3020 + 31 * 28, 28),
            hex("04 03 02 01 08 07 06 05 0c 0b 0a 09 0d 0e 00 00 12 11 10 0f 13 00 00 00 17 16 15 14"));
  EXPECT_EQ(bodyPart(body, 192, 4), hex("20 00 00 00"));
  expectRefusedEntry({.actions = std::vector<Action>(33)});
  for (const std::uint32_t count : {34U, 0x80000000U, 0xFFFFFFFFU}) expectRefusedEntry({.actionCount = count});
}

TEST_F(Revision5, a_limit_broken_in_the_last_of_several_policies_spoils_the_file) {
  Entry last;
  last.conditions.clear();
  expectRefused(joined({fileOf({{}, {}, last}), Bytes(100, 0)}));
}

TEST_F(Revision5, header_that_names_another_format_is_refused) {
  expectRefused(fileOf({{}}, {.formatVersion = 2}));
  expectRefused(fileOf({{}}, {.formatVersion = 0}));
  expectRefused(fileOf({{}}, {.revision = 2}));
  expectRefused(fileOf({{}}, {.revision = 6}));
  expectRefused(fileOf({{}}, {.magic = "$QTG"}));
}

TEST_F(Revision5, any_pair_of_versions_is_handed_back) {
  for (const auto& [first, second] : {std::pair<std::uint16_t, std::uint16_t>{0, 0}, {0xFFFF, 0x8001}}) {
    const auto path = file(fileOf({{}}, {.version1 = first, .version2 = second}));
    const auto outcome = read(path, 2);
    EXPECT_EQ(outcome.status, kDone);
    EXPECT_EQ(bodyPart(outcome.buffer, 0, 200), headOf(first, second, 1, 2));
    const auto summary = readSummary(path);
    ASSERT_EQ(summary.status, kDone);
    EXPECT_EQ(summary.summary->binaryVersion1, first);
    EXPECT_EQ(summary.summary->binaryVersion2, second);
  }
}

}  // namespace
}  // namespace test
