// SPDX-License-Identifier: Apache-2.0
#include "channel/request.h"

#include <limits>

namespace vqs {

vqsStatus sendRequest(HANDLE handle, std::uint32_t code, std::span<std::byte> request, void* answer,
                      std::size_t answerLength) {
  constexpr std::size_t kLongest = std::numeric_limits<DWORD>::max();
  if (request.size() > kLongest || answerLength > kLongest) return VQS_REQUEST_FAILED;
  DWORD returned = 0;
  const BOOL done = DeviceIoControl(handle, code, request.data(), static_cast<DWORD>(request.size()), answer,
                                    static_cast<DWORD>(answerLength), &returned, nullptr);
  return done ? VQS_SUCCESS : VQS_REQUEST_FAILED;
}

}  // namespace vqs
