// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <type_traits>

#include "channel/windows_api.h"
#include "vqs/status.h"

namespace vqs {

/// A record of the wire: its size is the length that travels.
template <class T>
concept WireRecord = std::is_trivially_copyable_v<T> && std::is_standard_layout_v<T> && !std::is_pointer_v<T>;

/// The one place where a request leaves: VQS_SUCCESS, or VQS_REQUEST_FAILED when the driver refuses it.
vqsStatus sendRequest(HANDLE handle, std::uint32_t code, std::span<std::byte> request, void* answer,
                      std::size_t answerLength);

/// One buffer is request and answer; its length is computed per call.
inline vqsStatus sendSame(HANDLE handle, std::uint32_t code, std::span<std::byte> record) {
  return sendRequest(handle, code, record, record.data(), record.size());
}

/// One record is request and answer.
template <WireRecord Record>
vqsStatus sendSame(HANDLE handle, std::uint32_t code, Record& record) {
  return sendSame(handle, code, std::as_writable_bytes(std::span{&record, 1}));
}

/// A request record goes in, a separate answer record comes out.
template <WireRecord Request, WireRecord Answer>
vqsStatus sendSplit(HANDLE handle, std::uint32_t code, Request& request, Answer* answer) {
  return sendRequest(handle, code, std::as_writable_bytes(std::span{&request, 1}), answer, sizeof(Answer));
}

}  // namespace vqs
