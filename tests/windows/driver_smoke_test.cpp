// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <windows.h>

#include <array>
#include <cstring>
#include <string>
#include <thread>
#include <vector>

#include <vqs/vqs.h>
#include "tests/support/results.h"
#include "tests/windows/processes.h"

namespace test {
namespace {

VqsPolicyV0 policyOf(std::uint32_t id) {
  VqsPolicyV0 policy{};
  std::strcpy(policy.name, "smoke");
  policy.id = id;
  policy.actionCount = 1;
  policy.actions[0] = {2, 9000};
  return policy;
}

class Driver : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(vqsInitialize(&session_), kDone);
    ASSERT_EQ(vqsPbReset(session_), kDone);
    ASSERT_EQ(vqsAsmReset(session_), kDone);
    ASSERT_EQ(vqsBalanceProfileReset(session_), kDone);
  }
  void TearDown() override { EXPECT_EQ(vqsUninitialize(session_), kDone); }

  std::uint32_t pbCount() {
    VqsPolicyListV2 head{2, 0, 0};
    EXPECT_EQ(vqsPbGetPoliciesV2(session_, &head, VQS_POLICY_STORE_PB), kDone);
    return head.count;
  }

  QtfSession* session_ = nullptr;
};

TEST_F(Driver, keeps_a_policy_in_each_store_until_it_is_deleted) {
  auto pb = policyOf(1);
  auto assembly = policyOf(2);
  auto balance = policyOf(3);
  std::uint32_t verdict = 9;
  ASSERT_EQ(vqsPbAddPolicy(session_, &pb, nullptr, &verdict), kDone);
  EXPECT_EQ(verdict, 0U);
  ASSERT_EQ(vqsAsmAddPolicy(session_, &assembly, nullptr, &verdict), kDone);
  EXPECT_EQ(verdict, 0U);
  ASSERT_EQ(vqsBalanceProfileAddPolicy(session_, &balance, nullptr, &verdict), kDone);
  EXPECT_EQ(verdict, 0U);

  VqsPolicyV0 found{};
  VqsPolicyList list{};
  list.count = 1;
  list.policies = &found;
  ASSERT_EQ(vqsPbGetPolicies(session_, &list), kDone);
  EXPECT_EQ(found.id, 1U);
  ASSERT_EQ(vqsAsmGetPolicies(session_, &list), kDone);
  EXPECT_EQ(found.id, 2U);
  ASSERT_EQ(vqsBalanceProfileGetPolicies(session_, &list), kDone);
  EXPECT_EQ(found.id, 3U);
  EXPECT_STREQ(found.name, "smoke");
  EXPECT_EQ(found.actions[0].value, 9000U);

  ASSERT_EQ(vqsPbDeletePolicy(session_, 1, &verdict), kDone);
  EXPECT_EQ(verdict, 0U);
  ASSERT_EQ(vqsPbDeletePolicy(session_, 1, &verdict), kDone);
  EXPECT_EQ(verdict, 4U);
  ASSERT_EQ(vqsAsmDeletePolicy(session_, 2, &verdict), kDone);
  EXPECT_EQ(verdict, 0U);
  ASSERT_EQ(vqsBalanceProfileDeletePolicy(session_, 3, &verdict), kDone);
  EXPECT_EQ(verdict, 0U);
}

TEST_F(Driver, serves_two_sessions) {
  QtfSession* other = nullptr;
  ASSERT_EQ(vqsExInitialize(&other), kDone);
  auto policy = policyOf(4);
  std::uint32_t verdict = 9;
  ASSERT_EQ(vqsPbAddPolicy(other, &policy, nullptr, &verdict), kDone);
  EXPECT_EQ(vqsExUninitialize(other), kDone);
  EXPECT_EQ(pbCount(), 1U);
}

/// Rounds that went well, of a session of their own.
int addAndDelete(std::uint32_t id, int rounds) {
  QtfSession* session = nullptr;
  if (vqsInitialize(&session) != 0) return 0;
  int done = 0;
  for (int i = 0; i < rounds; ++i) {
    auto policy = policyOf(id);
    VqsPolicyV0 found{};
    std::uint32_t added = 9;
    std::uint32_t deleted = 9;
    if (vqsPbAddPolicy(session, &policy, nullptr, &added) == 0 && added == 0 &&
        vqsPbIDGetPolicy(session, id, &found) == 0 && found.id == id && vqsPbDeletePolicy(session, id, &deleted) == 0 &&
        deleted == 0)
      ++done;
  }
  vqsUninitialize(session);
  return done;
}

TEST_F(Driver, serves_threads_one_after_the_other_while_it_refreshes_a_log) {
  constexpr int kRounds = 300;
  std::uint64_t log = 0;
  ASSERT_EQ(vqsStartQTFLog(session_, &log), kDone);
  std::array<int, 6> done{};
  std::vector<std::thread> threads;
  for (std::uint32_t i = 0; i < done.size(); ++i)
    threads.emplace_back([&done, i] { done[i] = addAndDelete(100 + i, kRounds); });
  for (auto& thread : threads) thread.join();
  for (const int rounds : done) EXPECT_EQ(rounds, kRounds);
  EXPECT_EQ(pbCount(), 0U);
  EXPECT_EQ(vqsStopQTFLog(session_), kDone);
}

TEST_F(Driver, keeps_what_another_process_added) {
  EXPECT_EQ(runCase("DriverInAnotherProcess.adds_policy_5"), 0U);
  VqsPolicyV0 found{};
  ASSERT_EQ(vqsPbIDGetPolicy(session_, 5, &found), kDone);
  EXPECT_STREQ(found.name, "smoke");
}

TEST(DriverInAnotherProcess, adds_policy_5) {
  QtfSession* session = nullptr;
  ASSERT_EQ(vqsInitialize(&session), kDone);
  ASSERT_EQ(vqsPbReset(session), kDone);
  auto policy = policyOf(5);
  std::uint32_t verdict = 9;
  EXPECT_EQ(vqsPbAddPolicy(session, &policy, nullptr, &verdict), kDone);
  EXPECT_EQ(verdict, 0U);
  EXPECT_EQ(vqsUninitialize(session), kDone);
}

TEST(DriverFile, has_the_version_of_the_project) {
  std::uint32_t words[4] = {7, 7, 7, 7};
  ASSERT_EQ(vqsGetDriverVersion(words), kDone);
  EXPECT_EQ(words[0], 0U);
  EXPECT_EQ(words[1], 1U);
  EXPECT_EQ(words[2], 0U);
  EXPECT_EQ(words[3], 0U);
}

}  // namespace
}  // namespace test
