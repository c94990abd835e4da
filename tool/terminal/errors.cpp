// SPDX-License-Identifier: Apache-2.0
#include "tool/terminal/errors.h"

#include <fmt/format.h>

#include <system_error>

namespace tool {

std::string describe(vqsStatus status) {
  switch (status) {
    case VQS_SUCCESS:
      return "done";
    case VQS_REQUEST_FAILED:
      return "the driver refused the request";
    case VQS_INVALID_PARAMETER:
      return "the library refused the arguments";
    case VQS_OUT_OF_MEMORY:
      return "not enough memory";
    case VQS_DRIVER_NOT_FOUND:
      return "the driver is not loaded";
    case VQS_NOT_SUPPORTED:
      return "the library does not support this";
    case VQS_VERSION_MISMATCH:
      return "the driver answers with a data version that this library does not know";
    default:
      return fmt::format("the library answered {}", status);
  }
}

void require(vqsStatus status, const std::string& what) {
  if (status == VQS_SUCCESS) return;
  const std::string message = what + ": " + describe(status);
  if (status == VQS_DRIVER_NOT_FOUND || status == VQS_VERSION_MISMATCH) throw NoDriver{message};
  throw Failure{message};
}

std::string systemMessage(int error) { return std::generic_category().message(error); }

}  // namespace tool
