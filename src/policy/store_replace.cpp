// SPDX-License-Identifier: Apache-2.0
#include <vqs/policy.h>
#include "format/policy/conversion.h"
#include "src/channel/session_record.h"
#include "src/channel/text.h"
#include "src/channel/work_buffer.h"
#include "src/policy/store_request.h"

namespace vqs {
namespace {

vqsStatus deleteFromSession(QtfSession* session, std::uint32_t id, std::uint32_t* driverResult, VqsPolicyStore store) {
  if (!isOpen(session)) return VQS_INVALID_PARAMETER;
  return deleteFromStore(session->handle, store, id, driverResult);
}

/// Deletes the policy of that id, then packs and adds the caller's: a malformed one is found when the old one is gone
/// (compatibility.md: replace-order). `policy` and `driverResult` may be null, which the Asm and BalanceProfile exports
/// do not check: without a result nothing is added, without a policy the add fails.
vqsStatus replacePolicy(HANDLE handle, std::uint32_t id, VqsPolicyV0* policy, std::uint32_t* driverResult,
                        VqsPolicyStore store) {
  if (!isThereMemoryFor<PolicyStoreRequest>()) return VQS_OUT_OF_MEMORY;
  PolicyStoreRequest request{};
  const vqsStatus deleted = deleteFromStore(handle, store, id, driverResult, request);
  // Written into the caller's record even if the delete failed (compatibility.md: replace-id-written).
  if (policy != nullptr) policy->id = id;
  if (deleted != VQS_SUCCESS || driverResult == nullptr || *driverResult != 0) return deleted;
  if (!packPolicyV0(policy, &request.policy, kRuntimeText)) return VQS_REQUEST_FAILED;
  return addToStore(handle, store, request, *driverResult);
}

vqsStatus replaceSessionChecked(QtfSession* session, std::uint32_t id, VqsPolicyV0* policy, std::uint32_t* driverResult,
                                VqsPolicyStore store) {
  if (!isOpen(session)) return VQS_INVALID_PARAMETER;
  return replacePolicy(session->handle, id, policy, driverResult, store);
}

}  // namespace
}  // namespace vqs

using namespace vqs;

vqsStatus VQS_CALL vqsPbDeletePolicy(QtfSession* session, uint32_t id, uint32_t* driverResult) {
  return deleteFromSession(session, id, driverResult, VQS_POLICY_STORE_PB);
}

vqsStatus VQS_CALL vqsAsmDeletePolicy(QtfSession* session, uint32_t id, uint32_t* driverResult) {
  return deleteFromSession(session, id, driverResult, VQS_POLICY_STORE_ASM);
}

vqsStatus VQS_CALL vqsBalanceProfileDeletePolicy(QtfSession* session, uint32_t id, uint32_t* driverResult) {
  return deleteFromSession(session, id, driverResult, VQS_POLICY_STORE_BALANCE_PROFILE);
}

vqsStatus VQS_CALL vqsPbReplacePolicy(QtfSession* session, uint32_t id, VqsPolicyV0* policy, uint32_t* driverResult) {
  // Its two twins check only the session (compatibility.md: replace-checks).
  if (!isOpen(session) || policy == nullptr || driverResult == nullptr) return VQS_INVALID_PARAMETER;
  return replacePolicy(session->handle, id, policy, driverResult, VQS_POLICY_STORE_PB);
}

vqsStatus VQS_CALL vqsAsmReplacePolicy(QtfSession* session, uint32_t id, VqsPolicyV0* policy, uint32_t* driverResult) {
  return replaceSessionChecked(session, id, policy, driverResult, VQS_POLICY_STORE_ASM);
}

vqsStatus VQS_CALL vqsBalanceProfileReplacePolicy(QtfSession* session, uint32_t id, VqsPolicyV0* policy,
                                                  uint32_t* driverResult) {
  return replaceSessionChecked(session, id, policy, driverResult, VQS_POLICY_STORE_BALANCE_PROFILE);
}

vqsStatus VQS_CALL vqsPbReplacePolicyV2(QtfSession* session, uint32_t id, const VqsVersionedPolicy* record,
                                        uint64_t size, uint32_t* driverResult, VqsPolicyStore store) {
  if (!isOpen(session) || record == nullptr || size == 0 || driverResult == nullptr) return VQS_INVALID_PARAMETER;
  if (!isThereMemoryFor<PolicyStoreRequest, UnclearedProcessHeapMemory>()) return VQS_OUT_OF_MEMORY;
  PolicyStoreRequest request{};
  // The policy is added under the record's own id, not under the argument (compatibility.md: replace-v2-id).
  if (!packVersionedPolicy(*record, size, request.policy, kRuntimeText)) return VQS_REQUEST_FAILED;
  const vqsStatus deleted = deleteFromStore(session->handle, store, id, driverResult);
  if (deleted != VQS_SUCCESS || *driverResult != 0) return deleted;
  return addToStore(session->handle, store, request, *driverResult);
}
