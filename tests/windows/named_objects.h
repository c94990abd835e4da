// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <windows.h>

#include "tests/support/bytes.h"

namespace test {

/// A handle that ends with its scope.
class OwnedHandle {
 public:
  explicit OwnedHandle(HANDLE handle) : handle_(handle) {}
  ~OwnedHandle() { close(); }
  OwnedHandle(OwnedHandle&&) = delete;
  explicit operator bool() const { return handle_ != nullptr; }
  [[nodiscard]] HANDLE get() const { return handle_; }
  void close();

 private:
  HANDLE handle_;
};

/// Makes a folder of the system's names, which is gone with its last handle; nullptr on failure.
HANDLE createFolder(const wchar_t* path);
/// Opens an event by its full name; nullptr when there is none or it may not be opened so.
HANDLE openEvent(const wchar_t* path, DWORD access);
/// The owner of an object, and the entries of its access list one after the other.
Bytes ownerOf(HANDLE object);
Bytes accessListOf(HANDLE object);

}  // namespace test
