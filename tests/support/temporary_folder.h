// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "tests/support/bytes.h"

namespace test {

/// A folder of the test's own, removed with everything in it.
class TemporaryFolder {
 public:
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  [[nodiscard]] std::string path(std::string_view name) const { return (folder_ / name).string(); }
  /// Writes a file and returns its path.
  std::string write(std::string_view name, const Bytes& content) const;

 private:
  std::filesystem::path folder_;
};

/// A whole file; a file that cannot be read fails the test and reads as empty.
Bytes readFile(const std::string& path);

bool fileExists(const std::string& path);

/// A file of examples/policies, made without this library.
std::string samplePath(std::string_view name);
Bytes sample(std::string_view name);

}  // namespace test
