// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "tool/system/paths.h"

namespace tool {

/// A file, or standard input, that is read from its start.
class InputFile {
 public:
  /// Throws a Failure with the reason when it is not a regular file or cannot be opened.
  explicit InputFile(const std::string& path);
  static InputFile standardInput();

  /// Adds what follows, until there are so many bytes or the file ends. Throws a Failure with the reason.
  void readUpTo(std::uint64_t size, std::vector<std::byte>& bytes);

 private:
  InputFile() = default;

  std::string path_;
  /// empty for standard input
  File file_;
};

}  // namespace tool
