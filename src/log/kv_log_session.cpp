// SPDX-License-Identifier: Apache-2.0
#include "src/channel/map_status.h"
#include "src/channel/session_record.h"
#include "src/channel/work_buffer.h"
#include "src/log/log_kv.h"
#include "src/log/log_request.h"

namespace vqs {
namespace {

/// The one data version whose records the iterators can walk.
constexpr std::uint32_t kDataVersion = 1;

/// What a session remembers of a handle's address. It tells the handle from a mapped log area, whose address is a
/// multiple of the page size.
std::uint32_t markOf(std::uint64_t handle) { return static_cast<std::uint32_t>(handle >> 4); }

/// Frees the key/value handle that the session's logReference is the address of. A logReference that is something else,
/// the address of a plain log or what a failed start has left, is not freed.
void releaseHandle(QtfSession& session) {
  if (session.kvHandleMark == 0 || session.kvHandleMark != markOf(session.logReference)) return;
  session.kvHandleMark = 0;
  RuntimeMemory::release(reinterpret_cast<QtfLogKV*>(session.logReference));
}

/// Stops a log that has just been started. The Ex log too is stopped with the plain key/value log's operation
/// (compatibility.md: kv-start-undo).
void undoStart(HANDLE handle, std::uint32_t logId) {
  auto record = logRequest(kLogStopKV, logId);
  static_cast<void>(sendLog(handle, record));
}

vqsStatus startKVLog(QtfSession& session, std::uint32_t operation, QtfLogKV** out) {
  auto record = logRequest(operation);
  if (sendLog(session.handle, record) != VQS_SUCCESS) return VQS_REQUEST_FAILED;
  if (record.Value != kDataVersion) {
    undoStart(session.handle, record.LogId);
    return VQS_VERSION_MISMATCH;
  }
  RuntimeBuffer memory{sizeof(QtfLogKV)};
  if (!memory) {
    undoStart(session.handle, record.LogId);
    return VQS_OUT_OF_MEMORY;
  }
  memory.as<QtfLogKV>().area = record.Address;
  auto* log = static_cast<QtfLogKV*>(memory.handOver());
  session.logSessionId = record.LogId;
  session.logReference = reinterpret_cast<std::uint64_t>(log);
  session.kvHandleMark = markOf(session.logReference);
  if (out != nullptr) *out = log;
  return VQS_SUCCESS;
}

/// Stops the session's log; a refused stop leaves it open.
vqsStatus stopKVLog(QtfSession& session, std::uint32_t operation) {
  if (session.logReference == 0) return VQS_SUCCESS;
  auto record = logRequest(operation, session.logSessionId);
  if (sendLog(session.handle, record) != VQS_SUCCESS) return VQS_REQUEST_FAILED;
  releaseHandle(session);
  session.logReference = 0;
  return VQS_SUCCESS;
}

}  // namespace
}  // namespace vqs

vqsStatus VQS_CALL vqsStartQTFLogKV(QtfSession* session, QtfLogKV** log) {
  if (!vqs::isOpen(session) || log == nullptr) return VQS_INVALID_PARAMETER;
  return vqs::startKVLog(*session, vqs::kLogStartKV, log);
}

vqsStatus VQS_CALL vqsStopQTFLogKV(QtfSession* session, QtfLogKV* log) {
  // The handle is tested only: what is stopped is the session's log (compatibility.md: kv-stop-handle).
  if (!vqs::isOpen(session) || log == nullptr) return VQS_INVALID_PARAMETER;
  return vqs::stopKVLog(*session, vqs::kLogStopKV);
}

vqsStatus VQS_CALL vqsExStartQTFLogExKV(QtfSession* session, QtfLogKV** log) {
  // Unlike the plain start, this one takes a null `log` (compatibility.md: log-output-optional).
  if (!vqs::isOpen(session)) return VQS_INVALID_PARAMETER;
  return vqs::startKVLog(*session, vqs::kLogStartExKV, log);
}

vqsStatus VQS_CALL vqsExStopQTFLogExKV(QtfSession* session) {
  if (!vqs::isOpen(session)) return VQS_INVALID_PARAMETER;
  return vqs::folded(vqs::stopKVLog(*session, vqs::kLogStopExKV));
}
