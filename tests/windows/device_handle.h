// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <windows.h>

#include "tests/support/bytes.h"

namespace test {

/// An open handle on the driver's device, for requests that the library would never send.
class DeviceHandle {
 public:
  DeviceHandle();
  ~DeviceHandle() { close(); }
  DeviceHandle(DeviceHandle&&) = delete;

  void close();
  /// Closes the handle and leaves one of the same file to another process.
  void moveTo(HANDLE process);

  struct Answer {
    /// 0 for success, or the system's error
    DWORD error;
    /// the whole output, 0xA5 where nothing was written
    Bytes output;
    DWORD returned;
  };
  Answer request(DWORD code, const Bytes& input, DWORD outputLength) const;

 private:
  HANDLE handle_;
};

}  // namespace test
