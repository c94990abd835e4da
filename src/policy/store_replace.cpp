// SPDX-License-Identifier: Apache-2.0
#include <vqs/policy.h>
#include "format/policy/conversion.h"
#include "src/channel/session_record.h"
#include "src/channel/text.h"
#include "src/channel/work_buffer.h"
#include "src/policy/store_request.h"

namespace vqs {
namespace {

vqsStatus deletePolicy(HANDLE handle, std::uint32_t id, std::uint32_t* driverResult, VqsPolicyStore store) {
  return policyStoreRequest(handle, kStoreDelete, store, {.id = &id, .driverResult = driverResult});
}

vqsStatus deleteFromSession(QtfSession* session, std::uint32_t id, std::uint32_t* driverResult, VqsPolicyStore store) {
  if (!isOpen(session)) return VQS_INVALID_PARAMETER;
  return deletePolicy(session->handle, id, driverResult, store);
}

/// Deletes the policy of that id, then packs and adds the caller's: a malformed one is found when the old one is gone
/// (compatibility.md: replace-order). `policy` and `driverResult` may be null, which the Asm and BalanceProfile exports
/// do not check: without a result nothing is added, without a policy the add fails.
vqsStatus replacePolicy(HANDLE handle, std::uint32_t id, VqsPolicyV0* policy, std::uint32_t* driverResult,
                        VqsPolicyStore store) {
  const RuntimeBuffer memory{sizeof(VqsPackedPolicy)};
  if (!memory) return VQS_OUT_OF_MEMORY;
  const vqsStatus deleted = deletePolicy(handle, id, driverResult, store);
  // Written into the caller's record even if the delete failed (compatibility.md: replace-id-written).
  if (policy != nullptr) policy->id = id;
  if (deleted != VQS_SUCCESS || driverResult == nullptr || *driverResult != 0) return deleted;
  auto& packed = memory.as<VqsPackedPolicy>();
  if (packPolicyV0(policy, &packed, kRuntimeText) != kConverted) return VQS_REQUEST_FAILED;
  return policyStoreRequest(handle, kStoreAdd, store, {.policy = &packed, .driverResult = driverResult});
}

vqsStatus replaceSessionChecked(QtfSession* session, std::uint32_t id, VqsPolicyV0* policy, std::uint32_t* driverResult,
                                VqsPolicyStore store) {
  if (!isOpen(session)) return VQS_INVALID_PARAMETER;
  return replacePolicy(session->handle, id, policy, driverResult, store);
}

}  // namespace
}  // namespace vqs

vqsStatus VQS_CALL vqsPbDeletePolicy(QtfSession* session, uint32_t id, uint32_t* driverResult) {
  return vqs::deleteFromSession(session, id, driverResult, VQS_POLICY_STORE_PB);
}

vqsStatus VQS_CALL vqsAsmDeletePolicy(QtfSession* session, uint32_t id, uint32_t* driverResult) {
  return vqs::deleteFromSession(session, id, driverResult, VQS_POLICY_STORE_ASM);
}

vqsStatus VQS_CALL vqsBalanceProfileDeletePolicy(QtfSession* session, uint32_t id, uint32_t* driverResult) {
  return vqs::deleteFromSession(session, id, driverResult, VQS_POLICY_STORE_BALANCE_PROFILE);
}

vqsStatus VQS_CALL vqsPbReplacePolicy(QtfSession* session, uint32_t id, VqsPolicyV0* policy, uint32_t* driverResult) {
  // Its two twins check only the session (compatibility.md: replace-checks).
  if (!vqs::isOpen(session) || policy == nullptr || driverResult == nullptr) return VQS_INVALID_PARAMETER;
  return vqs::replacePolicy(session->handle, id, policy, driverResult, VQS_POLICY_STORE_PB);
}

vqsStatus VQS_CALL vqsAsmReplacePolicy(QtfSession* session, uint32_t id, VqsPolicyV0* policy, uint32_t* driverResult) {
  return vqs::replaceSessionChecked(session, id, policy, driverResult, VQS_POLICY_STORE_ASM);
}

vqsStatus VQS_CALL vqsBalanceProfileReplacePolicy(QtfSession* session, uint32_t id, VqsPolicyV0* policy,
                                                  uint32_t* driverResult) {
  return vqs::replaceSessionChecked(session, id, policy, driverResult, VQS_POLICY_STORE_BALANCE_PROFILE);
}

vqsStatus VQS_CALL vqsPbReplacePolicyV2(QtfSession* session, uint32_t id, const VqsVersionedPolicy* record,
                                        uint64_t size, uint32_t* driverResult, VqsPolicyStore store) {
  if (!vqs::isOpen(session) || record == nullptr || size == 0 || driverResult == nullptr) return VQS_INVALID_PARAMETER;
  const vqs::ProcessHeapBuffer memory{sizeof(VqsPackedPolicy)};
  if (!memory) return VQS_OUT_OF_MEMORY;
  auto& packed = memory.as<VqsPackedPolicy>();
  // The policy is added under the record's own id, not under the argument (compatibility.md: replace-v2-id).
  if (!vqs::packVersionedPolicy(*record, size, packed, vqs::kRuntimeText)) return VQS_REQUEST_FAILED;
  const vqsStatus deleted = vqs::deletePolicy(session->handle, id, driverResult, store);
  if (deleted != VQS_SUCCESS || *driverResult != 0) return deleted;
  return vqs::policyStoreRequest(session->handle, vqs::kStoreAdd, store,
                                 {.policy = &packed, .driverResult = driverResult});
}
