// SPDX-License-Identifier: Apache-2.0
#include "src/channel/map_status.h"

#include <gtest/gtest.h>

#include <limits>

#include "tests/support/results.h"

namespace test {
namespace {

static_assert(kDone == 0);
static_assert(kFailed == 1);
static_assert(kInvalid == 2);
static_assert(kNoMemory == 3);
static_assert(kNoDriver == 4);
static_assert(kNotSupported == 5);
static_assert(kVersionMismatch == 6);
static_assert(sizeof(vqsStatus) == 4);
static_assert(!std::numeric_limits<vqsStatus>::is_signed);

TEST(MapStatus, keeps_the_results_of_the_interface) {
  EXPECT_EQ(vqs::mapStatus(0), kDone);
  EXPECT_EQ(vqs::mapStatus(1), kFailed);
  EXPECT_EQ(vqs::mapStatus(2), kInvalid);
  EXPECT_EQ(vqs::mapStatus(3), kNoMemory);
  EXPECT_EQ(vqs::mapStatus(4), kNoDriver);
  EXPECT_EQ(vqs::mapStatus(6), kVersionMismatch);
}

TEST(MapStatus, turns_everything_else_into_not_supported) {
  for (const std::int32_t result : {5, 7, 8, 80, 255, 256, 0x10000, -1, -2, -6})
    EXPECT_EQ(vqs::mapStatus(result), kNotSupported);
  EXPECT_EQ(vqs::mapStatus(std::numeric_limits<std::int32_t>::max()), kNotSupported);
  EXPECT_EQ(vqs::mapStatus(std::numeric_limits<std::int32_t>::min()), kNotSupported);
}

}  // namespace
}  // namespace test
