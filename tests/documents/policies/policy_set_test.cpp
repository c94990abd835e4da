// SPDX-License-Identifier: Apache-2.0
#include "documents/policies/policy_set.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/documents/policies/models.h"
#include "tests/support/bytes.h"

namespace documents {
namespace {

using test::Bytes;
using test::bytesOf;
using test::recordOf;

vqs::PackedPolicy packed(const test::Policy& model) { return recordOf<vqs::PackedPolicy>(test::packedPolicy(model)); }
VqsPolicyV2 record(const test::Policy& model) { return recordOf<VqsPolicyV2>(test::policyBody(2, model)); }

std::vector<test::Policy> models() {
  auto full = test::fullPolicy(2);
  full.description.resize(31);
  return {test::emptyPolicy(), test::smallPolicy(), test::richPolicy(), full};
}

TEST(FromPacked, takes_every_field) {
  for (const auto& model : models()) EXPECT_EQ(fromPacked(packed(model)), policyOf(model));
}

TEST(ToPacked, makes_the_record_byte_for_byte) {
  for (const auto& model : models())
    EXPECT_EQ(test::difference(bytesOf(toPacked(policyOf(model))), test::packedPolicy(model)), "");
}

TEST(FromRecord, takes_every_field) {
  for (const auto& model : models()) EXPECT_EQ(fromRecord(record(model)), policyOf(model));
}

TEST(ToRecord, makes_the_record_byte_for_byte) {
  for (const auto& model : models())
    EXPECT_EQ(test::difference(bytesOf(toRecord(policyOf(model))), test::policyBody(2, model)), "");
}

TEST(FromPacked, cuts_counts_to_their_limits) {
  auto above = packed(test::fullPolicy(2));
  above.conditionCount = 16;
  above.textCount = 0xFFFFFFFF;
  above.actionCount = 33;
  const auto policy = fromPacked(above);
  EXPECT_EQ(policy.conditions.size(), 15U);
  EXPECT_EQ(policy.texts.size(), 5U);
  EXPECT_EQ(policy.actions.size(), 32U);
}

TEST(FromPacked, takes_a_text_that_fills_its_field) {
  auto endless = packed(test::emptyPolicy());
  std::ranges::fill(endless.name, VqsChar16{u'n'});
  std::ranges::fill(endless.description, 'd');
  endless.textCount = 1;
  std::ranges::fill(endless.texts[0].text, VqsChar16{u't'});
  const auto policy = fromPacked(endless);
  EXPECT_EQ(policy.name, std::u16string(64, u'n'));
  EXPECT_EQ(policy.description, std::string(32, 'd'));
  EXPECT_EQ(policy.texts.at(0).text, std::u16string(256, u't'));
}

TEST(FromPacked, leaves_out_what_lies_behind_a_zero_and_between_fields) {
  auto dirty = packed(test::smallPolicy());
  dirty.name[2] = u'x';
  dirty.description[1] = 'x';
  dirty.reserved0[0] = 1;
  dirty.conditions[1].value = 1;
  EXPECT_EQ(fromPacked(dirty), policyOf(test::smallPolicy()));
}

TEST(ToPacked, cuts_what_does_not_fit) {
  auto policy = namedPolicy(1, std::u16string(64, u'n'));
  policy.description = std::string(32, 'd');
  policy.conditions.resize(16);
  policy.texts.resize(6, {.text = std::u16string(256, u't'), .flag = 0});
  policy.actions.resize(33);
  const auto cut = fromPacked(toPacked(policy));
  EXPECT_EQ(cut.name, std::u16string(63, u'n'));
  EXPECT_EQ(cut.description, std::string(31, 'd'));
  EXPECT_EQ(cut.conditions.size(), 15U);
  EXPECT_EQ(cut.texts.size(), 5U);
  EXPECT_EQ(cut.texts[0].text, std::u16string(255, u't'));
  EXPECT_EQ(cut.actions.size(), 32U);
}

TEST(PolicySet, keeps_surrogates_without_a_partner) {
  const auto policy = namedPolicy(1, std::u16string{0xD800, 0xDC00, 0xDC00, 0xD800});
  EXPECT_EQ(fromPacked(toPacked(policy)).name, (std::u16string{0xD800, 0xDC00, 0xDC00, 0xD800}));
  EXPECT_EQ(fromRecord(toRecord(policy)).name, (std::u16string{0xD800, 0xDC00, 0xDC00, 0xD800}));
}

TEST(PolicySet, differs_in_every_field) {
  const auto original = policyOf(test::richPolicy());
  const auto differsWith = [&](const auto& change) {
    auto changed = original;
    change(changed);
    return !(changed == original);
  };
  EXPECT_FALSE(differsWith([](Policy&) {}));
  EXPECT_TRUE(differsWith([](Policy& policy) { policy.id ^= 1; }));
  EXPECT_TRUE(differsWith([](Policy& policy) { policy.name += u'x'; }));
  EXPECT_TRUE(differsWith([](Policy& policy) { policy.description += 'x'; }));
  EXPECT_TRUE(differsWith([](Policy& policy) { policy.flag0 ^= 1; }));
  EXPECT_TRUE(differsWith([](Policy& policy) { policy.flag1 ^= 1; }));
  EXPECT_TRUE(differsWith([](Policy& policy) { policy.flag2 ^= 1; }));
  EXPECT_TRUE(differsWith([](Policy& policy) { policy.param0 ^= 1; }));
  EXPECT_TRUE(differsWith([](Policy& policy) { policy.param1 ^= 1; }));
  EXPECT_TRUE(differsWith([](Policy& policy) { policy.param2 ^= 1; }));
  EXPECT_TRUE(differsWith([](Policy& policy) { policy.conditions.pop_back(); }));
  EXPECT_TRUE(differsWith([](Policy& policy) { policy.conditions[1].conditionId ^= 1; }));
  EXPECT_TRUE(differsWith([](Policy& policy) { policy.conditions[1].op ^= 1; }));
  EXPECT_TRUE(differsWith([](Policy& policy) { policy.conditions[1].value ^= 1; }));
  EXPECT_TRUE(differsWith([](Policy& policy) { policy.conditions[1].value2 ^= 1; }));
  EXPECT_TRUE(differsWith([](Policy& policy) { policy.actions.pop_back(); }));
  EXPECT_TRUE(differsWith([](Policy& policy) { policy.actions[1].actionId ^= 1; }));
  EXPECT_TRUE(differsWith([](Policy& policy) { policy.actions[1].value ^= 1; }));
  EXPECT_TRUE(differsWith([](Policy& policy) { policy.actions[1].value2 ^= 1; }));
  EXPECT_TRUE(differsWith([](Policy& policy) { policy.actions[1].option1 ^= 1; }));
  EXPECT_TRUE(differsWith([](Policy& policy) { policy.actions[1].option2 ^= 1; }));
  EXPECT_TRUE(differsWith([](Policy& policy) { policy.actions[1].value3 ^= 1; }));
  EXPECT_TRUE(differsWith([](Policy& policy) { policy.actions[1].option3 ^= 1; }));
  EXPECT_TRUE(differsWith([](Policy& policy) { policy.actions[1].value4 ^= 1; }));
  EXPECT_FALSE(differsWith([](Policy& policy) { policy.actions[1].reserved0[0] ^= 1; }));
  EXPECT_FALSE(differsWith([](Policy& policy) { policy.actions[1].reserved1[2] ^= 1; }));
  EXPECT_TRUE(differsWith([](Policy& policy) { policy.texts[1].text += u'x'; }));
  EXPECT_TRUE(differsWith([](Policy& policy) { policy.texts[1].flag ^= 1; }));
}

}  // namespace
}  // namespace documents
