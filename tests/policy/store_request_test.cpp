// SPDX-License-Identifier: Apache-2.0
#include "src/policy/store_request.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>

#include "tests/policy/stores.h"

namespace test {
namespace {

vqs::PackedPolicy packedPolicy(const Bytes& bytes) {
  vqs::PackedPolicy policy;
  EXPECT_EQ(bytes.size(), sizeof(policy));
  std::memcpy(&policy, bytes.data(), sizeof(policy));
  return policy;
}

class StoreRequest : public EveryStore {
 protected:
  vqsStatus send(std::int32_t operation, const vqs::PolicyStoreArguments& arguments) {
    return vqs::policyStoreRequest(session->handle, operation, store().number, arguments);
  }

  vqs::PackedPolicy policy = packedPolicy(packedRecord(fullPolicy(1)));
  std::uint32_t driverResult = kPoisonWord;
};

TEST_P(StoreRequest, has_the_codes_of_the_store) {
  const auto codes = vqs::policyStoreCodes(store().number);
  ASSERT_TRUE(codes.has_value());
  EXPECT_EQ(codes->read, store().readCode);
  EXPECT_EQ(codes->modify, store().modifyCode);
}

TEST_P(StoreRequest, of_operation_2_is_sent_as_an_add) {
  for (const std::int32_t operation : {1, 2}) {
    driver.expectSame(store().modifyCode).request(addRequest(packedRecord(fullPolicy(1)))).replyWord(3980, 6);
    EXPECT_EQ(send(operation, {.policy = &policy, .driverResult = &driverResult}), 0U);
    EXPECT_EQ(driverResult, 6U);
    driver.expectSame(store().modifyCode).request(addRequest(packedRecord(fullPolicy(1)))).fails();
    EXPECT_EQ(send(operation, {.policy = &policy, .driverResult = &driverResult}), 1U);
    EXPECT_EQ(driverResult, 1U);
  }
}

TEST_P(StoreRequest, of_an_add_without_a_policy_fails_unsent) {
  for (const std::int32_t operation : {1, 2}) EXPECT_EQ(send(operation, {.driverResult = &driverResult}), 1U);
  EXPECT_EQ(driverResult, kPoisonWord);
}

TEST_P(StoreRequest, of_a_status_without_a_list_fails_unsent) { EXPECT_EQ(send(4, {}), 1U); }

TEST_P(StoreRequest, of_a_reset_leaves_the_verdict_alone) {
  driver.expectSame(store().modifyCode).request(modifyRequest(3)).reply(Bytes(4000, 0xFF));
  EXPECT_EQ(send(3, {.driverResult = &driverResult}), 0U);
  EXPECT_EQ(driverResult, kPoisonWord);
}

TEST_P(StoreRequest, of_a_delete_takes_the_id_and_four_bytes) {
  const std::uint32_t id = 0x21222324;
  driver.expectSplit(store().modifyCode).request(deleteRequest(id)).answerLength(4).replyWord(0, 3);
  EXPECT_EQ(send(5, {.id = &id, .driverResult = &driverResult}), 0U);
  EXPECT_EQ(driverResult, 3U);
}

TEST_P(StoreRequest, of_an_unknown_operation_is_refused_unsent) {
  for (const std::int32_t operation :
       {7, 8, 255, 0x10000, std::numeric_limits<std::int32_t>::max(), -1, -6, std::numeric_limits<std::int32_t>::min()})
    EXPECT_EQ(send(operation, {.policy = &policy, .driverResult = &driverResult}), 2U) << operation;
  EXPECT_EQ(driverResult, kPoisonWord);
}

TEST_P(StoreRequest, without_memory_fails_whatever_the_operation) {
  vqs::PolicyReadBuffer buffer{.countOnly = 1, .reserved0 = {}, .count = 9};
  VqsPolicyStatusList list{};
  const std::uint32_t id = 1;
  for (std::int32_t operation = 0; operation <= 6; ++operation) {
    faults.fail(Fault::kAllocation, 1);
    EXPECT_EQ(
        send(operation,
             {.readBuffer = &buffer, .policy = &policy, .id = &id, .statusList = &list, .driverResult = &driverResult}),
        1U)
        << operation;
  }
  EXPECT_EQ(buffer.count, 9U);
  EXPECT_EQ(driverResult, kPoisonWord);
}

TEST_P(StoreRequest, of_a_read_counts_into_the_read_buffer) {
  vqs::PolicyReadBuffer buffer{.countOnly = 0xFF, .reserved0 = {}, .count = 0};
  expectCount(driver, store().readCode, 7);
  EXPECT_EQ(send(0, {.readBuffer = &buffer}), 0U);
  EXPECT_EQ(buffer.count, 7U);
}

TEST_P(StoreRequest, of_a_read_puts_the_policies_behind_the_count) {
  // Room for seven policies, six in the store: the seventh slot is left alone.
  Bytes buffer = Record{8 + std::size_t{7} * 3972, kPoison}.u8(0, 0).u32(4, 7);
  expectCount(driver, store().readCode, 6);
  expectChunks(driver, store().readCode, packedPolicies(6));
  EXPECT_EQ(send(0, {.readBuffer = reinterpret_cast<vqs::PolicyReadBuffer*>(buffer.data())}), 0U);
  Record expected{buffer.size(), kPoison};
  expected.u8(0, 0).u32(4, 6);
  for (std::size_t i = 0; i < 6; ++i) expected.put(8 + 3972 * i, packedPolicies(6)[i]);
  EXPECT_EQ(difference(buffer, expected.bytes()), "");
}

TEST_P(StoreRequest, of_a_read_keeps_a_capacity_that_is_too_small) {
  Bytes buffer = Record{8 + 3972, kPoison}.u8(0, 0).u32(4, 1);
  const auto before = buffer;
  expectCount(driver, store().readCode, 2);
  EXPECT_EQ(send(0, {.readBuffer = reinterpret_cast<vqs::PolicyReadBuffer*>(buffer.data())}), 2U);
  EXPECT_EQ(difference(buffer, before), "");
}

INSTANTIATE_TEST_SUITE_P(To, StoreRequest, ::testing::ValuesIn(allStores()), storeName);

class StoreRequestToNoStore : public StoreTest {};

TEST_F(StoreRequestToNoStore, has_no_codes) {
  EXPECT_FALSE(vqs::policyStoreCodes(3).has_value());
  EXPECT_FALSE(vqs::policyStoreCodes(255).has_value());
}

TEST_F(StoreRequestToNoStore, is_refused_unsent_whatever_the_operation) {
  const auto policy = packedPolicy(packedRecord(fullPolicy(1)));
  vqs::PolicyReadBuffer buffer{.countOnly = 1, .reserved0 = {}, .count = 9};
  VqsPolicyStatusList list{};
  const std::uint32_t id = 1;
  std::uint32_t driverResult = kPoisonWord;
  for (const VqsPolicyStore store : {VqsPolicyStore{3}, VqsPolicyStore{255}}) {
    for (std::int32_t operation = 0; operation <= 7; ++operation) {
      EXPECT_EQ(vqs::policyStoreRequest(session->handle, operation, store,
                                        {.readBuffer = &buffer,
                                         .policy = &policy,
                                         .id = &id,
                                         .statusList = &list,
                                         .driverResult = &driverResult}),
                2U)
          << operation;
    }
  }
  EXPECT_EQ(buffer.count, 9U);
  EXPECT_EQ(driverResult, kPoisonWord);
}

TEST_F(StoreRequestToNoStore, misses_its_policy_or_its_list_first) {
  EXPECT_EQ(vqs::policyStoreRequest(session->handle, 1, 3, {}), 1U);
  EXPECT_EQ(vqs::policyStoreRequest(session->handle, 4, 3, {}), 1U);
}

class BinaryVersionRequest : public StoreTest {};

TEST_F(BinaryVersionRequest, splits_the_version_into_its_halves) {
  std::uint32_t driverResult = kPoisonWord;
  driver.expectSame(0x80222054)
      .request(modifyRequest(6).u32(3988, 0x11223344).u32(3992, 0xAABBCCDD))
      .replyWord(3980, 2);
  EXPECT_EQ(
      vqs::policyStoreRequest(session->handle, 6, 1, {.driverResult = &driverResult, .version = 0xAABBCCDD11223344}),
      0U);
  EXPECT_EQ(driverResult, 2U);
}

TEST_F(BinaryVersionRequest, is_of_the_asm_store_alone) {
  std::uint32_t driverResult = kPoisonWord;
  for (const VqsPolicyStore store : {VqsPolicyStore{0}, VqsPolicyStore{2}, VqsPolicyStore{3}})
    EXPECT_EQ(vqs::policyStoreRequest(session->handle, 6, store, {.driverResult = &driverResult, .version = 1}), 2U);
  EXPECT_EQ(driverResult, kPoisonWord);
}

class PolicyLookup : public StoreTest {
 protected:
  vqs::PackedPolicy destination{};
};

TEST_F(PolicyLookup, asks_with_key_and_store) {
  driver.expectSplit(0x80222040)
      .request(Record{3984}.u32(4, 0x11121314).u32(3980, 2))
      .answerLength(3972)
      .reply(packedRecord(fullPolicy(1)));
  EXPECT_EQ(vqs::policyLookup(session->handle, 0x11121314, destination, 2), 0U);
  EXPECT_EQ(difference(bytesOf(destination), packedRecord(fullPolicy(1)).bytes()), "");
}

TEST_F(PolicyLookup, keeps_the_answer_of_a_request_that_failed) {
  driver.expectSplit(0x80222040).anyRequest(3984).answerLength(3972).reply(packedRecord(fullPolicy(1))).fails();
  EXPECT_EQ(vqs::policyLookup(session->handle, 1, destination, 0), 1U);
  EXPECT_EQ(difference(bytesOf(destination), packedRecord(fullPolicy(1)).bytes()), "");
}

}  // namespace
}  // namespace test
