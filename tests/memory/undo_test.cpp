// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/memory/client.h"
#include "tests/support/faults.h"
#include "tests/support/results.h"

namespace test {
namespace {

/// The allocation of a key/value log's handle: the one before it carries the request to the driver.
constexpr int kHandle = 2;

/// The driver has room for 64 logs: what it had not been told to stop would fill it.
TEST(UndoneStart, leaves_no_log_in_the_driver) {
  Client client;
  for (int i = 0; i < 100; ++i) {
    for (const auto start : {vqsStartQTFLogKV, vqsExStartQTFLogExKV}) {
      Faults faults;
      faults.fail(Fault::kAllocation, kHandle);
      ASSERT_EQ(start(client.session, &client.log), kNoMemory) << i;
      ASSERT_EQ(faults.outstanding(), 0) << i;
    }
    ASSERT_EQ(client.log, nullptr);
  }
  client.startKV();
}

}  // namespace
}  // namespace test
