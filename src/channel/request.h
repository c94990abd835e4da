// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <type_traits>

#include <vqs/status.h>
#include "src/channel/windows_api.h"

namespace vqs {

/// A record of the wire: its size is the length that travels.
template <class T>
concept WireRecord = std::is_trivially_copyable_v<T> && std::is_standard_layout_v<T> && !std::is_pointer_v<T>;

/// What a request writes and where the answer goes.
struct RequestBuffers {
  std::span<std::byte> request;
  void* answer = nullptr;
  std::size_t answerLength = 0;
};

/// The one place where a request leaves: VQS_SUCCESS, or VQS_REQUEST_FAILED when the driver refuses it. `returned`
/// receives the driver's byte count; a few requests are sent without one.
vqsStatus sendRequest(HANDLE handle, std::uint32_t code, const RequestBuffers& buffers, DWORD* returned);

inline vqsStatus sendCounted(HANDLE handle, std::uint32_t code, const RequestBuffers& buffers) {
  DWORD returned = 0;
  return sendRequest(handle, code, buffers, &returned);
}

template <WireRecord Record>
std::span<std::byte> bytesOf(Record& record) {
  return std::as_writable_bytes(std::span{&record, 1});
}

/// One buffer is request and answer; its length is computed per call.
inline vqsStatus sendSame(HANDLE handle, std::uint32_t code, std::span<std::byte> record) {
  return sendCounted(handle, code, {record, record.data(), record.size()});
}

/// One record is request and answer.
template <WireRecord Record>
vqsStatus sendSame(HANDLE handle, std::uint32_t code, Record& record) {
  return sendSame(handle, code, bytesOf(record));
}

/// A request record goes in, a separate answer record comes out.
template <WireRecord Request, WireRecord Answer>
vqsStatus sendSplit(HANDLE handle, std::uint32_t code, Request& request, Answer* answer) {
  return sendCounted(handle, code, {bytesOf(request), answer, sizeof(Answer)});
}

/// A request record goes in, the answer goes straight into the caller's buffer.
template <WireRecord Request>
vqsStatus sendSplit(HANDLE handle, std::uint32_t code, Request& request, void* answer, std::size_t answerLength) {
  return sendCounted(handle, code, {bytesOf(request), answer, answerLength});
}

/// A request record goes in, nothing comes out.
template <WireRecord Request>
vqsStatus sendIn(HANDLE handle, std::uint32_t code, Request& request) {
  return sendCounted(handle, code, {.request = bytesOf(request)});
}

/// Nothing goes in, the answer goes straight into the caller's buffer.
inline vqsStatus sendOut(HANDLE handle, std::uint32_t code, void* answer, std::size_t answerLength) {
  return sendCounted(handle, code, {.request = {}, .answer = answer, .answerLength = answerLength});
}

}  // namespace vqs
