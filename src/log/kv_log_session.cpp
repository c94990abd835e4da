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

/// The part of a handle's address in which heap memory and mapped memory differ: a log's pages end in more zeros.
std::uint32_t markOf(std::uint64_t handle) { return static_cast<std::uint32_t>(handle >> 4); }

/// Frees the handle that the session's log is known by, if the session has made it. The address of a plain log, or what
/// a failed start has left, is nobody's to free.
void releaseHandle(QtfSession& session) {
  if (session.kvHandleMark == 0 || session.kvHandleMark != markOf(session.logReference)) return;
  session.kvHandleMark = 0;
  RuntimeMemory::release(reinterpret_cast<QtfLogKV*>(session.logReference));
}

/// Undoes a start; both forms are undone with the plain stop.
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
  HeapRecord<QtfLogKV> log;
  if (!log) {
    undoStart(session.handle, record.LogId);
    return VQS_OUT_OF_MEMORY;
  }
  log->area = record.Address;
  auto* const handle = log.handOver();
  session.logSessionId = record.LogId;
  session.logReference = reinterpret_cast<std::uint64_t>(handle);
  session.kvHandleMark = markOf(session.logReference);
  if (out != nullptr) *out = handle;
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

using namespace vqs;

vqsStatus VQS_CALL vqsStartQTFLogKV(QtfSession* session, QtfLogKV** log) {
  if (!isOpen(session) || log == nullptr) return VQS_INVALID_PARAMETER;
  return startKVLog(*session, kLogStartKV, log);
}

vqsStatus VQS_CALL vqsStopQTFLogKV(QtfSession* session, QtfLogKV* log) {
  if (!isOpen(session) || log == nullptr) return VQS_INVALID_PARAMETER;
  return stopKVLog(*session, kLogStopKV);
}

vqsStatus VQS_CALL vqsExStartQTFLogExKV(QtfSession* session, QtfLogKV** log) {
  if (!isOpen(session)) return VQS_INVALID_PARAMETER;
  return startKVLog(*session, kLogStartExKV, log);
}

vqsStatus VQS_CALL vqsExStopQTFLogExKV(QtfSession* session) {
  if (!isOpen(session)) return VQS_INVALID_PARAMETER;
  return folded(stopKVLog(*session, kLogStopExKV));
}
