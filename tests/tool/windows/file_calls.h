// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <windows.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace test {

/// Stands between the code under test and what Windows does with files: sees every call, and makes calls fail that this
/// system would do.
class FileCalls {
 public:
  FileCalls();
  ~FileCalls();
  FileCalls(const FileCalls&) = delete;
  FileCalls& operator=(const FileCalls&) = delete;

  /// Makes a function fail. What it has done by then, if anything, it does before.
  void fail(const std::string& function, DWORD error, std::function<void()> before = [] {});
  /// The attributes of a path, and where opening it leads to, as if a symbolic link were there.
  void makeLink(const std::wstring& path, const std::wstring& target);

  /// "function path", or "function from > to", in order.
  std::vector<std::wstring> seen;

  struct Failure {
    DWORD error;
    std::function<void()> before;
  };
  std::map<std::string, Failure> failures;
  std::map<std::wstring, std::wstring> links;
};

}  // namespace test
