// SPDX-License-Identifier: Apache-2.0
#include <cstddef>

#include <vqs/platform.h>
#include "src/channel/control_codes.h"
#include "src/channel/map_status.h"
#include "src/channel/request.h"
#include "src/channel/session_record.h"
#include "src/channel/wire_records.h"

namespace vqs {
namespace {

struct TaskbarIconRecord {
  std::uint32_t reserved0[2];
  std::uint32_t first;
  std::uint32_t second;
};
static_assert(sizeof(TaskbarIconRecord) == 16);
static_assert(offsetof(TaskbarIconRecord, first) == 8);
static_assert(offsetof(TaskbarIconRecord, second) == 12);

struct WordPair {
  std::uint32_t first;
  std::uint32_t second;
};
static_assert(sizeof(WordPair) == 8);

vqsStatus controlPolling(QtfSession* session, std::uint8_t client, std::uint8_t enable, std::uint32_t value) {
  if (!isOpen(session)) return VQS_INVALID_PARAMETER;
  PollingRecord record{};
  record.operation = enable != 0 ? kPollingStart : kPollingStop;
  record.client = client;
  record.value = value;
  return sendSame(session->handle, kCodePolling, record);
}

vqsStatus programSE1(QtfSession* session, std::uint32_t first, std::uint32_t second) {
  if (!isOpen(session)) return VQS_INVALID_PARAMETER;
  // Only 1 sets a flag; every other value, 2 or -1 as well, clears it (compatibility.md: se1-exactly-one).
  WordPair record{.first = first == 1 ? 1U : 0U, .second = second == 1 ? 1U : 0U};
  return sendSame(session->handle, kCodeProgramSE1, record);
}

}  // namespace
}  // namespace vqs

vqsStatus VQS_CALL vqsGetTaskbarIcon(QtfSession* session, uint32_t* first, uint32_t* second) {
  if (!vqs::isOpen(session) || first == nullptr || second == nullptr) return VQS_INVALID_PARAMETER;
  vqs::TaskbarIconRecord request{};
  vqs::TaskbarIconRecord answer{};
  const vqsStatus result = vqs::sendSplit(session->handle, vqs::kCodeTaskbarIcon, request, &answer);
  if (result != VQS_SUCCESS) return result;
  *first = answer.first;
  *second = answer.second;
  return VQS_SUCCESS;
}

vqsStatus VQS_CALL vqsGetDebugOutput(QtfSession* session, uint32_t* value) {
  // A null `value` is for the driver to refuse (compatibility.md: unchecked-output).
  if (!vqs::isOpen(session)) return VQS_INVALID_PARAMETER;
  return vqs::sendRequest(session->handle, vqs::kCodeDebugOutput,
                          {.request = {}, .answer = value, .answerLength = sizeof(*value)}, nullptr);
}

vqsStatus VQS_CALL vqsControlPolling(QtfSession* session, uint8_t enable, uint32_t value) {
  return vqs::controlPolling(session, 0, enable, value);
}

vqsStatus VQS_CALL vqsExControlPolling(QtfSession* session, uint8_t enable, uint32_t value) {
  return vqs::folded(vqs::controlPolling(session, 1, enable, value));
}

vqsStatus VQS_CALL vqsProgramSE1(QtfSession* session, uint32_t first, uint32_t second) {
  return vqs::programSE1(session, first, second);
}

vqsStatus VQS_CALL vqsExProgramSE1(QtfSession* session, uint32_t first, uint32_t second) {
  return vqs::folded(vqs::programSE1(session, first, second));
}

vqsStatus VQS_CALL vqsTAControl(QtfSession* session, uint32_t first, uint32_t second) {
  if (!vqs::isOpen(session)) return VQS_INVALID_PARAMETER;
  vqs::WordPair record{.first = first, .second = second};
  return vqs::sendRequest(session->handle, vqs::kCodeTaControl, {.request = vqs::bytesOf(record)}, nullptr);
}
