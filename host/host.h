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

/// What the Windows API functions of windows_api.h work on: devices, events and file versions; and a way for tests to
/// watch every call and make it fail.
namespace host {

/// Signals the event behind an open handle; nothing happens when it is not one.
void signalHandle(HANDLE event);

/// Is given the text of every call of this API before it is carried out ("HeapAlloc(0, 3972)"). When it returns false,
/// the call fails as that function fails; HeapFree and CloseHandle are carried out in any case.
using CallHook = std::function<bool(std::string_view call)>;
void setCallHook(CallHook hook);

/// What the bounded text functions call for an invalid parameter, such as a text that does not fit. As in the Windows C
/// runtime, the default ends the process, and a handler that returns lets the function return its error.
using InvalidParameterHandler = void (*)();
InvalidParameterHandler setInvalidParameterHandler(InvalidParameterHandler handler);
/// Whether the library finds that handler when it asks for the program's, as on Windows. Until this is called it finds
/// none: other systems have no such handlers.
void showInvalidParameterHandler(bool shown);

}  // namespace host
