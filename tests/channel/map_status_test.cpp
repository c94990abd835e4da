// SPDX-License-Identifier: Apache-2.0
#include "src/channel/map_status.h"

#include <gtest/gtest.h>

#include <limits>

namespace test {
namespace {

static_assert(VQS_SUCCESS == 0);
static_assert(VQS_REQUEST_FAILED == 1);
static_assert(VQS_INVALID_PARAMETER == 2);
static_assert(VQS_OUT_OF_MEMORY == 3);
static_assert(VQS_DRIVER_NOT_FOUND == 4);
static_assert(VQS_NOT_SUPPORTED == 5);
static_assert(VQS_VERSION_MISMATCH == 6);
static_assert(sizeof(vqsStatus) == 4);
static_assert(!std::numeric_limits<vqsStatus>::is_signed);

TEST(MapStatus, keeps_the_results_of_the_interface) {
  EXPECT_EQ(vqs::mapStatus(0), 0U);
  EXPECT_EQ(vqs::mapStatus(1), 1U);
  EXPECT_EQ(vqs::mapStatus(2), 2U);
  EXPECT_EQ(vqs::mapStatus(3), 3U);
  EXPECT_EQ(vqs::mapStatus(4), 4U);
  EXPECT_EQ(vqs::mapStatus(6), 6U);
}

TEST(MapStatus, turns_everything_else_into_not_supported) {
  for (const std::int32_t result : {5, 7, 8, 80, 255, 256, 0x10000, -1, -2, -6}) EXPECT_EQ(vqs::mapStatus(result), 5U);
  EXPECT_EQ(vqs::mapStatus(std::numeric_limits<std::int32_t>::max()), 5U);
  EXPECT_EQ(vqs::mapStatus(std::numeric_limits<std::int32_t>::min()), 5U);
}

}  // namespace
}  // namespace test
