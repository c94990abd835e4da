// SPDX-License-Identifier: Apache-2.0
#include <cstddef>

#include <vqs/platform.h>
#include "src/channel/control_codes.h"
#include "src/channel/map_status.h"
#include "src/channel/request.h"
#include "src/channel/session_record.h"

namespace vqs {
namespace {

enum LoadingOperation : std::uint32_t {
  kLoadDynamicPolicy = 0,
  kClearDynamicPolicy = 1,
  kGetBinaryVersion = 2,
  kLoadStaticBinary = 3,
  kLoadDiskBinary = 4
};

struct PolicyLoadingRecord {
  std::uint32_t operation;
  std::uint32_t reserved0;
  /// in the request: the low and high half of a size; in the answer: two result words
  std::uint32_t first;
  std::uint32_t second;
  /// address of the caller's data, which the driver reads
  std::uint64_t data;
};
static_assert(sizeof(PolicyLoadingRecord) == 24);
static_assert(offsetof(PolicyLoadingRecord, first) == 8);
static_assert(offsetof(PolicyLoadingRecord, second) == 12);
static_assert(offsetof(PolicyLoadingRecord, data) == 16);

PolicyLoadingRecord loadingRequest(std::uint32_t operation) {
  PolicyLoadingRecord record{};
  record.operation = operation;
  return record;
}

/// The outputs receive what the record holds, even when the request failed (compatibility.md: outputs-after-failure).
vqsStatus sendLoading(HANDLE handle, PolicyLoadingRecord record, std::uint32_t* first, std::uint32_t* second) {
  const vqsStatus result = sendSame(handle, kCodePolicyBinary, record);
  if (first != nullptr) *first = record.first;
  if (second != nullptr) *second = record.second;
  return folded(result);
}

vqsStatus load(QtfSession* session, std::uint32_t operation, std::uint32_t* first, std::uint32_t* second) {
  if (!isOpen(session)) return VQS_INVALID_PARAMETER;
  return sendLoading(session->handle, loadingRequest(operation), first, second);
}

}  // namespace
}  // namespace vqs

vqsStatus VQS_CALL vqsExLoadDynamicPolicy(QtfSession* session, uint64_t size, const void* data, uint32_t* first,
                                          uint32_t* second) {
  if (!vqs::isOpen(session) || data == nullptr) return VQS_INVALID_PARAMETER;
  if (size == 0 || size > VQS_DYNAMIC_POLICY_MAX_SIZE) return VQS_INVALID_PARAMETER;
  auto record = vqs::loadingRequest(vqs::kLoadDynamicPolicy);
  record.first = static_cast<std::uint32_t>(size);
  record.data = reinterpret_cast<std::uint64_t>(data);
  return vqs::sendLoading(session->handle, record, first, second);
}

vqsStatus VQS_CALL vqsExClearDynamicPolicy(QtfSession* session) {
  return vqs::load(session, vqs::kClearDynamicPolicy, nullptr, nullptr);
}

vqsStatus VQS_CALL vqsExGetPolicyBinaryVersion(QtfSession* session, uint32_t* first, uint32_t* second) {
  if (!vqs::isOpen(session) || first == nullptr || second == nullptr) return VQS_INVALID_PARAMETER;
  return vqs::load(session, vqs::kGetBinaryVersion, first, second);
}

vqsStatus VQS_CALL vqsExLoadStaticBinary(QtfSession* session, uint32_t* first, uint32_t* second) {
  return vqs::load(session, vqs::kLoadStaticBinary, first, second);
}

vqsStatus VQS_CALL vqsExLoadDiskBinary(QtfSession* session, uint32_t* first, uint32_t* second) {
  return vqs::load(session, vqs::kLoadDiskBinary, first, second);
}
