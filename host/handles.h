// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "host/windows_api.h"

namespace host {

/// One that there has not been, higher than all before.
HANDLE newHandle();

/// Closes an event's handle; false when it is none.
bool closeEvent(HANDLE handle);

}  // namespace host
