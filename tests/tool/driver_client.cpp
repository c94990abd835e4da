// SPDX-License-Identifier: Apache-2.0
#include "tests/tool/driver_client.h"

#include <gtest/gtest.h>

#include "tests/support/results.h"

namespace test {

void addUnconditionalPolicy(const Tool& tool, std::uint32_t id) {
  useDriver(tool, [&](QtfSession* session) {
    VqsVersionedPolicy record{};
    record.structureVersion = 2;
    record.policy.v2.id = id;
    record.policy.v2.name[0] = u'U';
    std::uint32_t verdict = 99;
    EXPECT_EQ(vqsPbAddPolicyV2(session, &record, sizeof(record), &verdict, VQS_POLICY_STORE_ASM), kDone);
    EXPECT_EQ(verdict, 0U);
  });
}

}  // namespace test
