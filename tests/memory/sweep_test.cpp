// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <fstream>
#include <set>

#include "tests/memory/exports.h"
#include "tests/support/faults.h"

// Every export in front of the simulated driver, with every allocation on the way failing in turn.

namespace test {
namespace {

constexpr Fault kMemory[] = {Fault::kAllocation, Fault::kGrowth, Fault::kNew, Fault::kMap, Fault::kThread};

/// What a header declares, more or less.
struct Family {
  const char* name;
  std::span<const Export> (*exports)();
};

constexpr Family kFamilies[] = {{"sessions", sessionExports},
                                {"stores", storeExports},
                                {"any_store", versionedStoreExports},
                                {"binaries", binaryExports},
                                {"catalogues", catalogueExports},
                                {"logs", logExports},
                                {"iterators", iteratorExports},
                                {"ovl", ovlExports},
                                {"inputs_and_outputs", inputAndOutputExports},
                                {"platform", platformExports},
                                {"events", eventExports},
                                {"features", featureExports}};

/// One export on one client.
class Sweep {
 public:
  explicit Sweep(const Export& swept) : swept_(swept) {}

  /// Makes every allocation of a kind fail, alone or with all behind it. How many there were.
  int run(Fault what, bool forGood) {
    int nth = 1;
    while (strike(what, nth, forGood)) ++nth;
    return nth - 1;
  }

 private:
  struct Outcome {
    vqsStatus result;
    bool hasStruck;
  };

  Outcome call(Fault what, int nth, bool forGood) {
    Faults faults;
    forGood ? faults.failFrom(what, nth) : faults.fail(what, nth);
    const vqsStatus result = swept_.call(client_);
    if (result != swept_.success) {
      EXPECT_EQ(faults.outstanding(), 0) << swept_.name << " keeps memory";
    }
    return {result, faults.calls(what) >= nth};
  }

  /// False when the call had no nth allocation.
  bool strike(Fault what, int nth, bool forGood) {
    swept_.prepare(client_);
    const auto [result, hasStruck] = call(what, nth, forGood);
    const Results expected = hasStruck ? allowed(what) : oneOf({swept_.success});
    EXPECT_NE(expected >> result & 1, 0U) << swept_.name << " gave " << result << " when number " << nth << " of "
                                          << static_cast<int>(what) << " failed: " << hasStruck;
    if (result == swept_.success) swept_.finish(client_);
    return hasStruck && recovers();
  }

  /// Without a thread requests alone bring the logs up to date; nothing throws, so nothing allocates with new.
  [[nodiscard]] Results allowed(Fault what) const {
    if (what == Fault::kThread) return oneOf({swept_.success});
    return what == Fault::kNew ? kNothing : swept_.failures;
  }

  /// The same call again, with memory there.
  bool recovers() {
    swept_.prepare(client_);
    const vqsStatus result = swept_.call(client_);
    EXPECT_EQ(result, swept_.success) << swept_.name;
    if (result == swept_.success) swept_.finish(client_);
    return result == swept_.success;
  }

  const Export& swept_;
  Client client_;
};

class MemoryRunsOut : public ::testing::TestWithParam<Family> {};

TEST_P(MemoryRunsOut, and_the_client_lives_and_is_told) {
  for (const Export& swept : GetParam().exports()) {
    int struck = 0;
    for (const Fault what : kMemory)
      for (const bool forGood : {false, true}) struck += Sweep{swept}.run(what, forGood);
    EXPECT_TRUE(swept.isRare || (struck == 0) == (swept.failures == kNothing)) << swept.name << ": " << struck;
  }
}

INSTANTIATE_TEST_SUITE_P(Exports, MemoryRunsOut, ::testing::ValuesIn(kFamilies),
                         [](const auto& family) { return family.param.name; });

TEST(MemoryRunsOut, for_every_export) {
  std::multiset<std::string> swept;
  for (const Family& family : kFamilies)
    for (const Export& row : family.exports()) swept.insert(row.name);
  std::multiset<std::string> exported;
  std::ifstream list{VQS_EXPORTS};
  for (std::string line; std::getline(list, line);)
    if (line.starts_with("  ")) exported.insert(line.substr(2, line.find(' ', 2) - 2));
  EXPECT_FALSE(exported.empty());
  EXPECT_EQ(swept, exported);
}

}  // namespace
}  // namespace test
