// SPDX-License-Identifier: Apache-2.0
#include "src/policy/store_request.h"

#include <algorithm>
#include <array>

#include "src/channel/control_codes.h"
#include "src/channel/request.h"
#include "src/channel/text.h"
#include "src/channel/work_buffer.h"

namespace vqs {
namespace {

/// The policies of a read buffer: they follow its head in the memory that the export has allocated.
std::span<PackedPolicy> policiesOf(PolicyReadBuffer& buffer) {
  return {reinterpret_cast<PackedPolicy*>(&buffer + 1), buffer.count};
}

/// Sends a request whose answer holds the driver's own result. When the request fails, `driverResult` receives
/// VQS_DRIVER_RESULT_REQUEST_FAILED.
vqsStatus sendForVerdict(HANDLE handle, std::uint32_t code, PolicyStoreRequest& request, std::uint32_t& driverResult) {
  const vqsStatus result = sendSame(handle, code, request);
  driverResult = result == VQS_SUCCESS ? request.result : 1;
  return result;
}

vqsStatus sendDelete(HANDLE handle, VqsPolicyStore store, std::uint32_t id, std::uint32_t* driverResult,
                     PolicyStoreRequest& request) {
  const auto codes = policyStoreCodes(store);
  if (!codes) return VQS_INVALID_PARAMETER;
  request.operation = kStoreDelete;
  request.policy.id = id;
  // The answer is the driver's result alone, four bytes that the driver writes into the caller's word. A null one is
  // for the driver to refuse (compatibility.md: unchecked-output).
  return sendSplit(handle, codes->modify, request, driverResult);
}

void copyStatus(const PolicyStatusEntry& entry, VqsPolicyStatus& status) {
  status.statusValue = entry.statusValue;
  status.statusFlagA = entry.statusFlagA;
  status.statusFlagB = entry.statusFlagB;
  status.statusValue2 = entry.statusValue2;
  // A name that does not fit comes out empty (compatibility.md: status-name).
  static_cast<void>(copyBounded(status.name, entry.name));
}

/// The second status request, as long as all entries need. The caller's array is taken to hold `count` entries, and the
/// list's count is not written (compatibility.md: status-count).
vqsStatus readStatus(HANDLE handle, std::uint32_t code, std::uint32_t count, VqsPolicyStatus* entries) {
  // Needed only when there is something to write (compatibility.md: missing-array).
  if (entries == nullptr) return VQS_REQUEST_FAILED;
  const RuntimeBuffer memory{sizeof(PolicyStoreRequest) + sizeof(PolicyStatusEntry) * std::size_t{count}};
  if (!memory) return VQS_REQUEST_FAILED;
  auto& request = memory.as<PolicyStoreRequest>();
  request.operation = kStoreStatus;
  request.policyCount = count;
  if (sendSame(handle, code, memory.bytes()) != VQS_SUCCESS) return VQS_REQUEST_FAILED;
  const auto answer = memory.arrayAt<PolicyStatusEntry>(offsetof(PolicyStoreRequest, statusEntries), count);
  for (std::size_t i = 0; i < answer.size(); ++i) copyStatus(answer[i], entries[i]);
  return VQS_SUCCESS;
}

}  // namespace

std::optional<PolicyStoreCodes> policyStoreCodes(VqsPolicyStore store) {
  static constexpr std::array kCodes = {
      PolicyStoreCodes{.read = kCodePbRead, .modify = kCodePbModify},
      PolicyStoreCodes{.read = kCodeAsmRead, .modify = kCodeAsmModify},
      PolicyStoreCodes{.read = kCodeBalanceProfileRead, .modify = kCodeBalanceProfileModify},
  };
  return store < kCodes.size() ? std::optional{kCodes[store]} : std::nullopt;
}

vqsStatus readStore(HANDLE handle, VqsPolicyStore store, PolicyReadBuffer& buffer) {
  if (!isThereMemoryFor<PolicyStoreRequest>()) return VQS_REQUEST_FAILED;
  const HeapRecord<PolicyFetchRequest> request;
  if (!request) return VQS_REQUEST_FAILED;
  const auto codes = policyStoreCodes(store);
  if (!codes) return VQS_INVALID_PARAMETER;
  if (queryPolicyCount(handle, codes->read, *request) != VQS_SUCCESS) return VQS_REQUEST_FAILED;
  const std::uint32_t total = request->policyCount;
  // Known only after the first request (compatibility.md: small-capacity).
  if (buffer.countOnly == 0 && buffer.count < total) return VQS_INVALID_PARAMETER;
  buffer.count = total;
  if (buffer.countOnly != 0) return VQS_SUCCESS;
  return fetchPolicies(handle, codes->read, *request, policiesOf(buffer));
}

vqsStatus addToStore(HANDLE handle, VqsPolicyStore store, PolicyStoreRequest& request, std::uint32_t& driverResult) {
  if (!isThereMemoryFor<PolicyStoreRequest>()) return VQS_REQUEST_FAILED;
  const auto codes = policyStoreCodes(store);
  if (!codes) return VQS_INVALID_PARAMETER;
  request.operation = kStoreAdd;
  return sendForVerdict(handle, codes->modify, request, driverResult);
}

vqsStatus deleteFromStore(HANDLE handle, VqsPolicyStore store, std::uint32_t id, std::uint32_t* driverResult) {
  PolicyStoreRequest request{};
  return deleteFromStore(handle, store, id, driverResult, request);
}

vqsStatus deleteFromStore(HANDLE handle, VqsPolicyStore store, std::uint32_t id, std::uint32_t* driverResult,
                          PolicyStoreRequest& request) {
  if (!isThereMemoryFor<PolicyStoreRequest>()) return VQS_REQUEST_FAILED;
  const vqsStatus result = sendDelete(handle, store, id, driverResult, request);
  request.operation = 0;
  request.policy.id = 0;
  return result;
}

vqsStatus resetStore(HANDLE handle, VqsPolicyStore store) {
  const HeapRecord<PolicyStoreRequest> request;
  if (!request) return VQS_REQUEST_FAILED;
  const auto codes = policyStoreCodes(store);
  if (!codes) return VQS_INVALID_PARAMETER;
  request->operation = kStoreReset;
  return sendSame(handle, codes->modify, *request);
}

vqsStatus readStoreStatus(HANDLE handle, VqsPolicyStore store, VqsPolicyStatusList& list) {
  HeapRecord<PolicyStoreRequest> request;
  if (!request) return VQS_REQUEST_FAILED;
  const auto codes = policyStoreCodes(store);
  if (!codes) return VQS_INVALID_PARAMETER;
  request->operation = kStoreStatus;
  request->countOnly = 1;
  if (sendSame(handle, codes->modify, *request) != VQS_SUCCESS) return VQS_REQUEST_FAILED;
  const std::uint32_t count = request->policyCount;
  request.reset();
  // The list's count keeps what it held (compatibility.md: status-empty-store).
  if (count == 0) return VQS_SUCCESS;
  if (list.countOnly == 0) return readStatus(handle, codes->modify, count, list.entries);
  list.count = count;
  return VQS_SUCCESS;
}

vqsStatus setBinaryVersion(HANDLE handle, std::uint32_t word1, std::uint32_t word2, std::uint32_t& driverResult) {
  const HeapRecord<PolicyStoreRequest> request;
  if (!request) return VQS_REQUEST_FAILED;
  request->operation = kStoreSetBinaryVersion;
  request->versionWord1 = word1;
  request->versionWord2 = word2;
  return sendForVerdict(handle, kCodeAsmModify, *request, driverResult);
}

vqsStatus policyLookup(HANDLE handle, std::uint32_t key, PackedPolicy& destination, VqsPolicyStore store) {
  PolicyLookupRequest request{};
  request.key = key;
  request.store = store;
  return sendSplit(handle, kCodePolicyLookup, request, &destination);
}

vqsStatus queryPolicyCount(HANDLE handle, std::uint32_t readCode, PolicyFetchRequest& request) {
  request.countQuery = 1;
  const vqsStatus result = sendSame(handle, readCode, request);
  request.countQuery = 0;
  return result;
}

vqsStatus fetchPolicies(HANDLE handle, std::uint32_t readCode, PolicyFetchRequest& request,
                        std::span<PackedPolicy> policies) {
  for (std::uint32_t chunk = 0; !policies.empty(); ++chunk) {
    request.chunkIndex = chunk;
    if (sendSame(handle, readCode, request) != VQS_SUCCESS) return VQS_REQUEST_FAILED;
    const std::size_t taken = std::min(policies.size(), kPoliciesPerChunk);
    std::ranges::copy(std::span{request.policies}.first(taken), policies.begin());
    policies = policies.subspan(taken);
  }
  return VQS_SUCCESS;
}

}  // namespace vqs
