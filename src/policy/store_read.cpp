// SPDX-License-Identifier: Apache-2.0
#include <vqs/policy.h>
#include "format/policy/conversion.h"
#include "src/channel/session_record.h"
#include "src/channel/text.h"
#include "src/channel/work_buffer.h"
#include "src/policy/store_request.h"

namespace vqs {
namespace {

/// Bytes of a read buffer with room for `count` policies.
constexpr std::size_t readBufferSize(std::size_t count) {
  return sizeof(PolicyReadBuffer) + count * sizeof(VqsPackedPolicy);
}

vqsStatus unpackInto(VqsPolicyV0* policies, std::span<const VqsPackedPolicy> packed) {
  // An array is needed only when there is something to write (compatibility.md: missing-array).
  if (policies == nullptr && !packed.empty()) return VQS_REQUEST_FAILED;
  for (std::size_t i = 0; i < packed.size(); ++i)
    if (unpackPolicyV0(&packed[i], &policies[i], kRuntimeText) != kConverted) return VQS_REQUEST_FAILED;
  return VQS_SUCCESS;
}

/// What the caller asked for. It is read once, because the buffer is allocated for it and another thread may change the
/// list meanwhile.
PolicyReadBuffer askedFor(const VqsPolicyList& list) {
  return {.countOnly = list.countOnly, .reserved0 = {}, .count = list.count};
}

template <class Memory>
vqsStatus readPolicies(HANDLE handle, VqsPolicyList& list, const PolicyReadBuffer& asked,
                       const WorkBuffer<Memory>& memory, VqsPolicyStore store) {
  if (!memory) return VQS_OUT_OF_MEMORY;
  auto& buffer = memory.template as<PolicyReadBuffer>();
  buffer = asked;
  const vqsStatus result = policyStoreRequest(handle, kStoreReadAll, store, {.readBuffer = &buffer});
  list.count = buffer.count;
  if (result != VQS_SUCCESS || asked.countOnly != 0) return result;
  return unpackInto(list.policies, memory.template arrayAt<VqsPackedPolicy>(sizeof(PolicyReadBuffer), buffer.count));
}

/// Allocates `count` times the bytes that `count` policies need and uses the first part. Large capacities therefore
/// give VQS_OUT_OF_MEMORY, as callers of these two exports know it (compatibility.md: asm-read-memory).
vqsStatus getPoliciesFromRuntime(QtfSession* session, VqsPolicyList* list, VqsPolicyStore store) {
  if (!isOpen(session) || list == nullptr) return VQS_INVALID_PARAMETER;
  const auto asked = askedFor(*list);
  const bool isEmpty = asked.countOnly != 0 || asked.count == 0;
  const std::size_t size = isEmpty ? readBufferSize(0) : saturatingProduct(asked.count, readBufferSize(asked.count));
  return readPolicies(session->handle, *list, asked, RuntimeBuffer{size}, store);
}

}  // namespace
}  // namespace vqs

vqsStatus VQS_CALL vqsPbGetPolicies(QtfSession* session, VqsPolicyList* list) {
  if (!vqs::isOpen(session) || list == nullptr) return VQS_INVALID_PARAMETER;
  const auto asked = vqs::askedFor(*list);
  const std::size_t size = vqs::readBufferSize(asked.countOnly != 0 ? 0 : asked.count);
  return vqs::readPolicies(session->handle, *list, asked, vqs::ProcessHeapBuffer{size}, VQS_POLICY_STORE_PB);
}

vqsStatus VQS_CALL vqsAsmGetPolicies(QtfSession* session, VqsPolicyList* list) {
  return vqs::getPoliciesFromRuntime(session, list, VQS_POLICY_STORE_ASM);
}

vqsStatus VQS_CALL vqsBalanceProfileGetPolicies(QtfSession* session, VqsPolicyList* list) {
  return vqs::getPoliciesFromRuntime(session, list, VQS_POLICY_STORE_BALANCE_PROFILE);
}

vqsStatus VQS_CALL vqsPbGetPoliciesV2(QtfSession* session, VqsPolicyListV2* list, VqsPolicyStore store) {
  if (!vqs::isOpen(session) || list == nullptr) return VQS_INVALID_PARAMETER;
  const std::uint32_t capacity = list->count;
  const vqs::ProcessHeapBuffer memory{vqs::readBufferSize(capacity)};
  if (!memory) return VQS_OUT_OF_MEMORY;
  auto& buffer = memory.as<vqs::PolicyReadBuffer>();
  buffer.countOnly = capacity == 0 ? 1 : 0;
  buffer.count = capacity;
  const vqsStatus result = vqs::policyStoreRequest(session->handle, vqs::kStoreReadAll, store, {.readBuffer = &buffer});
  if (result != VQS_SUCCESS) return result;
  if (buffer.countOnly != 0) {
    list->count = buffer.count;
    return VQS_SUCCESS;
  }
  // As many bodies as the caller has room for: those beyond the store's policies come out empty (compatibility.md:
  // empty-policies). Size and structure version are checked only here (compatibility.md: late-size-check).
  const auto packed = memory.arrayAt<VqsPackedPolicy>(sizeof(vqs::PolicyReadBuffer), capacity);
  return vqs::unpackPolicyArray(list + 1, list->size, list->structureVersion, packed.data(), capacity,
                                vqs::kRuntimeText) == vqs::kConverted
             ? VQS_SUCCESS
             : VQS_REQUEST_FAILED;
}

vqsStatus VQS_CALL vqsPbIDGetPolicy(QtfSession* session, uint32_t id, VqsPolicyV0* policy) {
  if (!vqs::isOpen(session) || policy == nullptr) return VQS_INVALID_PARAMETER;
  const vqs::RuntimeBuffer memory{sizeof(VqsPackedPolicy)};
  if (!memory) return VQS_OUT_OF_MEMORY;
  auto& packed = memory.as<VqsPackedPolicy>();
  const vqsStatus result = vqs::policyLookup(session->handle, id, packed, VQS_POLICY_STORE_PB);
  if (result != VQS_SUCCESS) return result;
  return vqs::unpackPolicyV0(&packed, policy, vqs::kRuntimeText) == vqs::kConverted ? VQS_SUCCESS : VQS_REQUEST_FAILED;
}

vqsStatus VQS_CALL vqsPbGetPolicyByPrioV2(QtfSession* session, uint32_t priority, VqsVersionedPolicy* record,
                                          uint64_t size, VqsPolicyStore store) {
  if (!vqs::isOpen(session) || record == nullptr || size == 0) return VQS_INVALID_PARAMETER;
  const vqs::ProcessHeapBuffer memory{sizeof(VqsPackedPolicy)};
  if (!memory) return VQS_OUT_OF_MEMORY;
  auto& packed = memory.as<VqsPackedPolicy>();
  const vqsStatus result = vqs::policyLookup(session->handle, priority, packed, store);
  if (result != VQS_SUCCESS) return result;
  const auto version = vqs::wholeBodyVersion(*record, size);
  if (!version) return VQS_REQUEST_FAILED;
  return vqs::unpackPolicyBody(*version, &packed, &record->policy, vqs::kRuntimeText) == vqs::kConverted
             ? VQS_SUCCESS
             : VQS_REQUEST_FAILED;
}
