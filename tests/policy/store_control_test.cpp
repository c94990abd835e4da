// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/policy/stores.h"
#include "tests/support/results.h"

namespace test {
namespace {

class ResetStore : public EveryStore {};

TEST_P(ResetStore, sends_its_operation_alone) {
  driver.expectSame(store().modifyCode).request(modifyRequest(3)).reply(Bytes(4000, 0xFF));
  EXPECT_EQ(store().reset(session), kDone);
}

TEST_P(ResetStore, fails_with_its_request) {
  driver.expectSame(store().modifyCode).request(modifyRequest(3)).fails();
  EXPECT_EQ(store().reset(session), kFailed);
}

TEST_P(ResetStore, checks_the_session_before_anything_else) {
  EXPECT_EQ(store().reset(nullptr), kInvalid);
  EXPECT_EQ(store().reset(&closed), kInvalid);
  EXPECT_EQ(faults.calls(Fault::kAllocation), 0);
}

TEST_P(ResetStore, runs_out_of_memory_for_the_request_with_1) {
  faults.fail(Fault::kAllocation, 1);
  EXPECT_EQ(store().reset(session), kFailed);
  EXPECT_EQ(faults.calls(Fault::kAllocation), 1);
}

INSTANTIATE_TEST_SUITE_P(Of, ResetStore, ::testing::ValuesIn(allStores()), storeName);

class SetBinaryVersion : public TidySessionTest {
 protected:
  vqsStatus set(std::uint16_t word1, std::uint16_t word2) {
    return vqsSetBinaryVersion(session, word1, word2, &driverResult, 1);
  }
  Exchange& expectSet(std::uint32_t word1, std::uint32_t word2,
                      std::source_location where = std::source_location::current()) {
    return driver.expectSame(0x80222054, where).request(modifyRequest(6).u32(3988, word1).u32(3992, word2));
  }

  std::uint32_t driverResult = kPoisonWord;
};

TEST_F(SetBinaryVersion, widens_both_words) {
  expectSet(0x1122, 0x3344);
  EXPECT_EQ(set(0x1122, 0x3344), kDone);
  EXPECT_EQ(driverResult, 0U);
  expectSet(0xFFFF, 0);
  EXPECT_EQ(set(0xFFFF, 0), kDone);
  expectSet(0, 0xFFFF);
  EXPECT_EQ(set(0, 0xFFFF), kDone);
}

TEST_F(SetBinaryVersion, passes_the_drivers_verdict_on_and_succeeds) {
  for (const std::uint32_t verdict : {1U, 0xC0000001U}) {
    expectSet(1, 2).replyWord(3980, verdict);
    EXPECT_EQ(set(1, 2), kDone);
    EXPECT_EQ(driverResult, verdict);
  }
}

TEST_F(SetBinaryVersion, answers_1_in_both_places_when_the_request_fails) {
  expectSet(1, 2).replyWord(3980, 7).fails();
  EXPECT_EQ(set(1, 2), kFailed);
  EXPECT_EQ(driverResult, 1U);
}

TEST_F(SetBinaryVersion, is_of_the_asm_store_alone) {
  for (const VqsPolicyStore store : {VqsPolicyStore{0}, VqsPolicyStore{2}, VqsPolicyStore{3}, VqsPolicyStore{255}})
    EXPECT_EQ(vqsSetBinaryVersion(session, 1, 2, &driverResult, store), kInvalid);
  EXPECT_EQ(driverResult, kPoisonWord);
  EXPECT_EQ(faults.calls(Fault::kAllocation), 0);
}

TEST_F(SetBinaryVersion, checks_its_arguments_before_anything_else) {
  EXPECT_EQ(vqsSetBinaryVersion(nullptr, 1, 2, &driverResult, 1), kInvalid);
  EXPECT_EQ(vqsSetBinaryVersion(&closed, 1, 2, &driverResult, 1), kInvalid);
  EXPECT_EQ(vqsSetBinaryVersion(session, 1, 2, nullptr, 1), kInvalid);
  EXPECT_EQ(driverResult, kPoisonWord);
  EXPECT_EQ(faults.calls(Fault::kAllocation), 0);
}

TEST_F(SetBinaryVersion, runs_out_of_memory_for_the_request_with_1) {
  faults.fail(Fault::kAllocation, 1);
  EXPECT_EQ(set(1, 2), kFailed);
  EXPECT_EQ(driverResult, kPoisonWord);
  EXPECT_EQ(faults.calls(Fault::kAllocation), 1);
}

class CheckStructureSupport : public TidySessionTest {};

TEST_F(CheckStructureSupport, is_for_versions_1_and_2) {
  EXPECT_EQ(vqsPbCheckStructureSupport(session, 1), kDone);
  EXPECT_EQ(vqsPbCheckStructureSupport(session, 2), kDone);
  for (const std::uint32_t version : {3U, 4U, 0x101U, 0xFFFFFFFFU})
    EXPECT_EQ(vqsPbCheckStructureSupport(session, version), kFailed);
}

TEST_F(CheckStructureSupport, denies_version_0_although_every_function_takes_it) {
  EXPECT_EQ(vqsPbCheckStructureSupport(session, 0), kFailed);
}

TEST_F(CheckStructureSupport, does_not_look_at_the_session) {
  for (QtfSession* any : {static_cast<QtfSession*>(nullptr), &closed}) {
    EXPECT_EQ(vqsPbCheckStructureSupport(any, 0), kFailed);
    EXPECT_EQ(vqsPbCheckStructureSupport(any, 1), kDone);
    EXPECT_EQ(vqsPbCheckStructureSupport(any, 2), kDone);
    EXPECT_EQ(vqsPbCheckStructureSupport(any, 3), kFailed);
  }
}

}  // namespace
}  // namespace test
