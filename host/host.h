// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "host/device.h"
#include "host/events.h"
#include "host/file_versions.h"
#include "host/windows_api.h"

/// What stands behind the Windows API functions: devices, file versions, and a way to watch and refuse every call.
namespace host {

/// Signals the event behind an open handle; nothing happens when it is not one.
void signalHandle(HANDLE event);

/// Sees every call of this API before it is carried out, as text ("HeapAlloc(0, 3972)"); false makes it fail in the
/// manner of that function. HeapFree and CloseHandle are seen, and carried out in any case.
using CallHook = std::function<bool(std::string_view call)>;
void setCallHook(CallHook hook);

/// What happens when a bounded text function meets a condition that the Windows runtime punishes. As there, the
/// default ends the process; a handler that returns lets the function return its error.
using InvalidParameterHandler = void (*)();
InvalidParameterHandler setInvalidParameterHandler(InvalidParameterHandler handler);
/// Lets the library find that handler as one of the program's own, as on Windows. At first it finds none: other systems
/// have no such handlers.
void showInvalidParameterHandler(bool shown);

}  // namespace host
