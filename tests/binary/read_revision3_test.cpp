// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/binary/reading.h"
#include "tests/support/results.h"

// What both readers take and refuse in files of revisions 3 and 4, field by field.

namespace test {
namespace {

constexpr OldLimits kNoLimits = {.name = 0xFFFFFFFF,
                                 .description = 0xFFFFFFFF,
                                 .conditions = 0xFFFFFFFF,
                                 .texts = 0xFFFFFFFF,
                                 .textSize = 0xFFFFFFFF,
                                 .actions = 0xFFFFFFFF};

/// Every case runs for both revisions; the parameter is the revision.
class OldRevision : public BinaryReading, public testing::WithParamInterface<std::uint16_t> {
 protected:
  Bytes one(Entry entry, const OldLimits& limits = {}) {
    entry.shortActions = GetParam() == 3;
    // What an empty text looks like differs: with its flag in revision 4, without it in revision 3.
    for (auto& text : entry.texts)
      if (text.text.empty() && !text.size) text.flag = GetParam() == 3 ? std::nullopt : std::optional<std::uint8_t>{0};
    return oldFileOf(GetParam(), {entry}, limits);
  }
  Bytes body(const Entry& entry, const OldLimits& limits = {}) { return onlyBody(one(entry, limits)); }
  void expectRefusedEntry(const Entry& entry, const OldLimits& limits = {}) {
    expectRefused(joined({one(entry, limits), Bytes(4000, 1)}));
  }
};

INSTANTIATE_TEST_SUITE_P(Revisions, OldRevision, testing::Values(3, 4));

Bytes bodyPart(const Bytes& body, std::size_t first, std::size_t size) {
  return {body.begin() + static_cast<long>(first), body.begin() + static_cast<long>(first + size)};
}

Entry named(std::size_t length) { return {.name = Bytes(length, 'n')}; }

Entry described(std::size_t size) {
  auto entry = narrowEntry();
  entry.description = Bytes(size, 'd');
  return entry;
}

Entry withConditions(std::size_t count) {
  auto entry = narrowEntry();
  entry.conditions.assign(count, {1, 2, 3, 4});
  return entry;
}

Entry withTexts(std::size_t count, std::size_t size) {
  auto entry = narrowEntry();
  entry.texts.assign(count, {.text = Bytes(size, 't'), .flag = 1});
  return entry;
}

Entry withActions(std::size_t count) {
  auto entry = narrowEntry();
  entry.actions.assign(count, {5, 6});
  return entry;
}

TEST_P(OldRevision, every_field_arrives_and_the_rest_of_the_body_is_zero) {
  Policy policy = richPolicy();
  policy.actions = {{5, 6}, {7, 8}};
  Entry entry = wideEntry(policy);
  entry.name = characters(policy.description.substr(0, 5));
  policy.name = std::u16string{u"every"};
  entry.texts = {{characters("ab?"), 1}, {characters("second text?"), 0}};
  expectBodies(one(entry), {policyBody(2, policy)});
}

TEST_P(OldRevision, widens_each_character_by_zero_extension) {
  Bytes all;
  for (int character = 1; character <= 63; ++character) all.push_back(static_cast<std::uint8_t>(192 + character));
  Entry entry{.name = all, .texts = {{.text = all, .flag = 0}}};
  const Bytes result = body(entry);
  std::u16string wide;
  for (const auto character : all) wide += character;
  EXPECT_EQ(bodyPart(result, 4, 128), joined({units(wide), {0, 0}}));
  wide.pop_back();
  EXPECT_EQ(bodyPart(result, 448, 126), joined({units(wide), {0, 0}}));
}

TEST_P(OldRevision, name_lengths_from_1_to_63) {
  for (const std::size_t length : {1U, 62U, 63U})
    EXPECT_EQ(bodyPart(body(named(length)), 4, 128),
              joined({units(std::u16string(length, u'n')), Bytes(128 - 2 * length, 0)}));
  for (const std::size_t length : {0U, 64U, 127U, 128U, 4000U}) expectRefusedEntry(named(length));
  for (const std::size_t length : {64U, 128U, 1000U}) expectRefusedEntry(named(length), kNoLimits);
  expectRefusedEntry({.nameSize = 0xFFFFFFFF}, kNoLimits);
}

TEST_P(OldRevision, a_name_may_hold_zero_characters) {
  Entry entry{.name = {'a', 0, 'b'}};
  EXPECT_EQ(bodyPart(body(entry), 4, 8), hex("61 00 00 00 62 00 00 00"));
}

TEST_P(OldRevision, description_sizes_from_1_to_32) {
  for (const std::size_t size : {1U, 31U, 32U})
    EXPECT_EQ(bodyPart(body(described(size)), 132, 33), joined({Bytes(size, 'd'), Bytes(33 - size, 0)}));
  expectRefusedEntry(described(0));
  expectRefusedEntry(described(33));
}

TEST_P(OldRevision, condition_counts_from_1_to_15) {
  body(withConditions(1));
  EXPECT_EQ(bodyPart(body(withConditions(15)), 208 + 224, 16), hex("01 00 00 00 02 00 00 00 03 00 00 00 04 00 00 00"));
  expectRefusedEntry(withConditions(0));
  expectRefusedEntry(withConditions(16));
}

TEST_P(OldRevision, text_counts_from_0_to_5) {
  body(withTexts(0, 0));
  body(withTexts(5, 3));
  expectRefusedEntry(withTexts(6, 3));
}

TEST_P(OldRevision, action_counts_from_0_to_32) {
  EXPECT_EQ(bodyPart(body(withActions(32)), 3020 + 31 * 28, 28),
            joined({hex("05 00 00 00 06 00 00 00"), Bytes(20, 0)}));
  expectRefusedEntry(withActions(33));
}

TEST_P(OldRevision, the_limits_of_the_file_bound_what_its_policies_hold) {
  body(named(4), {.name = 4});
  expectRefusedEntry(named(5), {.name = 4});
  body(described(8), {.description = 8});
  expectRefusedEntry(described(9), {.description = 8});
  body(withConditions(3), {.conditions = 3});
  expectRefusedEntry(withConditions(4), {.conditions = 3});
  body(withTexts(2, 4), {.texts = 2});
  expectRefusedEntry(withTexts(3, 4), {.texts = 2});
  body(withTexts(1, 4), {.textSize = 4});
  expectRefusedEntry(withTexts(1, 5), {.textSize = 4});
  body(withActions(2), {.actions = 2});
  expectRefusedEntry(withActions(3), {.actions = 2});
}

TEST_P(OldRevision, limits_of_zero_leave_room_for_nothing) {
  expectRefusedEntry(narrowEntry(), {.name = 0});
  expectRefusedEntry(narrowEntry(), {.description = 0});
  expectRefusedEntry(narrowEntry(), {.conditions = 0});
  body(narrowEntry(), {.texts = 0, .textSize = 0, .actions = 0});
  expectRefusedEntry(withTexts(1, 3), {.texts = 0});
  expectRefusedEntry(withTexts(1, 3), {.textSize = 0});
  body(withTexts(1, 0), {.textSize = 0});
  expectRefusedEntry(withActions(1), {.actions = 0});
}

TEST_P(OldRevision, limits_beyond_what_a_policy_holds_are_harmless_until_they_are_used) {
  body(narrowEntry(), kNoLimits);
  body(named(63), kNoLimits);
  body(described(32), kNoLimits);
  body(withConditions(15), kNoLimits);
  body(withTexts(5, 256), kNoLimits);
  body(withActions(32), kNoLimits);
  expectRefusedEntry(described(33), kNoLimits);
  expectRefusedEntry(described(3000), kNoLimits);
  expectRefusedEntry(withConditions(16), kNoLimits);
  expectRefusedEntry(withConditions(200), kNoLimits);
  expectRefusedEntry(withTexts(6, 3), kNoLimits);
  expectRefusedEntry(withActions(33), kNoLimits);
}

TEST_P(OldRevision, counts_and_sizes_without_bounds_are_refused) {
  auto entry = narrowEntry();
  entry.conditionCount = 0xFFFFFFFF;
  expectRefusedEntry(entry, kNoLimits);
  entry.conditionCount = 0x10000001;
  expectRefusedEntry(entry, kNoLimits);
  entry = narrowEntry();
  entry.textCount = 0xFFFFFFFF;
  expectRefusedEntry(entry, kNoLimits);
  entry = narrowEntry();
  entry.actionCount = 0xFFFFFFFF;
  expectRefusedEntry(entry, kNoLimits);
  entry = narrowEntry();
  entry.descriptionSize = 0xFFFFFFFF;
  expectRefusedEntry(entry, kNoLimits);
  entry = narrowEntry();
  entry.texts = {{.text = {}, .flag = 0, .size = 0xFFFFFFFF}};
  expectRefusedEntry(entry, kNoLimits);
}

TEST_P(OldRevision, text_sizes_are_0_or_from_2_to_256) {
  for (const std::size_t size : {2U, 3U, 255U, 256U})
    EXPECT_EQ(bodyPart(body(withTexts(1, size), kNoLimits), 448, 513),
              joined({units(std::u16string(size - 1, u't')), Bytes(512 - 2 * (size - 1), 0), {1}}))
        << size;
  expectRefusedEntry(withTexts(1, 1), kNoLimits);
  expectRefusedEntry(withTexts(1, 257), kNoLimits);
  expectRefusedEntry(withTexts(1, 512), kNoLimits);
}

TEST_P(OldRevision, the_stored_last_character_of_a_text_is_dropped_whatever_it_is) {
  auto entry = narrowEntry();
  entry.texts = {{hex("61 62 00"), 1}, {hex("61 62"), 1}, {hex("61 62 63"), 0}};
  const Bytes result = body(entry);
  EXPECT_EQ(bodyPart(result, 448, 8), hex("61 00 62 00 00 00 00 00"));
  EXPECT_EQ(bodyPart(result, 448 + 514, 8), hex("61 00 00 00 00 00 00 00"));
  EXPECT_EQ(bodyPart(result, 448 + 1028, 8), hex("61 00 62 00 00 00 00 00"));
}

TEST_P(OldRevision, an_empty_text_leaves_its_slot_empty) {
  auto entry = withTexts(3, 0);
  entry.texts[1] = {hex("78 00"), 1};
  entry.actions = {{5, 6}};
  const Policy policy{.name = u"A", .description = "", .texts = {{u"", 0}, {u"x", 1}, {u"", 0}}, .actions = {{5, 6}}};
  expectBodies(one(entry), {policyBody(2, policy)});
}

TEST_P(OldRevision, more_than_400_policies_are_taken) {
  const std::vector<Entry> entries(1000, narrowEntry());
  const auto path = file(oldFileOf(GetParam(), entries));
  const auto outcome = read(path, 2, 200 + 1000 * 3916);
  EXPECT_EQ(outcome.status, kDone);
  EXPECT_EQ(bodyPart(outcome.buffer, 48, 4), hex("e8 03 00 00"));
  EXPECT_EQ(bodyPart(outcome.buffer, 200 + 999 * 3916 + 4, 4), hex("41 00 00 00"));
  EXPECT_EQ(readSummary(path).status, kDone);
}

TEST_P(OldRevision, a_count_that_the_file_cannot_hold_is_refused) {
  expectRefused(oldFileOf(GetParam(), {narrowEntry()}, {}, {.policyCount = 0}));
  for (const std::uint32_t count : {2U, 0x80000000U, 0xFFFFFFFFU}) {
    const auto path = file(oldFileOf(GetParam(), {narrowEntry()}, {}, {.policyCount = count}));
    std::uint64_t size = UINT64_MAX;
    VqsPolicyBinary untouched = poisoned<VqsPolicyBinary>();
    EXPECT_EQ(vqsPbReadBinaryV2(session, path.c_str(), &untouched, &size, 0), kFailed) << count;
    EXPECT_EQ(bytesOf(untouched), Bytes(200, kPoison)) << count;
    EXPECT_EQ(readSummary(path).status, kFailed) << count;
  }
}

TEST_P(OldRevision, a_header_of_less_than_64_bytes_can_be_sized_but_not_read) {
  const Bytes whole = oldFileOf(GetParam(), {narrowEntry()});
  for (const long size : {12L, 36L, 63L}) {
    const auto path = file({whole.begin(), whole.begin() + size});
    const auto query = read(path, 2, 0);
    EXPECT_EQ(query.status, kDone);
    EXPECT_EQ(query.size, 200U + 3916);
    expectRefused({whole.begin(), whole.begin() + size});
  }
  expectRefused({whole.begin(), whole.begin() + 11});
}

TEST_P(OldRevision, there_is_no_magic) {
  Bytes file = oldFileOf(GetParam(), {narrowEntry()});
  // The bytes that hold the magic in revision 5 are the count and the start of a reserved run.
  EXPECT_EQ(bodyPart(file, 8, 8), hex("01 00 00 00 ee ee ee ee"));
  onlyBody(file);
}

TEST_P(OldRevision, bytes_after_the_last_entry_are_ignored_and_a_missing_byte_is_not) {
  Bytes file = one(withActions(2));
  onlyBody(joined({file, Bytes(77, 0xFF)}));
  file.pop_back();
  expectRefused(file);
}

TEST_F(BinaryReading, an_empty_text_has_a_flag_in_revision_4_only) {
  auto entry = narrowEntry();
  entry.texts = {{.text = {}, .flag = 1}};
  const Bytes flagged = onlyBody(oldFileOf(4, {entry}));
  EXPECT_EQ(bodyPart(flagged, 448, 514), joined({Bytes(512, 0), hex("01 00")}));
  // In the other revisions the flag is the first byte of the count of actions, which is one too high here.
  entry.texts[0].flag = 33;
  expectRefused(joined({oldFileOf(3, {entry}), Bytes(4000, 0)}));
  entry.name = hex("41 00 00 00");
  expectRefused(joined({fileOf({entry}), Bytes(4000, 0)}));
}

TEST_F(BinaryReading, revision_4_misses_the_flag_that_revision_3_does_not_write) {
  auto entry = narrowEntry();
  entry.texts = {{.text = {}, .flag = {}}};
  onlyBody(oldFileOf(3, {entry}));
  expectRefused(oldFileOf(4, {entry}));
}

TEST_F(BinaryReading, actions_are_8_bytes_in_revision_3_and_23_in_revision_4) {
  auto entry = narrowEntry();
  entry.actions = richPolicy().actions;
  const Bytes full = onlyBody(oldFileOf(4, {entry}));
  EXPECT_EQ(bodyPart(full, 3020, 28),
            hex("04 03 02 01 08 07 06 05 0c 0b 0a 09 0d 0e 00 00 12 11 10 0f 13 00 00 00 17 16 15 14"));
  entry.shortActions = true;
  const Bytes shortened = onlyBody(oldFileOf(3, {entry}));
  EXPECT_EQ(bodyPart(shortened, 3020, 28), joined({hex("04 03 02 01 08 07 06 05"), Bytes(20, 0)}));
  EXPECT_EQ(bodyPart(shortened, 3048, 28), joined({hex("e4 e3 e2 e1 e8 e7 e6 e5"), Bytes(20, 0)}));
  expectRefused(oldFileOf(4, {entry}));
}

}  // namespace
}  // namespace test
