// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "host/windows_api.h"

/// What stands behind the Windows API functions: devices, file versions, and a way to watch and refuse every call.
namespace host {

/// One DeviceIoControl call, as the caller made it; where a buffered code comes with a null buffer, its length is 0, as
/// Windows hands it to drivers.
struct DeviceRequest {
  DWORD code;
  void* input;
  DWORD inputLength;
  void* output;
  DWORD outputLength;
  DWORD* returned;
  OVERLAPPED* overlapped;
};

/// A device that can be opened and that answers requests. Called with no lock held, from any thread.
class Device {
 public:
  virtual ~Device() = default;
  /// Opens the device once more; `handle` names this opening until close. False makes the open fail.
  virtual bool open(HANDLE handle) = 0;
  /// Carries out one request; false makes it fail.
  virtual bool control(HANDLE handle, const DeviceRequest& request) = 0;
  virtual void close(HANDLE handle) = 0;
};

/// Makes a device present under an interface class and a path. It must outlive its attachment.
void attachDevice(Device& device, const GUID& interfaceClass, std::u16string path);
/// Removes a device. Handles still open on it fail from then on.
void detachDevice(const Device& device);

/// Makes a named event present, or makes it gone; handles on it live on. Names are compared letter for letter.
void createEvent(std::u16string name);
void removeEvent(std::u16string_view name);
/// Signals a named event, if it is present: every waiter wakes, and the event stays signalled until it is reset.
void signalEvent(std::u16string_view name);
void resetEvent(std::u16string_view name);
/// The same for the event behind an open handle; nothing happens when it is not one.
void signalHandle(HANDLE event);

/// Publishes the version of a file, as its version resource would.
void setFileVersion(std::string name, const VS_FIXEDFILEINFO& version);
void removeFileVersion(std::string_view name);

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
