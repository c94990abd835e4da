// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

#include "host/types.h"

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
  /// Opens the device once more; `handle` names this opening until close. False makes the open fail.
  virtual bool open(HANDLE handle) = 0;
  /// Carries out one request; false makes it fail.
  virtual bool control(HANDLE handle, const DeviceRequest& request) = 0;
  virtual void close(HANDLE handle) = 0;

 protected:
  ~Device() = default;
};

/// Makes a device present under an interface class and a path. It must outlive its attachment. False when there is no
/// room for it, or for the path.
bool attachDevice(Device& device, const GUID& interfaceClass, std::basic_string_view<WCHAR> path);
/// Removes a device. Handles still open on it fail from then on.
void detachDevice(const Device& device);

}  // namespace host
