// SPDX-License-Identifier: Apache-2.0
#include "tool/driver_client.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace test {

void useDriver(const Tool& tool, const std::function<void(QtfSession*)>& work) {
  setenv("VEXOQTF_SIMULATOR_STATE", tool.path("driver.state").c_str(), 1);
  setenv("VEXOQTF_SIMULATOR_OPTIONS", "time=0", 1);
  QtfSession* session = nullptr;
  ASSERT_EQ(vqsInitialize(&session), VQS_SUCCESS);
  work(session);
  EXPECT_EQ(vqsUninitialize(session), VQS_SUCCESS);
  unsetenv("VEXOQTF_SIMULATOR_STATE");
  unsetenv("VEXOQTF_SIMULATOR_OPTIONS");
}

void addUnconditionalPolicy(const Tool& tool, std::uint32_t id) {
  useDriver(tool, [&](QtfSession* session) {
    VqsVersionedPolicy record{};
    record.structureVersion = 2;
    record.policy.v2.id = id;
    record.policy.v2.name[0] = u'U';
    std::uint32_t verdict = 99;
    EXPECT_EQ(vqsPbAddPolicyV2(session, &record, sizeof(record), &verdict, VQS_POLICY_STORE_ASM), VQS_SUCCESS);
    EXPECT_EQ(verdict, 0U);
  });
}

}  // namespace test
