// SPDX-License-Identifier: Apache-2.0
#include "src/channel/map_status.h"

namespace vqs {

vqsStatus mapStatus(std::int32_t result) {
  switch (result) {
    case VQS_SUCCESS:
    case VQS_REQUEST_FAILED:
    case VQS_INVALID_PARAMETER:
    case VQS_OUT_OF_MEMORY:
    case VQS_DRIVER_NOT_FOUND:
    case VQS_VERSION_MISMATCH:
      return static_cast<vqsStatus>(result);
    default:
      return VQS_NOT_SUPPORTED;
  }
}

}  // namespace vqs
