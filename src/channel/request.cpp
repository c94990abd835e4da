// SPDX-License-Identifier: Apache-2.0
#include "src/channel/request.h"

#include <limits>

namespace vqs {

vqsStatus sendRequest(HANDLE handle, std::uint32_t code, const RequestBuffers& buffers, DWORD* returned) {
  constexpr std::size_t kLongest = std::numeric_limits<DWORD>::max();
  if (buffers.request.size() > kLongest || buffers.answerLength > kLongest) return VQS_REQUEST_FAILED;
  const BOOL done = DeviceIoControl(handle, code, buffers.request.data(), static_cast<DWORD>(buffers.request.size()),
                                    buffers.answer, static_cast<DWORD>(buffers.answerLength), returned, nullptr);
  return done ? VQS_SUCCESS : VQS_REQUEST_FAILED;
}

}  // namespace vqs
