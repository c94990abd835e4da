// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>

#include "tests/journey/client.h"
#include "tests/support/bytes.h"
#include "tests/support/results.h"
#include "tests/support/temporary_folder.h"

namespace test {
namespace {

/// An open session on the driver, whose stores are empty.
class PolicyRoad : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(vqsInitialize(&session_), kDone);
    ASSERT_EQ(vqsPbReset(session_), kDone);
    ASSERT_EQ(vqsAsmReset(session_), kDone);
    ASSERT_EQ(vqsBalanceProfileReset(session_), kDone);
  }
  void TearDown() override { EXPECT_EQ(vqsUninitialize(session_), kDone); }

  void load(const std::string& path, VqsPolicyStore store) {
    PolicyFile file{session_, path};
    for (std::uint32_t i = 0; i < file.head().policyCount; ++i) {
      VqsVersionedPolicy record{};
      record.structureVersion = 2;
      record.policy.v2 = file.policies()[i];
      std::uint32_t verdict = kPoisonWord;
      ASSERT_EQ(vqsPbAddPolicyV2(session_, &record, sizeof(record), &verdict, store), kDone);
      ASSERT_EQ(verdict, 0U);
    }
  }

  std::uint32_t countOf(VqsPolicyStore store) {
    VqsPolicyListV2 head{2, 0, 0};
    EXPECT_EQ(vqsPbGetPoliciesV2(session_, &head, store), kDone);
    return head.count;
  }

  QtfSession* session_ = nullptr;
  TemporaryFolder folder_;
};

VqsPolicyV0 smallPolicy(const char* name, std::uint32_t id) {
  VqsPolicyV0 policy{};
  std::strcpy(policy.name, name);
  policy.id = id;
  policy.conditionCount = 1;
  policy.conditions[0] = {10, 1, 20, 0};
  policy.actionCount = 1;
  policy.actions[0] = {2, 9000};
  return policy;
}

TEST_F(PolicyRoad, policies_leave_the_stores_as_they_came) {
  for (const VqsPolicyStore store : {VQS_POLICY_STORE_PB, VQS_POLICY_STORE_ASM, VQS_POLICY_STORE_BALANCE_PROFILE})
    load(samplePath("laptop-r5.bin"), store);
  const auto path = folder_.path("saved");
  ASSERT_EQ(vqsPbCreateBinaryFromDriver(session_, path.c_str(), 3, 41), kDone);
  EXPECT_EQ(difference(readFile(path), sample("laptop-r5.bin")), "");
  ASSERT_EQ(vqsAsmCreateBinaryFromDriver(session_, path.c_str(), 3, 41, 0), kDone);
  EXPECT_EQ(difference(readFile(path), sample("laptop-r5.bin")), "");
  ASSERT_EQ(vqsAsmCreateBinaryFromDriver(session_, path.c_str(), 3, 41, 1), kDone);
  EXPECT_EQ(difference(readFile(path), sample("laptop-asm.reg")), "");
  ASSERT_EQ(vqsBalanceProfileCreateBinaryFromDriver(session_, path.c_str(), 3, 41, 1), kDone);
  EXPECT_EQ(difference(readFile(path), sample("laptop-balanceprofile.reg")), "");
}

TEST_F(PolicyRoad, the_asm_store_remembers_its_versions) {
  load(samplePath("laptop-r5.bin"), VQS_POLICY_STORE_ASM);
  std::uint32_t verdict = kPoisonWord;
  ASSERT_EQ(vqsSetBinaryVersion(session_, 3, 41, &verdict, VQS_POLICY_STORE_ASM), kDone);
  EXPECT_EQ(verdict, 0U);
  const auto path = folder_.path("saved");
  ASSERT_EQ(vqsAsmCreateBinaryFromDriver(session_, path.c_str(), 0, 0, 0), kDone);
  EXPECT_EQ(difference(readFile(path), sample("laptop-r5.bin")), "");
}

TEST_F(PolicyRoad, a_fleet_fills_a_store_to_its_last_place) {
  load(samplePath("fleet-r5.bin"), VQS_POLICY_STORE_PB);
  EXPECT_EQ(countOf(VQS_POLICY_STORE_PB), 400U);
  const auto path = folder_.path("saved");
  ASSERT_EQ(vqsPbCreateBinaryFromDriver(session_, path.c_str(), 9, 9), kDone);
  EXPECT_EQ(difference(readFile(path), sample("fleet-r5.bin")), "");
  const auto policy = smallPolicy("one too many", 5);
  std::uint32_t verdict = 0;
  EXPECT_EQ(vqsPbAddPolicy(session_, &policy, nullptr, &verdict), kDone);
  EXPECT_NE(verdict, 0U);
  EXPECT_EQ(countOf(VQS_POLICY_STORE_PB), 400U);
}

TEST_F(PolicyRoad, wide_text_goes_through_a_store) {
  load(samplePath("wide-r5.bin"), VQS_POLICY_STORE_BALANCE_PROFILE);
  const auto path = folder_.path("saved");
  ASSERT_EQ(vqsBalanceProfileCreateBinaryFromDriver(session_, path.c_str(), 5, 5, 0), kDone);
  EXPECT_EQ(difference(readFile(path), sample("wide-r5.bin")), "");
}

TEST_F(PolicyRoad, policies_are_added_found_replaced_and_deleted) {
  auto policy = smallPolicy("first", 11);
  std::uint32_t id = 0;
  std::uint32_t verdict = kPoisonWord;
  ASSERT_EQ(vqsPbAddPolicy(session_, &policy, &id, &verdict), kDone);
  EXPECT_EQ(id, 11U);
  EXPECT_EQ(verdict, 0U);
  ASSERT_EQ(vqsPbAddPolicy(session_, &policy, &id, &verdict), kDone);
  EXPECT_EQ(verdict, 2U) << "an id is taken once";

  VqsPolicyV0 found{};
  ASSERT_EQ(vqsPbIDGetPolicy(session_, 11, &found), kDone);
  EXPECT_STREQ(found.name, "first");
  EXPECT_EQ(found.actions[0].value, 9000U);
  EXPECT_EQ(vqsPbIDGetPolicy(session_, 12, &found), kFailed);

  auto replacement = smallPolicy("second", 99);
  ASSERT_EQ(vqsPbReplacePolicy(session_, 11, &replacement, &verdict), kDone);
  EXPECT_EQ(verdict, 0U);
  EXPECT_EQ(replacement.id, 11U);
  ASSERT_EQ(vqsPbIDGetPolicy(session_, 11, &found), kDone);
  EXPECT_STREQ(found.name, "second");

  ASSERT_EQ(vqsPbDeletePolicy(session_, 11, &verdict), kDone);
  EXPECT_EQ(verdict, 0U);
  ASSERT_EQ(vqsPbDeletePolicy(session_, 11, &verdict), kDone);
  EXPECT_EQ(verdict, 4U) << "it is gone";
  EXPECT_EQ(countOf(VQS_POLICY_STORE_PB), 0U);
}

TEST_F(PolicyRoad, a_call_without_room_for_the_verdict_fails_and_changes_nothing) {
  const struct {
    decltype(&vqsPbAddPolicy) add;
    decltype(&vqsPbDeletePolicy) remove;
    decltype(&vqsPbReplacePolicy) replace;
    vqsStatus replaced;
    VqsPolicyStore store;
  } stores[] = {{vqsPbAddPolicy, vqsPbDeletePolicy, vqsPbReplacePolicy, kInvalid, VQS_POLICY_STORE_PB},
                {vqsAsmAddPolicy, vqsAsmDeletePolicy, vqsAsmReplacePolicy, kFailed, VQS_POLICY_STORE_ASM},
                {vqsBalanceProfileAddPolicy, vqsBalanceProfileDeletePolicy, vqsBalanceProfileReplacePolicy, kFailed,
                 VQS_POLICY_STORE_BALANCE_PROFILE}};
  for (const auto& [add, remove, replace, replaced, store] : stores) {
    VqsPolicyV0 policy = smallPolicy("kept", 4);
    std::uint32_t verdict = kPoisonWord;
    ASSERT_EQ(add(session_, &policy, nullptr, &verdict), kDone);
    EXPECT_EQ(remove(session_, 4, nullptr), kFailed);
    EXPECT_EQ(replace(session_, 4, &policy, nullptr), replaced);
    EXPECT_EQ(countOf(store), 1U);
  }
}

TEST_F(PolicyRoad, status_names_every_policy) {
  std::uint32_t verdict = 0;
  for (const std::uint32_t id : {7U, 3U}) {
    auto policy = smallPolicy(id == 7 ? "seven" : "three", id);
    ASSERT_EQ(vqsAsmAddPolicy(session_, &policy, nullptr, &verdict), kDone);
  }
  VqsPolicyStatusList list{};
  list.countOnly = 1;
  ASSERT_EQ(vqsAsmGetPoliciesStatus(session_, &list), kDone);
  ASSERT_EQ(list.count, 2U);
  VqsPolicyStatus entries[2] = {};
  list.entries = entries;
  list.countOnly = 0;
  ASSERT_EQ(vqsAsmGetPoliciesStatus(session_, &list), kDone);
  EXPECT_STREQ(entries[0].name, "seven");
  EXPECT_EQ(entries[0].statusValue, 7U);
  EXPECT_STREQ(entries[1].name, "three");
  EXPECT_EQ(entries[1].statusValue2, 1U);
}

TEST_F(PolicyRoad, stores_are_independent_and_read_in_order) {
  std::uint32_t verdict = 0;
  for (std::uint32_t id = 1; id <= 12; ++id) {
    auto policy = smallPolicy(("policy " + std::to_string(id)).c_str(), id);
    ASSERT_EQ(vqsBalanceProfileAddPolicy(session_, &policy, nullptr, &verdict), kDone);
  }
  EXPECT_EQ(countOf(VQS_POLICY_STORE_PB), 0U);
  VqsPolicyV0 policies[12] = {};
  VqsPolicyList list{};
  list.count = 11;
  list.policies = policies;
  EXPECT_EQ(vqsBalanceProfileGetPolicies(session_, &list), kInvalid);
  EXPECT_EQ(list.count, 11U);
  list.count = 12;
  ASSERT_EQ(vqsBalanceProfileGetPolicies(session_, &list), kDone);
  for (std::uint32_t i = 0; i < 12; ++i) EXPECT_EQ(policies[i].id, i + 1);
  ASSERT_EQ(vqsBalanceProfileReset(session_), kDone);
  EXPECT_EQ(countOf(VQS_POLICY_STORE_BALANCE_PROFILE), 0U);
}

TEST_F(PolicyRoad, two_sessions_see_one_driver) {
  QtfSession* other = nullptr;
  ASSERT_EQ(vqsExInitialize(&other), kDone);
  auto policy = smallPolicy("shared", 1);
  std::uint32_t verdict = 0;
  ASSERT_EQ(vqsPbAddPolicy(other, &policy, nullptr, &verdict), kDone);
  EXPECT_EQ(vqsExUninitialize(other), kDone);
  EXPECT_EQ(countOf(VQS_POLICY_STORE_PB), 1U);
}

TEST_F(PolicyRoad, the_driver_knows_its_version) {
  std::uint32_t words[4] = {7, 7, 7, 7};
  ASSERT_EQ(vqsGetDriverVersion(words), kDone);
  EXPECT_EQ((std::vector<std::uint32_t>(words, words + 4)), (std::vector<std::uint32_t>{0, 1, 0, 0}));
}

}  // namespace
}  // namespace test
