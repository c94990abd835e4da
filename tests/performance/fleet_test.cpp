// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/journey/client.h"
#include "tests/memory/client.h"
#include "tests/performance/costs.h"

// What 400 policies cost, in a file of 87091 bytes and in a store. A policy has 3972 bytes in the driver's form and
// 3916 in structure version 2.

namespace test {
namespace {

class FleetCosts : public testing::Test {
 protected:
  /// Into memory that stands ready.
  void read() {
    std::uint64_t size = 200 + 400 * 3916;
    EXPECT_EQ(vqsPbReadBinaryV2(client.session, path.c_str(), &file.head(), &size, 2), 0U);
  }
  void askForSize() {
    std::uint64_t size = 0;
    EXPECT_EQ(vqsPbReadBinaryV2(client.session, path.c_str(), &file.head(), &size, 2), 0U);
    EXPECT_EQ(size, 200U + 400 * 3916);
  }
  void fillStore() {
    EXPECT_EQ(vqsPbReset(client.session), 0U);
    VqsVersionedPolicy record{};
    record.structureVersion = 2;
    for (int i = 0; i < 400; ++i) {
      record.policy.v2 = file.policies()[i];
      EXPECT_EQ(vqsPbAddPolicyV2(client.session, &record, sizeof(record), &client.verdict, 0), 0U);
      EXPECT_EQ(client.verdict, 0U);
    }
  }

  Client client;
  const std::string path = samplePath("fleet-r5.bin");
  PolicyFile file{client.session, path};
};

TEST_F(FleetCosts, read) {
  EXPECT_EQ(costsOf([this] { read(); }), (Costs{.allocations = 1, .opens = 1, .seeks = 2, .tells = 1, .reads = 1}));
}

TEST_F(FleetCosts, memory_of_a_read) {
  EXPECT_EQ(peakBytesOf([this] { read(); }), 87'091U);
}

TEST_F(FleetCosts, size_call) {
  EXPECT_EQ(costsOf([this] { askForSize(); }),
            (Costs{.allocations = 1, .opens = 1, .seeks = 2, .tells = 1, .reads = 1}));
}

TEST_F(FleetCosts, memory_of_a_size_call) {
  EXPECT_EQ(peakBytesOf([this] { askForSize(); }), 87'091U);
}

TEST_F(FleetCosts, summary) {
  const Costs costs = costsOf([this] { EXPECT_EQ(vqsPbReadBinary(nullptr, path.c_str(), &client.summary), 0U); });
  HeapFree(GetProcessHeap(), 0, client.summary);
  EXPECT_EQ(costs, (Costs{.allocations = 3, .opens = 2, .seeks = 4, .tells = 2, .reads = 2}));
}

TEST_F(FleetCosts, store_that_is_read) {
  fillStore();
  PolicyListV2 list{400};
  // The count, and five policies at a time.
  EXPECT_EQ(costsOf([&] { EXPECT_EQ(vqsPbGetPoliciesV2(client.session, &list.head(), 0), 0U); }),
            (Costs{.requests = 81, .allocations = 3}));
}

TEST_F(FleetCosts, store_that_is_written_into_a_file) {
  fillStore();
  EXPECT_EQ(
      costsOf([this] { EXPECT_EQ(vqsPbCreateBinaryFromDriver(client.session, client.written().c_str(), 3, 41), 0U); }),
      (Costs{.requests = 81, .allocations = 3, .opens = 1, .writes = 1}));
}

}  // namespace
}  // namespace test
