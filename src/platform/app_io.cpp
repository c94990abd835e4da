// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <array>

#include <vqs/platform.h>
#include "src/channel/control_codes.h"
#include "src/channel/map_status.h"
#include "src/channel/request.h"
#include "src/channel/session_record.h"
#include "src/channel/wire_records.h"

namespace vqs {
namespace {

/// An ASCII literal as the 16-bit text that Windows takes for names.
template <std::size_t N>
consteval std::array<WCHAR, N> systemName(const char (&text)[N]) {
  std::array<WCHAR, N> name{};
  std::ranges::copy(text, name.begin());
  return name;
}

constexpr auto kOutputEvent = systemName("Global\\VexoQtfAppOutputEvent");

vqsStatus exchange(HANDLE handle, QtfAppIoRecord request, QtfAppIoRecord& answer) {
  return sendSplit(handle, kCodeAppIo, request, &answer);
}

vqsStatus send(HANDLE handle, QtfAppIoRecord request) {
  QtfAppIoRecord answer{};
  return exchange(handle, request, answer);
}

vqsStatus setInput(QtfSession* session, std::int32_t index, std::uint32_t value) {
  if (!isOpen(session) || index >= 3) return VQS_INVALID_PARAMETER;
  switch (index) {
    case VQS_APP_INPUT_A:
      return send(session->handle, {.operation = QTF_IO_SET_INPUT_A, .valueA = value, .valueB = 0});
    case VQS_APP_INPUT_B:
      return send(session->handle, {.operation = QTF_IO_SET_INPUT_B, .valueA = 0, .valueB = value});
    default:
      return VQS_INVALID_PARAMETER;
  }
}

vqsStatus getOutput(QtfSession* session, std::uint32_t* valueA, std::uint32_t* valueB) {
  if (!isOpen(session) || valueA == nullptr || valueB == nullptr) return VQS_INVALID_PARAMETER;
  QtfAppIoRecord answer{};
  const vqsStatus result =
      exchange(session->handle, {.operation = QTF_IO_GET_OUTPUT, .valueA = 0, .valueB = 0}, answer);
  if (result != VQS_SUCCESS) return result;
  *valueA = answer.valueA;
  *valueB = answer.valueB;
  return VQS_SUCCESS;
}

vqsStatus waitFor(HANDLE event, std::uint32_t milliseconds) {
  return WaitForSingleObject(event, milliseconds) == WAIT_OBJECT_0 ? vqsStatus{VQS_SUCCESS}
                                                                   : vqsStatus{VQS_REQUEST_FAILED};
}

/// Without the event the result is VQS_INVALID_PARAMETER (compatibility.md: wait-without-event). Each call opens the
/// event anew and leaves it open (compatibility.md: wait-event-handles).
vqsStatus waitForOutput(std::uint32_t milliseconds) {
  const HANDLE event = OpenEventW(SYNCHRONIZE, FALSE, kOutputEvent.data());
  return event == nullptr ? vqsStatus{VQS_INVALID_PARAMETER} : waitFor(event, milliseconds);
}

}  // namespace
}  // namespace vqs

vqsStatus VQS_CALL vqsSetAppInput(QtfSession* session, int32_t index, uint32_t value) {
  return vqs::setInput(session, index, value);
}

vqsStatus VQS_CALL vqsExSetAppInput(QtfSession* session, int32_t index, uint32_t value) {
  return vqs::folded(vqs::setInput(session, index, value));
}

vqsStatus VQS_CALL vqsSetAppInputs(QtfSession* session, uint32_t valueA, uint32_t valueB) {
  if (!vqs::isOpen(session)) return VQS_INVALID_PARAMETER;
  return vqs::send(session->handle, {.operation = vqs::QTF_IO_SET_INPUTS, .valueA = valueA, .valueB = valueB});
}

vqsStatus VQS_CALL vqsGetAppOutput(QtfSession* session, uint32_t* valueA, uint32_t* valueB) {
  return vqs::getOutput(session, valueA, valueB);
}

vqsStatus VQS_CALL vqsExGetAppOutput(QtfSession* session, uint32_t* valueA, uint32_t* valueB) {
  return vqs::folded(vqs::getOutput(session, valueA, valueB));
}

vqsStatus VQS_CALL vqsWaitAppOutput(QtfSession* session, uint32_t milliseconds) {
  return vqs::isOpen(session) ? vqs::waitForOutput(milliseconds) : vqsStatus{VQS_INVALID_PARAMETER};
}

vqsStatus VQS_CALL vqsWaitTaskbarIcon(QtfSession* session, void* event, uint32_t milliseconds) {
  // The session is checked and not used (compatibility.md: wait-icon-session).
  if (!vqs::isOpen(session) || event == nullptr) return VQS_INVALID_PARAMETER;
  return vqs::waitFor(event, milliseconds);
}
