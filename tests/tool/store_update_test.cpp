// SPDX-License-Identifier: Apache-2.0
#include "tool/driver/store_update.h"

#include <gtest/gtest.h>

#include <random>

#include "simulator/embedded/embedded_driver.h"
#include "tests/support/results.h"

namespace test {
namespace {

using tool::StoreRequest;

/// The simulated driver, with an eye on the requests that change its stores.
class WatchedDriver : public host::Device {
 public:
  enum class Fault { kNone, kNotCarriedOut, kAnswerLost, kRefused };

  WatchedDriver() { host::attachDevice(*this, kInterfaceClass, kPath); }
  ~WatchedDriver() { host::detachDevice(*this); }
  WatchedDriver(WatchedDriver&&) = delete;

  bool open(HANDLE handle) override { return driver_.open(handle); }
  void close(HANDLE handle) override { driver_.close(handle); }
  bool control(HANDLE handle, const host::DeviceRequest& request) override {
    if (!isChange(request) || ++changes != faultAt || fault == Fault::kNone) return driver_.control(handle, request);
    if (fault == Fault::kNotCarriedOut) return false;
    if (fault == Fault::kAnswerLost) return driver_.control(handle, request) && false;
    // The result word is the whole answer to a delete.
    const auto place = static_cast<std::uint8_t*>(request.output) + (request.outputLength == 4 ? 0 : 3980);
    *place = 3;
    *request.returned = request.outputLength;
    return true;
  }

  std::size_t changes = 0;
  Fault fault = Fault::kNone;
  /// which of the changes it befalls, from 1 on
  std::size_t faultAt = 0;

 private:
  static constexpr GUID kInterfaceClass = {
      0x9DC9718B, 0x59BF, 0x43EE, {0x94, 0xED, 0x34, 0xBB, 0x82, 0x3D, 0xCE, 0xDF}};
  static constexpr char16_t kPath[] = u"\\\\?\\root#system#0000#{9dc9718b-59bf-43ee-94ed-34bb823dcedf}";

  /// Add, reset, delete, set version.
  static bool isChange(const host::DeviceRequest& request) {
    if (request.code != 0x80222034 && request.code != 0x80222054 && request.code != 0x802220AC) return false;
    const std::uint8_t operation = *static_cast<const std::uint8_t*>(request.input);
    return operation == 1 || operation == 3 || operation == 5 || operation == 6;
  }

  simulator::EmbeddedDriver driver_{[](void*, simulator::Configuration&) { return simulator::Reason{}; }};
};

QtfSession* openSession() {
  QtfSession* session = nullptr;
  EXPECT_EQ(vqsInitialize(&session), kDone);
  return session;
}

class StoreUpdate : public testing::TestWithParam<const char*> {
 protected:
  [[nodiscard]] std::vector<documents::Policy> held() const {
    const auto stored = tool::readPolicies(session, store);
    std::vector<documents::Policy> policies;
    for (const auto& policy : stored.policies()) policies.push_back(documents::fromRecord(policy));
    return policies;
  }

  tool::Sending send(const documents::PolicySet& wanted, const std::vector<StoreRequest>& requests) {
    return tool::sendRequests(session, store, wanted, requests, [] { return false; });
  }

  /// Makes the store hold these policies, by a plan from what it holds.
  tool::Sending apply(const documents::PolicySet& wanted, bool withOrder) {
    return send(wanted, tool::planStore(held(), wanted.policies, {.withOrder = withOrder}));
  }

  WatchedDriver driver;
  tool::Session session{openSession()};
  const tool::Store& store = tool::storeNamed(GetParam());
};

/// So many policies of different ids below a limit, with all kinds of entries; few enough contents that some are alike.
documents::PolicySet randomPolicies(std::mt19937& random, std::size_t count, std::uint32_t ids) {
  std::vector<std::uint32_t> chosen(ids);
  for (std::uint32_t id = 0; id < ids; ++id) chosen[id] = id;
  std::shuffle(chosen.begin(), chosen.end(), random);
  documents::PolicySet set;
  for (const std::uint32_t id : std::span{chosen}.first(count)) {
    auto& policy = set.policies.emplace_back();
    policy.id = id;
    policy.name = id % 3 == 0 ? u"name \xD800 of a policy" : u"";
    policy.description = id % 5 == 0 ? std::string(32, 'd') : "short";
    policy.conditions.resize(random() % 2 == 0 ? 1 : 15, {.conditionId = 9, .op = 4, .value = 77, .value2 = 0});
    policy.actions.resize(id % 33);
    policy.texts.resize(id % 6, {.text = std::u16string(id % 256, u'x'), .flag = 1});
    policy.flag2 = static_cast<std::uint8_t>(random() % 2);
    policy.param1 = 0xFFFFFFFF;
  }
  return set;
}

std::vector<documents::Policy> byId(std::vector<documents::Policy> policies) {
  std::ranges::sort(policies, {}, &documents::Policy::id);
  return policies;
}

TEST_P(StoreUpdate, leads_from_any_store_to_any_document) {
  std::mt19937 random{5};
  for (int i = 0; i < 300; ++i) {
    const bool withOrder = i % 2 == 0;
    const bool isLarge = i % 20 == 19;
    const auto wanted =
        isLarge ? randomPolicies(random, 350 + random() % 51, 450) : randomPolicies(random, random() % 25, 30);
    const auto requests = tool::planStore(held(), wanted.policies, {.withOrder = withOrder});
    driver.changes = 0;
    const auto sending = send(wanted, requests);
    ASSERT_EQ(sending.failure, "");
    ASSERT_EQ(sending.carriedOut, requests.size());
    // What is counted at the driver is what was planned, which store_plan_test.cpp shows to be the fewest.
    ASSERT_EQ(driver.changes, requests.size());
    const auto now = held();
    if (withOrder)
      ASSERT_TRUE(now == wanted.policies) << i;
    else
      ASSERT_TRUE(byId(now) == byId(wanted.policies)) << i;
  }
}

TEST_P(StoreUpdate, ends_with_the_request_that_is_not_carried_out) {
  std::mt19937 random{6};
  using Fault = WatchedDriver::Fault;
  for (const Fault fault : {Fault::kNotCarriedOut, Fault::kAnswerLost, Fault::kRefused}) {
    for (std::size_t n = 1;; ++n) {
      driver.fault = Fault::kNone;
      const auto before = randomPolicies(random, 6, 12);
      ASSERT_EQ(apply(before, true).failure, "");
      const auto wanted = randomPolicies(random, 8, 12);
      const auto requests = tool::planStore(held(), wanted.policies, {});
      if (n > requests.size()) break;
      driver.changes = 0;
      driver.fault = fault;
      driver.faultAt = n;
      // A reset has no result word that could refuse it.
      if (fault == Fault::kRefused && requests[n - 1].kind == StoreRequest::Kind::kReset) continue;
      const auto sending = send(wanted, requests);
      EXPECT_EQ(sending.carriedOut, n - 1);
      EXPECT_EQ(driver.changes, n);
      EXPECT_TRUE(sending.failure.ends_with(
          fault == Fault::kRefused ? " failed: the driver refused it, the store is full, it takes 400 policies"
                                   : " failed: the driver refused the request"))
          << sending.failure;
      const std::size_t carriedOut = fault == Fault::kAnswerLost ? n : n - 1;
      EXPECT_TRUE(held() == tool::carriedOut(before.policies, wanted.policies, std::span{requests}.first(carriedOut)));
      // The next time it gets there.
      driver.fault = Fault::kNone;
      EXPECT_EQ(apply(wanted, false).failure, "");
      EXPECT_TRUE(byId(held()) == byId(wanted.policies));
    }
  }
}

TEST_P(StoreUpdate, ends_between_two_requests_when_it_is_interrupted) {
  std::mt19937 random{7};
  const auto wanted = randomPolicies(random, 5, 30);
  const auto requests = tool::planStore({}, wanted.policies, {});
  int asked = 0;
  const auto sending = tool::sendRequests(session, store, wanted, requests, [&] { return ++asked == 4; });
  EXPECT_EQ(sending.failure, "interrupted");
  EXPECT_EQ(sending.carriedOut, 3U);
  EXPECT_EQ(driver.changes, 3U);
  EXPECT_EQ(held().size(), 3U);
}

INSTANTIATE_TEST_SUITE_P(Every, StoreUpdate, testing::Values("pb", "asm", "balance-profile"), [](const auto& instance) {
  const std::string name = instance.param;
  return name == "balance-profile" ? "balance_profile" : name;
});

using StoreUpdateOfAsm = StoreUpdate;

TEST_P(StoreUpdateOfAsm, sets_the_version) {
  driver.fault = WatchedDriver::Fault::kNotCarriedOut;
  driver.faultAt = 1;
  const documents::PolicySet wanted{.version1 = 3, .version2 = 41, .policies = {}};
  const std::vector<StoreRequest> requests = {{.kind = StoreRequest::Kind::kSetVersion}};
  EXPECT_EQ(send(wanted, requests).failure, "setting the version to 3.41 failed: the driver refused the request");
  EXPECT_EQ(send(wanted, requests).failure, "");
  EXPECT_EQ(driver.changes, 2U);
}

TEST_P(StoreUpdateOfAsm, says_what_it_did_not_do) {
  documents::PolicySet wanted;
  wanted.policies.push_back(
      {.id = 140, .name = u"Dark \"room\"\x1b", .description = {}, .conditions = {}, .actions = {}, .texts = {}});
  driver.fault = WatchedDriver::Fault::kNotCarriedOut;
  driver.faultAt = 1;
  const std::vector<StoreRequest> add = {{.kind = StoreRequest::Kind::kAdd, .id = 140, .index = 0}};
  EXPECT_EQ(send(wanted, add).failure,
            "adding 140 \"Dark \\\"room\\\"\\u001b\" failed: the driver refused the request");
  EXPECT_EQ(send(wanted, add).failure, "");
  EXPECT_EQ(send(wanted, add).failure,
            "adding 140 \"Dark \\\"room\\\"\\u001b\" failed: the driver refused it, its id is in the store already");
  const std::vector<StoreRequest> remove = {{.kind = StoreRequest::Kind::kDelete, .id = 7}};
  EXPECT_EQ(send(wanted, remove).failure,
            "deleting 7 failed: the driver refused it, the store has no policy of this id");
  driver.faultAt = driver.changes + 1;
  EXPECT_EQ(send(wanted, {{.kind = StoreRequest::Kind::kReset}}).failure,
            "the reset failed: the driver refused the request");
}

INSTANTIATE_TEST_SUITE_P(Asm, StoreUpdateOfAsm, testing::Values("asm"));

}  // namespace
}  // namespace test

void tool::SessionCloser::operator()(QtfSession* session) const { static_cast<void>(vqsUninitialize(session)); }
