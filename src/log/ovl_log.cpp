// SPDX-License-Identifier: Apache-2.0
#include <vqs/telemetry.h>
#include "src/channel/driver_handle.h"
#include "src/log/log_request.h"

// These functions have no session. Each opens the driver for itself and leaves that handle open on purpose: the log
// that it maps or starts must outlive the call (compatibility.md: ovl-handles).

namespace vqs {
namespace {

/// Opens the driver and sends one log operation.
vqsStatus sendOnOwnHandle(QtfLogRequest& record) {
  HANDLE handle = nullptr;
  const vqsStatus opened = QtfOpenDriverHandle(&handle);
  if (opened != VQS_SUCCESS) return opened;
  return sendLog(handle, record);
}

vqsStatus controlFilling(std::uint16_t operation) {
  HANDLE handle = nullptr;
  const vqsStatus opened = QtfOpenDriverHandle(&handle);
  if (opened != VQS_SUCCESS) return opened;
  PollingRecord record{};
  record.operation = operation;
  return sendSame(handle, kCodePolling, record);
}

vqsStatus queryOnOwnHandle(std::uint32_t operation, std::uint32_t* version) {
  if (version == nullptr) return VQS_INVALID_PARAMETER;
  auto record = logRequest(operation);
  const vqsStatus result = sendOnOwnHandle(record);
  if (result == VQS_SUCCESS) *version = record.Value;
  return result;
}

}  // namespace
}  // namespace vqs

vqsStatus VQS_CALL vqsOVLMapQTFLogAddress(uint64_t* address, uint32_t* logId) {
  if (address == nullptr || logId == nullptr) return VQS_INVALID_PARAMETER;
  auto record = vqs::logRequest(vqs::kLogStart);
  const vqsStatus result = vqs::sendOnOwnHandle(record);
  if (result != VQS_SUCCESS) return result;
  *address = record.Address;
  *logId = record.LogId;
  return VQS_SUCCESS;
}

vqsStatus VQS_CALL vqsOVLUnmapQTFLogId(uint32_t logId) {
  auto record = vqs::logRequest(vqs::kLogStop, logId);
  return vqs::sendOnOwnHandle(record);
}

vqsStatus VQS_CALL vqsOVLStartQTFLog(void* first, void* second) {
  // Both must be there, and neither is used (compatibility.md: ovl-start-arguments).
  if (first == nullptr || second == nullptr) return VQS_INVALID_PARAMETER;
  return vqs::controlFilling(vqs::kPollingStart);
}

vqsStatus VQS_CALL vqsOVLStopQTFLog(void) { return vqs::controlFilling(vqs::kPollingStop); }

vqsStatus VQS_CALL vqsOVLGetQTFLogVersion(uint32_t* version) {
  return vqs::queryOnOwnHandle(vqs::kLogGetVersion, version);
}

vqsStatus VQS_CALL vqsOVLGetInterfaceVersion(uint32_t* version) {
  return vqs::queryOnOwnHandle(vqs::kLogGetInterfaceVersion, version);
}

vqsStatus VQS_CALL vqsOVLForceDataUpdate(void) {
  auto record = vqs::logRequest(vqs::kLogForceUpdate);
  return vqs::sendOnOwnHandle(record);
}

vqsStatus VQS_CALL vqsOVLGetDllVersion(uint32_t* version) {
  if (version == nullptr) return VQS_INVALID_PARAMETER;
  uint32_t words[4] = {};
  const vqsStatus result = vqsGetVersion(words);
  if (result != VQS_SUCCESS) return result;
  // vqsGetVersion gives the file's fourth number before its third; here the third comes first again. The caller's own
  // bits stay set (compatibility.md: ovl-dll-version).
  *version |= ((words[0] << 8 | words[1]) << 8 | words[3]) << 8 | words[2];
  return VQS_SUCCESS;
}
