// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <windows.h>

#include <stdexcept>
#include <string>

namespace setup {

/// What went wrong, as one line for the user.
class Failure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

std::string narrow(const std::wstring& wide);
std::wstring widen(const std::string& utf8);

/// A Failure of "what: the system's reason", for an error of the system or of its setup functions.
[[noreturn]] void fail(const std::string& what, DWORD error = GetLastError());

/// Fails unless the call before it went well.
inline void require(bool succeeded, const std::string& what) {
  if (!succeeded) fail(what);
}

}  // namespace setup
