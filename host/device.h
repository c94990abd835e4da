// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

#include "host/types.h"

namespace host {

/// One DeviceIoControl call.
struct DeviceRequest {
  DWORD code;
  void* input;
  DWORD inputLength;
  void* output;
  DWORD outputLength;
  DWORD* returned;
  OVERLAPPED* overlapped;
};

/// The call as a driver sees it: for a null buffer the length is 0, as the I/O manager of Windows has it for buffered
/// codes.
constexpr DeviceRequest asDriversSeeIt(DeviceRequest request) {
  constexpr DWORD kTransferMethod = 3;
  if ((request.code & kTransferMethod) != 0) return request;
  if (request.input == nullptr) request.inputLength = 0;
  if (request.output == nullptr) request.outputLength = 0;
  return request;
}

/// A device that can be opened and that answers requests. Called with no lock held, from any thread.
class Device {
 public:
  /// Opens the device once more; `handle` names this opening until close. False makes the open fail.
  virtual bool open(HANDLE handle) = 0;
  /// Carries out one request, as drivers see it; false makes it fail.
  virtual bool control(HANDLE handle, const DeviceRequest& request) = 0;
  virtual void close(HANDLE handle) = 0;

 protected:
  ~Device() = default;
};

/// Makes a device present under an interface class and a path. It must outlive its attachment. False when there is no
/// room for it, or for the path. On Windows these devices are seen by the simulated library only.
bool attachDevice(Device& device, const GUID& interfaceClass, std::basic_string_view<WCHAR> path);
/// Removes a device. Handles still open on it fail from then on.
void detachDevice(const Device& device);

}  // namespace host
