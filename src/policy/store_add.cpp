// SPDX-License-Identifier: Apache-2.0
#include <vqs/policy.h>
#include "format/policy/conversion.h"
#include "src/channel/session_record.h"
#include "src/channel/text.h"
#include "src/channel/work_buffer.h"
#include "src/policy/store_request.h"

namespace vqs {
namespace {

vqsStatus addPolicy(QtfSession* session, const VqsPolicyV0* policy, std::uint32_t* idOut, std::uint32_t* driverResult,
                    VqsPolicyStore store) {
  if (!isOpen(session) || policy == nullptr || driverResult == nullptr) return VQS_INVALID_PARAMETER;
  if (!isThereMemoryFor<PolicyStoreRequest>()) return VQS_OUT_OF_MEMORY;
  PolicyStoreRequest request{};
  if (!packPolicyV0(policy, &request.policy, kRuntimeText)) return VQS_REQUEST_FAILED;
  const std::uint32_t id = request.policy.id;
  const vqsStatus result = addToStore(session->handle, store, request, *driverResult);
  // The id of the caller's own record, whatever the driver answers (compatibility.md: add-own-id).
  if (result == VQS_SUCCESS && idOut != nullptr) *idOut = id;
  return result;
}

}  // namespace
}  // namespace vqs

using namespace vqs;

vqsStatus VQS_CALL vqsPbAddPolicy(QtfSession* session, const VqsPolicyV0* policy, uint32_t* idOut,
                                  uint32_t* driverResult) {
  return addPolicy(session, policy, idOut, driverResult, VQS_POLICY_STORE_PB);
}

vqsStatus VQS_CALL vqsAsmAddPolicy(QtfSession* session, const VqsPolicyV0* policy, uint32_t* idOut,
                                   uint32_t* driverResult) {
  return addPolicy(session, policy, idOut, driverResult, VQS_POLICY_STORE_ASM);
}

vqsStatus VQS_CALL vqsBalanceProfileAddPolicy(QtfSession* session, const VqsPolicyV0* policy, uint32_t* idOut,
                                              uint32_t* driverResult) {
  return addPolicy(session, policy, idOut, driverResult, VQS_POLICY_STORE_BALANCE_PROFILE);
}

vqsStatus VQS_CALL vqsPbAddPolicyV2(QtfSession* session, const VqsVersionedPolicy* record, uint64_t size,
                                    uint32_t* driverResult, VqsPolicyStore store) {
  if (!isOpen(session) || record == nullptr || size == 0 || driverResult == nullptr) return VQS_INVALID_PARAMETER;
  if (!isThereMemoryFor<PolicyStoreRequest, UnclearedProcessHeapMemory>()) return VQS_OUT_OF_MEMORY;
  PolicyStoreRequest request{};
  if (!packVersionedPolicy(*record, size, request.policy, kRuntimeText)) return VQS_REQUEST_FAILED;
  return addToStore(session->handle, store, request, *driverResult);
}
