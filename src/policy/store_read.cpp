// SPDX-License-Identifier: Apache-2.0
#include <cstring>

#include <vqs/policy.h>
#include "format/policy/conversion.h"
#include "src/channel/session_record.h"
#include "src/channel/text.h"
#include "src/channel/work_buffer.h"
#include "src/policy/store_request.h"

namespace vqs {
namespace {

// Read buffers are not cleared: they may be large, and a read writes the head and all policies that it announces.

/// Bytes of a read buffer with room for `count` policies.
constexpr std::size_t readBufferSize(std::size_t count) {
  return sizeof(PolicyReadBuffer) + count * sizeof(PackedPolicy);
}

vqsStatus unpackInto(VqsPolicyV0* policies, std::span<const PackedPolicy> packed) {
  // An array is needed only when there is something to write (compatibility.md: missing-array).
  if (policies == nullptr && !packed.empty()) return VQS_REQUEST_FAILED;
  for (std::size_t i = 0; i < packed.size(); ++i)
    if (!unpackPolicyV0(&packed[i], &policies[i], kRuntimeText)) return VQS_REQUEST_FAILED;
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
  const vqsStatus result = readStore(handle, store, buffer);
  list.count = buffer.count;
  if (result != VQS_SUCCESS || asked.countOnly != 0) return result;
  return unpackInto(list.policies, memory.template arrayAt<PackedPolicy>(sizeof(PolicyReadBuffer), buffer.count));
}

/// Allocates `count` times the bytes that `count` policies need and uses the first part. Large capacities therefore
/// give VQS_OUT_OF_MEMORY, as callers of these two exports know it (compatibility.md: asm-read-memory).
vqsStatus getPoliciesFromRuntime(QtfSession* session, VqsPolicyList* list, VqsPolicyStore store) {
  if (!isOpen(session) || list == nullptr) return VQS_INVALID_PARAMETER;
  const auto asked = askedFor(*list);
  const bool isEmpty = asked.countOnly != 0 || asked.count == 0;
  const std::size_t size = isEmpty ? readBufferSize(0) : saturatingProduct(asked.count, readBufferSize(asked.count));
  return readPolicies(session->handle, *list, asked, UnclearedBuffer{size}, store);
}

}  // namespace
}  // namespace vqs

using namespace vqs;

vqsStatus VQS_CALL vqsPbGetPolicies(QtfSession* session, VqsPolicyList* list) {
  if (!isOpen(session) || list == nullptr) return VQS_INVALID_PARAMETER;
  const auto asked = askedFor(*list);
  const std::size_t size = readBufferSize(asked.countOnly != 0 ? 0 : asked.count);
  return readPolicies(session->handle, *list, asked, UnclearedProcessHeapBuffer{size}, VQS_POLICY_STORE_PB);
}

vqsStatus VQS_CALL vqsAsmGetPolicies(QtfSession* session, VqsPolicyList* list) {
  return getPoliciesFromRuntime(session, list, VQS_POLICY_STORE_ASM);
}

vqsStatus VQS_CALL vqsBalanceProfileGetPolicies(QtfSession* session, VqsPolicyList* list) {
  return getPoliciesFromRuntime(session, list, VQS_POLICY_STORE_BALANCE_PROFILE);
}

vqsStatus VQS_CALL vqsPbGetPoliciesV2(QtfSession* session, VqsPolicyListV2* list, VqsPolicyStore store) {
  if (!isOpen(session) || list == nullptr) return VQS_INVALID_PARAMETER;
  const std::uint32_t capacity = list->count;
  const UnclearedProcessHeapBuffer memory{readBufferSize(capacity)};
  if (!memory) return VQS_OUT_OF_MEMORY;
  auto& buffer = memory.as<PolicyReadBuffer>();
  buffer = {.countOnly = std::uint8_t{capacity == 0}, .reserved0 = {}, .count = capacity};
  const vqsStatus result = readStore(session->handle, store, buffer);
  if (result != VQS_SUCCESS) return result;
  if (buffer.countOnly != 0) {
    list->count = buffer.count;
    return VQS_SUCCESS;
  }
  // As many bodies as the caller has room for: those beyond the store's policies come out empty (compatibility.md:
  // empty-policies). Size and structure version are checked only here (compatibility.md: late-size-check).
  const auto packed = memory.arrayAt<PackedPolicy>(sizeof(PolicyReadBuffer), capacity);
  const auto unread = packed.subspan(buffer.count);
  std::memset(unread.data(), 0, unread.size_bytes());
  return unpackPolicyArray(list + 1, list->size, list->structureVersion, packed.data(), capacity, kRuntimeText)
             ? VQS_SUCCESS
             : VQS_REQUEST_FAILED;
}

vqsStatus VQS_CALL vqsPbIDGetPolicy(QtfSession* session, uint32_t id, VqsPolicyV0* policy) {
  if (!isOpen(session) || policy == nullptr) return VQS_INVALID_PARAMETER;
  const HeapRecord<PackedPolicy> packed;
  if (!packed) return VQS_OUT_OF_MEMORY;
  const vqsStatus result = policyLookup(session->handle, id, *packed, VQS_POLICY_STORE_PB);
  if (result != VQS_SUCCESS) return result;
  return unpackPolicyV0(packed.get(), policy, kRuntimeText) ? VQS_SUCCESS : VQS_REQUEST_FAILED;
}

vqsStatus VQS_CALL vqsPbGetPolicyByPrioV2(QtfSession* session, uint32_t priority, VqsVersionedPolicy* record,
                                          uint64_t size, VqsPolicyStore store) {
  if (!isOpen(session) || record == nullptr || size == 0) return VQS_INVALID_PARAMETER;
  const ProcessHeapRecord<PackedPolicy> packed;
  if (!packed) return VQS_OUT_OF_MEMORY;
  const vqsStatus result = policyLookup(session->handle, priority, *packed, store);
  if (result != VQS_SUCCESS) return result;
  const auto version = wholeBodyVersion(*record, size);
  if (!version) return VQS_REQUEST_FAILED;
  return unpackPolicyBody(*version, packed.get(), &record->policy, kRuntimeText) ? VQS_SUCCESS : VQS_REQUEST_FAILED;
}
