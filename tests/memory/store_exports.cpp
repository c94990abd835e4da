// SPDX-License-Identifier: Apache-2.0
#include "tests/memory/exports.h"

namespace test {
namespace {

using AddPolicy = decltype(vqsPbAddPolicy);
using DeletePolicy = decltype(vqsPbDeletePolicy);
using GetPolicies = decltype(vqsPbGetPolicies);
using GetStatus = decltype(vqsPbGetPoliciesStatus);
using ReplacePolicy = decltype(vqsPbReplacePolicy);
using Reset = decltype(vqsPbReset);

template <AddPolicy add>
vqsStatus addPolicy(Client& client) {
  return add(client.session, &client.policy, &client.number, &client.verdict);
}
template <AddPolicy add>
void putPolicy(Client& client) {
  addPolicy<add>(client);
}

template <DeletePolicy remove>
vqsStatus deletePolicy(Client& client) {
  return remove(client.session, 5, &client.verdict);
}
template <DeletePolicy remove>
void takePolicy(Client& client) {
  deletePolicy<remove>(client);
}

template <GetPolicies get>
vqsStatus getPolicies(Client& client) {
  client.policyList = {};
  client.policyList.count = 4;
  client.policyList.policies = client.policies.data();
  return get(client.session, &client.policyList);
}

template <GetStatus get>
vqsStatus getStatus(Client& client) {
  client.statusList = {};
  client.statusList.entries = client.statuses.data();
  return get(client.session, &client.statusList);
}

template <ReplacePolicy replace>
vqsStatus replacePolicy(Client& client) {
  return replace(client.session, 5, &client.policy, &client.verdict);
}

template <Reset reset>
vqsStatus resetStore(Client& client) {
  return reset(client.session);
}

constexpr Export kStoreExports[] = {
    {.name = "vqsPbAddPolicy",
     .failures = kRequestOrMemory,
     .call = addPolicy<vqsPbAddPolicy>,
     .finish = takePolicy<vqsPbDeletePolicy>},
    {.name = "vqsAsmAddPolicy",
     .failures = kRequestOrMemory,
     .call = addPolicy<vqsAsmAddPolicy>,
     .finish = takePolicy<vqsAsmDeletePolicy>},
    {.name = "vqsBalanceProfileAddPolicy",
     .failures = kRequestOrMemory,
     .call = addPolicy<vqsBalanceProfileAddPolicy>,
     .finish = takePolicy<vqsBalanceProfileDeletePolicy>},

    {.name = "vqsPbDeletePolicy",
     .failures = kRequest,
     .call = deletePolicy<vqsPbDeletePolicy>,
     .prepare = putPolicy<vqsPbAddPolicy>},
    {.name = "vqsAsmDeletePolicy",
     .failures = kRequest,
     .call = deletePolicy<vqsAsmDeletePolicy>,
     .prepare = putPolicy<vqsAsmAddPolicy>},
    {.name = "vqsBalanceProfileDeletePolicy",
     .failures = kRequest,
     .call = deletePolicy<vqsBalanceProfileDeletePolicy>,
     .prepare = putPolicy<vqsBalanceProfileAddPolicy>},

    {.name = "vqsPbReplacePolicy",
     .failures = kRequestOrMemory,
     .call = replacePolicy<vqsPbReplacePolicy>,
     .prepare = putPolicy<vqsPbAddPolicy>},
    {.name = "vqsAsmReplacePolicy",
     .failures = kRequestOrMemory,
     .call = replacePolicy<vqsAsmReplacePolicy>,
     .prepare = putPolicy<vqsAsmAddPolicy>},
    {.name = "vqsBalanceProfileReplacePolicy",
     .failures = kRequestOrMemory,
     .call = replacePolicy<vqsBalanceProfileReplacePolicy>,
     .prepare = putPolicy<vqsBalanceProfileAddPolicy>},

    {.name = "vqsPbGetPolicies", .failures = kRequestOrMemory, .call = getPolicies<vqsPbGetPolicies>},
    {.name = "vqsAsmGetPolicies", .failures = kRequestOrMemory, .call = getPolicies<vqsAsmGetPolicies>},
    {.name = "vqsBalanceProfileGetPolicies",
     .failures = kRequestOrMemory,
     .call = getPolicies<vqsBalanceProfileGetPolicies>},

    {.name = "vqsPbGetPoliciesStatus", .failures = kRequest, .call = getStatus<vqsPbGetPoliciesStatus>},
    {.name = "vqsAsmGetPoliciesStatus", .failures = kRequest, .call = getStatus<vqsAsmGetPoliciesStatus>},
    {.name = "vqsBalanceProfileGetPoliciesStatus",
     .failures = kRequest,
     .call = getStatus<vqsBalanceProfileGetPoliciesStatus>},

    {.name = "vqsPbReset", .failures = kRequest, .call = resetStore<vqsPbReset>},
    {.name = "vqsAsmReset", .failures = kRequest, .call = resetStore<vqsAsmReset>},
    {.name = "vqsBalanceProfileReset", .failures = kRequest, .call = resetStore<vqsBalanceProfileReset>},
};

}  // namespace

std::span<const Export> storeExports() { return kStoreExports; }

}  // namespace test
