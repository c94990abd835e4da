// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>

#include "documents/documents.h"
#include "tests/documents/policies/models.h"

namespace documents {
namespace {

using Kind = PolicyDifference::Kind;
using FieldKind = FieldDifference::Kind;

/// What a field's difference says, without the places.
struct Said {
  FieldKind kind;
  std::string field;
  std::string first;
  std::string second;

  bool operator==(const Said&) const = default;
};
void PrintTo(const Said& said, std::ostream* stream) {
  *stream << static_cast<int>(said.kind) << ' ' << said.field << ": " << said.first << " -> " << said.second;
}

PolicySet setOf(std::vector<Policy> policies) {
  return {.version1 = 1, .version2 = 2, .policies = std::move(policies)};
}

PolicySet numbered(const std::vector<std::uint32_t>& ids) {
  PolicySet set = setOf({});
  for (const auto id : ids) set.policies.push_back(namedPolicy(id, u"p" + std::u16string(1, char16_t(u'a' + id % 26))));
  return set;
}

VqsPolicyAction action(std::uint32_t id, std::uint32_t value) {
  VqsPolicyAction action{};
  action.actionId = id;
  action.value = value;
  return action;
}

std::vector<Said> saidOf(const PolicyDifference& difference) {
  std::vector<Said> said;
  said.reserve(difference.fields.size());
  for (const auto& field : difference.fields) said.push_back({field.kind, field.field, field.first, field.second});
  return said;
}

/// What differs between two policies of one id.
std::vector<Said> changesOf(const Policy& first, const Policy& second) {
  const auto difference = compare(setOf({first}), setOf({second}));
  EXPECT_TRUE(difference.moved.empty());
  EXPECT_LE(difference.policies.size(), 1U);
  return difference.policies.empty() ? std::vector<Said>{} : saidOf(difference.policies[0]);
}

std::vector<Said> conditionChanges(std::vector<VqsPolicyCondition> first, std::vector<VqsPolicyCondition> second) {
  auto a = namedPolicy(1, u"a");
  auto b = a;
  a.conditions = std::move(first);
  b.conditions = std::move(second);
  return changesOf(a, b);
}

std::vector<std::uint32_t> movedIds(const std::vector<std::uint32_t>& first, const std::vector<std::uint32_t>& second) {
  std::vector<std::uint32_t> ids;
  for (const auto& moved : compare(numbered(first), numbered(second)).moved) ids.push_back(moved.id);
  return ids;
}

constexpr VqsPolicyCondition kOnBattery{0, 2, 1, 0};
constexpr VqsPolicyCondition kOnMains{0, 2, 0, 0};
constexpr VqsPolicyCondition kBalanced{1, 2, 2, 0};
constexpr VqsPolicyCondition kWarm{6, 3, 4600, 0};
constexpr VqsPolicyCondition kHot{6, 3, 4800, 0};
constexpr VqsPolicyCondition kCool{6, 1, 3000, 0};

TEST(Compare, finds_nothing_between_equal_sets) {
  for (const char* name : {"laptop-r5.json", "limits-r5.json", "wide-r5.json"})
    EXPECT_TRUE(compare(sampleSet(name), sampleSet(name)).isEmpty()) << name;
  EXPECT_TRUE(compare({}, {}).isEmpty());
}

TEST(Compare, finds_what_revision_3_left_out_of_the_laptops_policies) {
  const auto difference = compare(sampleSet("laptop-r5.json"), sampleSet("laptop-r3.json"));
  EXPECT_TRUE(difference.versionDiffers);
  EXPECT_TRUE(difference.moved.empty());
  for (const auto& policy : difference.policies) {
    EXPECT_EQ(policy.kind, Kind::kChanged);
    for (const auto& field : policy.fields) EXPECT_EQ(field.field, "do");
  }
  EXPECT_FALSE(difference.policies.empty());
}

TEST(Compare, tells_another_version) {
  auto other = setOf({});
  other.version2 = 3;
  EXPECT_TRUE(compare(setOf({}), other).versionDiffers);
  EXPECT_FALSE(compare(setOf({}), other).isEmpty());
}

TEST(Compare, tells_a_renamed_policy_from_a_changed_one) {
  auto changed = namedPolicy(1, u"new");
  changed.flag0 = 1;
  const auto difference = compare(setOf({namedPolicy(1, u"old"), namedPolicy(2, u"two")}),
                                  setOf({namedPolicy(1, u"new"), namedPolicy(2, u"two")}));
  ASSERT_EQ(difference.policies.size(), 1U);
  EXPECT_EQ(difference.policies[0].kind, Kind::kRenamed);
  EXPECT_EQ(difference.policies[0].name, "old");
  EXPECT_EQ(saidOf(difference.policies[0]), (std::vector<Said>{{FieldKind::kChanged, "name", "old", "new"}}));
  EXPECT_EQ(compare(setOf({namedPolicy(1, u"old")}), setOf({changed})).policies.at(0).kind, Kind::kChanged);
}

TEST(Compare, knows_a_policy_again_whose_id_changed) {
  auto policy = namedPolicy(10, u"same");
  policy.conditions = {kOnBattery};
  auto again = policy;
  again.id = 20;
  const auto difference = compare(setOf({namedPolicy(1, u"a"), policy}), setOf({again, namedPolicy(1, u"a")}));
  ASSERT_EQ(difference.policies.size(), 1U);
  EXPECT_EQ(difference.policies[0].kind, Kind::kChanged);
  EXPECT_EQ(difference.policies[0].id, 10U);
  EXPECT_EQ(difference.policies[0].firstIndex, 1U);
  EXPECT_EQ(difference.policies[0].secondIndex, 0U);
  EXPECT_EQ(saidOf(difference.policies[0]), (std::vector<Said>{{FieldKind::kChanged, "id", "10", "20"}}));
  EXPECT_EQ(difference.moved.size(), 1U);
}

TEST(Compare, takes_a_policy_with_another_id_and_other_content_for_another_one) {
  const auto difference = compare(setOf({namedPolicy(10, u"one")}), setOf({namedPolicy(20, u"two")}));
  ASSERT_EQ(difference.policies.size(), 2U);
  EXPECT_EQ(difference.policies[0].kind, Kind::kOnlyInFirst);
  EXPECT_EQ(difference.policies[0].id, 10U);
  EXPECT_EQ(difference.policies[0].name, "one");
  EXPECT_EQ(difference.policies[1].kind, Kind::kOnlyInSecond);
  EXPECT_EQ(difference.policies[1].id, 20U);
  EXPECT_EQ(difference.policies[1].secondIndex, 0U);
}

TEST(Compare, pairs_policies_of_one_id_by_their_order) {
  const auto difference = compare(setOf({namedPolicy(1, u"a"), namedPolicy(1, u"b"), namedPolicy(1, u"c")}),
                                  setOf({namedPolicy(1, u"a"), namedPolicy(1, u"x")}));
  ASSERT_EQ(difference.policies.size(), 2U);
  EXPECT_EQ(difference.policies[0].kind, Kind::kRenamed);
  EXPECT_EQ(difference.policies[0].firstIndex, 1U);
  EXPECT_EQ(difference.policies[1].kind, Kind::kOnlyInFirst);
  EXPECT_EQ(difference.policies[1].firstIndex, 2U);
}

TEST(Compare, tells_a_changed_value) {
  EXPECT_EQ(conditionChanges({kOnBattery, kWarm}, {kOnBattery, kHot}),
            (std::vector<Said>{{FieldKind::kChanged, "when", "Skin Temperature op 3: 4600 centi-C",
                                "Skin Temperature op 3: 4800 centi-C"}}));
}

TEST(Compare, tells_a_moved_entry) {
  EXPECT_EQ(conditionChanges({kOnBattery, kBalanced, kWarm}, {kBalanced, kWarm, kOnBattery}),
            (std::vector<Said>{{FieldKind::kMoved, "when", "Power Source is DC Power", "Power Source is DC Power"}}));
}

TEST(Compare, tells_an_added_and_a_removed_entry) {
  EXPECT_EQ(conditionChanges({kOnBattery, kBalanced}, {kBalanced, kWarm}),
            (std::vector<Said>{{FieldKind::kRemoved, "when", "Power Source is DC Power", ""},
                               {FieldKind::kAdded, "when", "", "Skin Temperature op 3: 4600 centi-C"}}));
}

TEST(Compare, takes_the_condition_with_the_same_comparison_for_the_changed_one) {
  EXPECT_EQ(conditionChanges({kWarm}, {kCool, kHot}),
            (std::vector<Said>{{FieldKind::kChanged, "when", "Skin Temperature op 3: 4600 centi-C",
                                "Skin Temperature op 3: 4800 centi-C"},
                               {FieldKind::kAdded, "when", "", "Skin Temperature op 1: 3000 centi-C"}}));
}

TEST(Compare, gives_the_places_of_entries) {
  auto first = namedPolicy(1, u"a");
  auto second = first;
  first.conditions = {kOnBattery, kBalanced, kWarm};
  second.conditions = {kHot, kOnBattery, kBalanced};
  const auto fields = compare(setOf({first}), setOf({second})).policies.at(0).fields;
  ASSERT_EQ(fields.size(), 1U);
  EXPECT_EQ(fields[0].kind, FieldKind::kChanged);
  EXPECT_EQ(fields[0].firstIndex, 2U);
  EXPECT_EQ(fields[0].secondIndex, 0U);
}

TEST(Compare, says_every_field_in_the_order_of_a_document) {
  auto first = namedPolicy(1, u"a");
  first.description = "caf\xE9";
  first.conditions = {kOnBattery};
  first.actions = {action(2, 15000)};
  first.texts = {{.text = u"a.exe", .flag = 0}, {.text = u"b.exe", .flag = 0}};
  Policy second = namedPolicy(1, u"b");
  second.conditions = {kOnMains};
  second.actions = {action(2, 16000), action(0, 1)};
  second.texts = {{.text = u"a.exe", .flag = 1}, {.text = u"c.exe", .flag = 0}};
  second.flag0 = 1;
  second.flag1 = 2;
  second.flag2 = 3;
  second.param0 = 4;
  second.param1 = 5;
  second.param2 = 6;
  EXPECT_EQ(changesOf(first, second),
            (std::vector<Said>{
                {FieldKind::kChanged, "name", "a", "b"},
                {FieldKind::kChanged, "description", "caf\xEF\xBF\xBD", ""},
                {FieldKind::kChanged, "when", "Power Source is DC Power", "Power Source is AC Power"},
                {FieldKind::kChanged, "do", "SPL 15000 mW", "SPL 16000 mW"},
                {FieldKind::kAdded, "do", "", "Fan Mode Manual"},
                {FieldKind::kChanged, "texts", "\"a.exe\"", "\"a.exe\" (flag 1)"},
                {FieldKind::kRemoved, "texts", "\"b.exe\"", ""},
                {FieldKind::kAdded, "texts", "", "\"c.exe\""},
                {FieldKind::kChanged, "flag0", "0", "1"},
                {FieldKind::kChanged, "flag1", "0", "2"},
                {FieldKind::kChanged, "flag2", "0", "3"},
                {FieldKind::kChanged, "param0", "0", "4"},
                {FieldKind::kChanged, "param1", "0", "5"},
                {FieldKind::kChanged, "param2", "0", "6"},
            }));
}

TEST(Compare, tells_apart_what_reads_alike) {
  EXPECT_EQ(changesOf(namedPolicy(1, std::u16string{0xD800}), namedPolicy(1, std::u16string{0xD801})).size(), 1U);
}

TEST(Compare, moves_as_few_policies_as_can_be) {
  EXPECT_EQ(movedIds({1, 2, 3, 4}, {1, 2, 3, 4}), (std::vector<std::uint32_t>{}));
  EXPECT_EQ(movedIds({1, 2, 3, 4}, {2, 3, 4, 1}), (std::vector<std::uint32_t>{1}));
  EXPECT_EQ(movedIds({1, 2, 3, 4}, {4, 1, 2, 3}), (std::vector<std::uint32_t>{4}));
  EXPECT_EQ(movedIds({1, 2, 3, 4, 5}, {3, 1, 2, 5, 4}).size(), 2U);
  EXPECT_EQ(movedIds({1, 2, 3}, {3, 2, 1}).size(), 2U);
  EXPECT_EQ(movedIds({1, 9, 2, 8, 3}, {1, 2, 7, 3}), (std::vector<std::uint32_t>{}));
}

TEST(Compare, gives_the_places_of_moved_policies) {
  const auto moved = compare(numbered({10, 20, 30}), numbered({20, 30, 10})).moved;
  ASSERT_EQ(moved.size(), 1U);
  EXPECT_EQ(moved[0].id, 10U);
  EXPECT_EQ(moved[0].name, "pk");
  EXPECT_EQ(moved[0].firstIndex, 0U);
  EXPECT_EQ(moved[0].secondIndex, 2U);
}

TEST(Compare, moves_as_few_as_trying_all_subsets_finds) {
  std::vector<std::uint32_t> order{1, 2, 3, 4, 5, 6};
  do {
    std::size_t longest = 0;
    for (unsigned subset = 0; subset < 64; ++subset) {
      std::vector<std::uint32_t> kept;
      for (unsigned i = 0; i < 6; ++i)
        if ((subset >> i & 1U) != 0) kept.push_back(order[i]);
      if (std::ranges::is_sorted(kept)) longest = std::max(longest, kept.size());
    }
    EXPECT_EQ(movedIds({1, 2, 3, 4, 5, 6}, order).size(), 6 - longest);
  } while (std::ranges::next_permutation(order).found);
}

TEST(Compare, ends_soon_on_100_000_policies) {
  std::vector<std::uint32_t> ids(100'000);
  for (std::uint32_t i = 0; i < ids.size(); ++i) ids[i] = i;
  const auto first = numbered(ids);
  std::ranges::reverse(ids);
  for (auto& id : ids) id += 50'000;
  const auto second = numbered(ids);
  const auto start = std::chrono::steady_clock::now();
  const auto difference = compare(first, second);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds{10});
  // Half of them have the same id in both. Of the others every name is in both sets as often, give or take one.
  const auto alone = static_cast<std::size_t>(
      std::ranges::count_if(difference.policies, [](const auto& policy) { return policy.kind != Kind::kChanged; }));
  EXPECT_LE(alone, 26U);
  EXPECT_GE(difference.moved.size(), 49'999U);
}

}  // namespace
}  // namespace documents
