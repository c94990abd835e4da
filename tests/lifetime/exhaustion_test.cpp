// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/lifetime/program.h"

namespace test {
namespace {

constexpr int kNothingFailed = 77;

/// How many allocations the client lives without, each alone or with all behind it.
int allocationsIn(const std::string& mode) {
  for (int nth = 1;; ++nth) {
    const Ended ended = run(VQS_EXHAUSTED_CLIENT " " VQS_LIBRARY " " + std::to_string(nth) + " " + mode);
    if (ended.status == kNothingFailed) return nth - 1;
    EXPECT_EQ(ended.status, 0) << "number " << nth << ' ' << mode << ": " << ended.output;
    if (ended.status != 0) return 0;
  }
}

TEST(LoadingProgram, lives_when_memory_runs_out_at_any_point) {
  for (const std::string mode : {"once", "from"}) {
    const int count = allocationsIn(mode);
    EXPECT_GT(count, 5) << mode;
    EXPECT_LT(count, 100) << mode;
  }
}

}  // namespace
}  // namespace test
