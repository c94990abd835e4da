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
  const RuntimeBuffer memory{sizeof(VqsPackedPolicy)};
  if (!memory) return VQS_OUT_OF_MEMORY;
  auto& packed = memory.as<VqsPackedPolicy>();
  if (packPolicyV0(policy, &packed, kRuntimeText) != kConverted) return VQS_REQUEST_FAILED;
  const vqsStatus result =
      policyStoreRequest(session->handle, kStoreAdd, store, {.policy = &packed, .driverResult = driverResult});
  // The id of the caller's own record, whatever the driver answers (compatibility.md: add-own-id).
  if (result == VQS_SUCCESS && idOut != nullptr) *idOut = packed.id;
  return result;
}

}  // namespace
}  // namespace vqs

vqsStatus VQS_CALL vqsPbAddPolicy(QtfSession* session, const VqsPolicyV0* policy, uint32_t* idOut,
                                  uint32_t* driverResult) {
  return vqs::addPolicy(session, policy, idOut, driverResult, VQS_POLICY_STORE_PB);
}

vqsStatus VQS_CALL vqsAsmAddPolicy(QtfSession* session, const VqsPolicyV0* policy, uint32_t* idOut,
                                   uint32_t* driverResult) {
  return vqs::addPolicy(session, policy, idOut, driverResult, VQS_POLICY_STORE_ASM);
}

vqsStatus VQS_CALL vqsBalanceProfileAddPolicy(QtfSession* session, const VqsPolicyV0* policy, uint32_t* idOut,
                                              uint32_t* driverResult) {
  return vqs::addPolicy(session, policy, idOut, driverResult, VQS_POLICY_STORE_BALANCE_PROFILE);
}

vqsStatus VQS_CALL vqsPbAddPolicyV2(QtfSession* session, const VqsVersionedPolicy* record, uint64_t size,
                                    uint32_t* driverResult, VqsPolicyStore store) {
  if (!vqs::isOpen(session) || record == nullptr || size == 0 || driverResult == nullptr) return VQS_INVALID_PARAMETER;
  const vqs::ProcessHeapBuffer memory{sizeof(VqsPackedPolicy)};
  if (!memory) return VQS_OUT_OF_MEMORY;
  auto& packed = memory.as<VqsPackedPolicy>();
  if (!vqs::packVersionedPolicy(*record, size, packed, vqs::kRuntimeText)) return VQS_REQUEST_FAILED;
  return vqs::policyStoreRequest(session->handle, vqs::kStoreAdd, store,
                                 {.policy = &packed, .driverResult = driverResult});
}
