// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vqs/status.h>
#include "src/channel/windows_api.h"

namespace vqs {

/// Finds the driver through its device interface class and opens the first device of it. VQS_SUCCESS,
/// VQS_REQUEST_FAILED, VQS_OUT_OF_MEMORY or VQS_DRIVER_NOT_FOUND; the handle is written on success only.
vqsStatus openDriver(HANDLE* handle);

}  // namespace vqs
