// SPDX-License-Identifier: Apache-2.0
#include "tests/memory/exports.h"

namespace test {
namespace {

void putPolicy(Client& client) { vqsPbAddPolicy(client.session, &client.policy, nullptr, &client.verdict); }
void takePolicy(Client& client) { vqsPbDeletePolicy(client.session, 5, &client.verdict); }

constexpr Export kVersionedStoreExports[] = {
    {.name = "vqsPbAddPolicyV2",
     .failures = kRequestOrMemory,
     .call =
         [](Client& client) {
           return vqsPbAddPolicyV2(client.session, &client.record, sizeof(client.record), &client.verdict,
                                   VQS_POLICY_STORE_PB);
         },
     .finish = takePolicy},
    {.name = "vqsPbReplacePolicyV2",
     .failures = kRequestOrMemory,
     .call =
         [](Client& client) {
           return vqsPbReplacePolicyV2(client.session, 5, &client.record, sizeof(client.record), &client.verdict,
                                       VQS_POLICY_STORE_PB);
         },
     .prepare = putPolicy},
    {.name = "vqsPbGetPoliciesV2",
     .failures = kRequestOrMemory,
     .call =
         [](Client& client) { return vqsPbGetPoliciesV2(client.session, &client.listHead(), VQS_POLICY_STORE_ASM); }},
    {.name = "vqsPbGetPolicyByPrioV2",
     .failures = kRequestOrMemory,
     .call =
         [](Client& client) {
           return vqsPbGetPolicyByPrioV2(client.session, 2, &client.record, sizeof(client.record),
                                         VQS_POLICY_STORE_BALANCE_PROFILE);
         }},
    {.name = "vqsPbIDGetPolicy",
     .failures = kRequestOrMemory,
     .call = [](Client& client) { return vqsPbIDGetPolicy(client.session, 2, &client.policy); }},
    {.name = "vqsPbCheckStructureSupport",
     .failures = kNothing,
     .call = [](Client& client) { return vqsPbCheckStructureSupport(client.session, VQS_STRUCTURE_VERSION_2); }},
    {.name = "vqsSetBinaryVersion",
     .failures = kRequest,
     .call =
         [](Client& client) {
           return vqsSetBinaryVersion(client.session, 3, 41, &client.verdict, VQS_POLICY_STORE_ASM);
         }},
};

}  // namespace

std::span<const Export> versionedStoreExports() { return kVersionedStoreExports; }

}  // namespace test
