// SPDX-License-Identifier: Apache-2.0
#include <vqs/policy.h>
#include "src/channel/session_record.h"
#include "src/policy/store_request.h"

namespace vqs {
namespace {

vqsStatus resetStore(QtfSession* session, VqsPolicyStore store) {
  if (!isOpen(session)) return VQS_INVALID_PARAMETER;
  return policyStoreRequest(session->handle, kStoreReset, store, {});
}

vqsStatus getStatus(QtfSession* session, VqsPolicyStatusList* list, VqsPolicyStore store) {
  if (!isOpen(session) || list == nullptr) return VQS_INVALID_PARAMETER;
  return policyStoreRequest(session->handle, kStoreStatus, store, {.statusList = list});
}

}  // namespace
}  // namespace vqs

vqsStatus VQS_CALL vqsPbReset(QtfSession* session) { return vqs::resetStore(session, VQS_POLICY_STORE_PB); }

vqsStatus VQS_CALL vqsAsmReset(QtfSession* session) { return vqs::resetStore(session, VQS_POLICY_STORE_ASM); }

vqsStatus VQS_CALL vqsBalanceProfileReset(QtfSession* session) {
  return vqs::resetStore(session, VQS_POLICY_STORE_BALANCE_PROFILE);
}

vqsStatus VQS_CALL vqsPbGetPoliciesStatus(QtfSession* session, VqsPolicyStatusList* list) {
  return vqs::getStatus(session, list, VQS_POLICY_STORE_PB);
}

vqsStatus VQS_CALL vqsAsmGetPoliciesStatus(QtfSession* session, VqsPolicyStatusList* list) {
  return vqs::getStatus(session, list, VQS_POLICY_STORE_ASM);
}

vqsStatus VQS_CALL vqsBalanceProfileGetPoliciesStatus(QtfSession* session, VqsPolicyStatusList* list) {
  return vqs::getStatus(session, list, VQS_POLICY_STORE_BALANCE_PROFILE);
}

vqsStatus VQS_CALL vqsSetBinaryVersion(QtfSession* session, uint16_t word1, uint16_t word2, uint32_t* driverResult,
                                       VqsPolicyStore store) {
  // Only the Asm store has a version (compatibility.md: binary-version-store).
  if (!vqs::isOpen(session) || driverResult == nullptr || store != VQS_POLICY_STORE_ASM) return VQS_INVALID_PARAMETER;
  const std::uint64_t version = word1 | std::uint64_t{word2} << 32;
  return vqs::policyStoreRequest(session->handle, vqs::kStoreSetBinaryVersion, store,
                                 {.driverResult = driverResult, .version = version});
}

vqsStatus VQS_CALL vqsPbCheckStructureSupport(QtfSession* /*session*/, uint32_t structureVersion) {
  // Version 0 is reported as unsupported, although every V2 export takes it (compatibility.md: structure-version-0).
  return structureVersion == 1 || structureVersion == 2 ? VQS_SUCCESS : VQS_REQUEST_FAILED;
}
