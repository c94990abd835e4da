// SPDX-License-Identifier: Apache-2.0
#include <vqs/telemetry.h>
#include "src/channel/map_status.h"
#include "src/channel/session_record.h"
#include "src/log/log_request.h"

namespace vqs {
namespace {

/// Stops the session's log. The session forgets it even when the driver refuses (compatibility.md: stop-forgets-log).
vqsStatus stopLog(QtfSession& session, std::uint32_t operation) {
  auto record = logRequest(operation, session.logSessionId);
  session.logReference = 0;
  return sendLog(session.handle, record);
}

vqsStatus querySupport(HANDLE handle, std::uint8_t generation, void* buffer, std::uint32_t length) {
  return sendSplit(handle, kCodeLogSupport, generation, buffer, length);
}

/// Starts the Ex log. After a failed start the session takes the byte count of the failed request for the log's id, and
/// what the caller's variable held for its address (compatibility.md: ex-start-leftovers).
vqsStatus startExLog(QtfSession& session, QtfLogRequest& record, std::uint64_t* address) {
  DWORD returned = 0;
  const vqsStatus started =
      sendRequest(session.handle, kCodeLog, {bytesOf(record), &record, sizeof(record)}, &returned);
  if (started == VQS_SUCCESS && address != nullptr) *address = record.Address;
  session.logSessionId = started == VQS_SUCCESS ? record.LogId : returned;
  if (address != nullptr) session.logReference = *address;
  if (address == nullptr && started == VQS_SUCCESS) session.logReference = record.Address;
  return started;
}

}  // namespace
}  // namespace vqs

vqsStatus VQS_CALL vqsStartQTFLog(QtfSession* session, uint64_t* address) {
  // A null `address` is no mistake (compatibility.md: log-output-optional).
  if (!vqs::isOpen(session)) return VQS_INVALID_PARAMETER;
  auto record = vqs::logRequest(vqs::kLogStart);
  if (vqs::sendLog(session->handle, record) != VQS_SUCCESS) return VQS_REQUEST_FAILED;
  if (address != nullptr) *address = record.Address;
  // A log that is running already is forgotten, not stopped (compatibility.md: second-log).
  session->logReference = record.Address;
  session->logSessionId = record.LogId;
  return VQS_SUCCESS;
}

vqsStatus VQS_CALL vqsStopQTFLog(QtfSession* session) {
  // The other stop functions succeed when no log runs (compatibility.md: stop-without-log).
  if (!vqs::isOpen(session) || session->logReference == 0) return VQS_INVALID_PARAMETER;
  return vqs::stopLog(*session, vqs::kLogStop);
}

vqsStatus VQS_CALL vqsGetQTFLogSupport(QtfSession* session, void* buffer, uint32_t length) {
  // A null buffer is for the driver to refuse; the Ex form checks it (compatibility.md: unchecked-output).
  if (!vqs::isOpen(session)) return VQS_INVALID_PARAMETER;
  return vqs::querySupport(session->handle, 0, buffer, length);
}

vqsStatus VQS_CALL vqsGetQTFLogVersion(QtfSession* session, uint32_t* version) {
  if (!vqs::isOpen(session)) return VQS_INVALID_PARAMETER;
  return vqs::queryLogVersion(session->handle, vqs::kLogGetVersion, version);
}

vqsStatus VQS_CALL vqsExStartQTFLog(QtfSession* session, uint64_t* address, uint32_t* version) {
  if (!vqs::isOpen(session)) return VQS_INVALID_PARAMETER;
  auto record = vqs::logRequest(vqs::kLogStartEx);
  const vqsStatus started = vqs::startExLog(*session, record, address);
  if (version == nullptr) return vqs::folded(started);
  // The result is that of this second request alone, even if the start failed (compatibility.md: ex-start-result).
  record.Operation = vqs::kLogGetVersionEx;
  const vqsStatus asked = vqs::sendLog(session->handle, record);
  if (asked == VQS_SUCCESS) *version = record.Value;
  return vqs::folded(asked);
}

vqsStatus VQS_CALL vqsExStopQTFLog(QtfSession* session) {
  if (!vqs::isOpen(session)) return VQS_INVALID_PARAMETER;
  if (session->logReference == 0) return VQS_SUCCESS;
  return vqs::folded(vqs::stopLog(*session, vqs::kLogStopEx));
}

vqsStatus VQS_CALL vqsExQTFLogSupport(QtfSession* session, void* buffer, uint32_t length) {
  if (!vqs::isOpen(session) || buffer == nullptr) return VQS_INVALID_PARAMETER;
  return vqs::folded(vqs::querySupport(session->handle, 1, buffer, length));
}
