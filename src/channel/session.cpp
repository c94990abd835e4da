// SPDX-License-Identifier: Apache-2.0
#include "src/channel/session_record.h"

#include "src/channel/control_codes.h"
#include "src/channel/driver_handle.h"
#include "src/channel/map_status.h"
#include "src/channel/request.h"
#include "src/channel/wire_records.h"
#include "src/channel/work_buffer.h"

namespace vqs {
namespace {

/// Tells the driver of a new session. The session stays open when the driver refuses this request (compatibility.md:
/// announcement-ignored).
void announce(HANDLE handle) {
  QtfAppIoRecord request{.operation = QTF_IO_OPEN, .valueA = 0, .valueB = 0};
  QtfAppIoRecord answer{};
  static_cast<void>(sendSplit(handle, kCodeAppIo, request, &answer));
}

vqsStatus openSession(QtfSession** out) {
  if (out == nullptr) return VQS_INVALID_PARAMETER;
  RuntimeBuffer memory{sizeof(QtfSession)};
  if (!memory) return VQS_OUT_OF_MEMORY;
  auto& session = memory.as<QtfSession>();
  const vqsStatus result = QtfOpenDriverHandle(&session.handle);
  if (result != VQS_SUCCESS) return result;
  *out = static_cast<QtfSession*>(memory.handOver());
  announce(session.handle);
  return VQS_SUCCESS;
}

/// A log that is still running is stopped with `stopOperation`, which depends on the export and not on the kind of log;
/// a key/value log's handle is not freed (compatibility.md: uninitialize-log-stop).
vqsStatus closeSession(QtfSession* session, std::uint32_t stopOperation) {
  if (session == nullptr) return VQS_INVALID_PARAMETER;
  if (session->logReference != 0) {
    QtfLogRequest request{};
    request.LogId = session->logSessionId;
    request.Operation = stopOperation;
    static_cast<void>(sendSame(session->handle, kCodeLog, request));
    session->logReference = 0;
  }
  CloseHandle(session->handle);
  RuntimeMemory::release(session);
  return VQS_SUCCESS;
}

}  // namespace
}  // namespace vqs

vqsStatus VQS_CALL vqsInitialize(QtfSession** session) { return vqs::openSession(session); }

vqsStatus VQS_CALL vqsExInitialize(QtfSession** session) { return vqs::folded(vqs::openSession(session)); }

vqsStatus VQS_CALL vqsUninitialize(QtfSession* session) { return vqs::closeSession(session, vqs::kLogStop); }

vqsStatus VQS_CALL vqsExUninitialize(QtfSession* session) { return vqs::closeSession(session, vqs::kLogStopEx); }
