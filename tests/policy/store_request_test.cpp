// SPDX-License-Identifier: Apache-2.0
#include "src/policy/store_request.h"

#include <gtest/gtest.h>

#include <span>

#include "tests/policy/stores.h"
#include "tests/support/packed.h"
#include "tests/support/results.h"

namespace test {
namespace {

/// What requests take, and may write to.
struct RequestArguments {
  vqs::PolicyStoreRequest request{};
  vqs::PolicyReadBuffer buffer{.countOnly = 1, .reserved0 = {}, .count = 9};
  VqsPolicyStatusList list{};
  std::uint32_t driverResult = kPoisonWord;

  void expectUntouched() const {
    EXPECT_EQ(buffer.count, 9U);
    EXPECT_EQ(list.count, 0U);
    EXPECT_EQ(driverResult, kPoisonWord);
  }
};

struct NamedRequest {
  const char* name;
  vqsStatus (*send)(HANDLE handle, VqsPolicyStore store, RequestArguments& arguments);
};

/// Those that every store knows.
std::span<const NamedRequest> allRequests() {
  static constexpr NamedRequest kRequests[] = {
      {"read", [](HANDLE handle, VqsPolicyStore store,
                  RequestArguments& arguments) { return vqs::readStore(handle, store, arguments.buffer); }},
      {"add",
       [](HANDLE handle, VqsPolicyStore store, RequestArguments& arguments) {
         return vqs::addToStore(handle, store, arguments.request, arguments.driverResult);
       }},
      {"delete",
       [](HANDLE handle, VqsPolicyStore store, RequestArguments& arguments) {
         return vqs::deleteFromStore(handle, store, 1, &arguments.driverResult);
       }},
      {"reset", [](HANDLE handle, VqsPolicyStore store,
                   RequestArguments& /*arguments*/) { return vqs::resetStore(handle, store); }},
      {"status", [](HANDLE handle, VqsPolicyStore store,
                    RequestArguments& arguments) { return vqs::readStoreStatus(handle, store, arguments.list); }},
  };
  return kRequests;
}

class StoreRequest : public EveryStore {
 protected:
  vqsStatus read(Bytes& buffer) {
    return vqs::readStore(session->handle, store().number, *reinterpret_cast<vqs::PolicyReadBuffer*>(buffer.data()));
  }
  vqsStatus add() {
    vqs::PolicyStoreRequest request{};
    request.policy = packedRecord(packedPolicy(fullPolicy(1)));
    return vqs::addToStore(session->handle, store().number, request, driverResult);
  }

  std::uint32_t driverResult = kPoisonWord;
};

TEST_P(StoreRequest, has_the_codes_of_the_store) {
  const auto codes = vqs::policyStoreCodes(store().number);
  if (!codes) FAIL() << "no codes";
  EXPECT_EQ(codes->read, store().readCode);
  EXPECT_EQ(codes->modify, store().modifyCode);
}

TEST_P(StoreRequest, of_an_add_passes_the_verdict_on) {
  driver.expectSame(store().modifyCode).request(addRequest(packedPolicy(fullPolicy(1)))).replyWord(3980, 6);
  EXPECT_EQ(add(), kDone);
  EXPECT_EQ(driverResult, 6U);
  driver.expectSame(store().modifyCode).request(addRequest(packedPolicy(fullPolicy(1)))).fails();
  EXPECT_EQ(add(), kFailed);
  EXPECT_EQ(driverResult, 1U);
}

TEST_P(StoreRequest, of_a_reset_is_its_operation_alone) {
  driver.expectSame(store().modifyCode).request(modifyRequest(3)).reply(Bytes(4000, 0xFF));
  EXPECT_EQ(vqs::resetStore(session->handle, store().number), kDone);
}

TEST_P(StoreRequest, of_a_delete_takes_the_id_and_four_bytes) {
  const std::uint32_t id = 0x21222324;
  driver.expectSplit(store().modifyCode).request(deleteRequest(id)).answerLength(4).replyWord(0, 3);
  EXPECT_EQ(vqs::deleteFromStore(session->handle, store().number, id, &driverResult), kDone);
  EXPECT_EQ(driverResult, 3U);
}

TEST_P(StoreRequest, without_memory_fails_whatever_it_is) {
  for (const auto& [name, request] : allRequests()) {
    RequestArguments arguments;
    faults.fail(Fault::kAllocation, 1);
    EXPECT_EQ(request(session->handle, store().number, arguments), kFailed) << name;
    arguments.expectUntouched();
  }
}

TEST_P(StoreRequest, of_a_read_counts_into_the_read_buffer) {
  vqs::PolicyReadBuffer buffer{.countOnly = 0xFF, .reserved0 = {}, .count = 0};
  expectCount(driver, store().readCode, 7);
  EXPECT_EQ(vqs::readStore(session->handle, store().number, buffer), kDone);
  EXPECT_EQ(buffer.count, 7U);
}

TEST_P(StoreRequest, of_a_read_puts_the_policies_behind_the_count) {
  // Room for seven policies, six in the store: the seventh slot is left alone.
  Bytes buffer = Record{8 + std::size_t{7} * 3972, kPoison}.u8(0, 0).u32(4, 7);
  expectCount(driver, store().readCode, 6);
  expectChunks(driver, store().readCode, packedPolicies(6));
  EXPECT_EQ(read(buffer), kDone);
  Record expected{buffer.size(), kPoison};
  expected.u8(0, 0).u32(4, 6);
  for (std::size_t i = 0; i < 6; ++i) expected.put(8 + 3972 * i, packedPolicies(6)[i]);
  EXPECT_EQ(difference(buffer, expected.bytes()), "");
}

TEST_P(StoreRequest, of_a_read_keeps_a_capacity_that_is_too_small) {
  Bytes buffer = Record{8 + 3972, kPoison}.u8(0, 0).u32(4, 1);
  const auto before = buffer;
  expectCount(driver, store().readCode, 2);
  EXPECT_EQ(read(buffer), kInvalid);
  EXPECT_EQ(difference(buffer, before), "");
}

INSTANTIATE_TEST_SUITE_P(To, StoreRequest, ::testing::ValuesIn(allStores()), storeName);

class StoreRequestToNoStore : public TidySessionTest {};

TEST_F(StoreRequestToNoStore, has_no_codes) {
  EXPECT_FALSE(vqs::policyStoreCodes(3).has_value());
  EXPECT_FALSE(vqs::policyStoreCodes(255).has_value());
}

TEST_F(StoreRequestToNoStore, is_refused_unsent_whatever_it_is) {
  for (const VqsPolicyStore store : {VqsPolicyStore{3}, VqsPolicyStore{255}}) {
    for (const auto& [name, request] : allRequests()) {
      RequestArguments arguments;
      EXPECT_EQ(request(session->handle, store, arguments), kInvalid) << name;
      arguments.expectUntouched();
    }
  }
}

class BinaryVersionRequest : public TidySessionTest {};

TEST_F(BinaryVersionRequest, has_both_words) {
  std::uint32_t driverResult = kPoisonWord;
  driver.expectSame(0x80222054)
      .request(modifyRequest(6).u32(3988, 0x11223344).u32(3992, 0xAABBCCDD))
      .replyWord(3980, 2);
  EXPECT_EQ(vqs::setBinaryVersion(session->handle, 0x11223344, 0xAABBCCDD, driverResult), kDone);
  EXPECT_EQ(driverResult, 2U);
}

TEST_F(BinaryVersionRequest, without_memory_fails) {
  std::uint32_t driverResult = kPoisonWord;
  faults.fail(Fault::kAllocation, 1);
  EXPECT_EQ(vqs::setBinaryVersion(session->handle, 1, 2, driverResult), kFailed);
  EXPECT_EQ(driverResult, kPoisonWord);
}

class PolicyLookup : public TidySessionTest {
 protected:
  vqs::PackedPolicy destination{};
};

TEST_F(PolicyLookup, asks_with_key_and_store) {
  driver.expectSplit(0x80222040)
      .request(Record{3984}.u32(4, 0x11121314).u32(3980, 2))
      .answerLength(3972)
      .reply(packedPolicy(fullPolicy(1)));
  EXPECT_EQ(vqs::policyLookup(session->handle, 0x11121314, destination, 2), kDone);
  EXPECT_EQ(difference(bytesOf(destination), packedPolicy(fullPolicy(1)).bytes()), "");
}

TEST_F(PolicyLookup, keeps_the_answer_of_a_request_that_failed) {
  driver.expectSplit(0x80222040).anyRequest(3984).answerLength(3972).reply(packedPolicy(fullPolicy(1))).fails();
  EXPECT_EQ(vqs::policyLookup(session->handle, 1, destination, 0), kFailed);
  EXPECT_EQ(difference(bytesOf(destination), packedPolicy(fullPolicy(1)).bytes()), "");
}

}  // namespace
}  // namespace test
