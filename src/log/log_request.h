// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "src/channel/control_codes.h"
#include "src/channel/request.h"
#include "src/channel/wire_records.h"

namespace vqs {

/// Sends one log operation; the record holds the answer afterwards.
inline vqsStatus sendLog(HANDLE handle, LogRequest& record) { return sendSame(handle, kCodeLog, record); }

inline LogRequest logRequest(std::uint32_t operation, std::uint32_t logId = 0) {
  LogRequest record{};
  record.LogId = logId;
  record.Operation = operation;
  return record;
}

/// Asks for one of the versions that the log operations tell.
inline vqsStatus queryLogVersion(HANDLE handle, std::uint32_t operation, std::uint32_t* version) {
  auto record = logRequest(operation);
  if (sendLog(handle, record) != VQS_SUCCESS) return VQS_REQUEST_FAILED;
  if (version != nullptr) *version = record.Value;
  return VQS_SUCCESS;
}

}  // namespace vqs
