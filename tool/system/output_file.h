// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "tool/system/paths.h"

namespace tool {

/// A file that is written beside its target and takes the target's place when it is complete. Until then, and when
/// anything fails, an existing target stays as it is.
class OutputFile {
 public:
  /// Throws a Failure when the target is not a file or its directory cannot be written.
  explicit OutputFile(const std::string& target);
  ~OutputFile();
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  /// Where to write.
  [[nodiscard]] const std::string& path() const { return path_; }

  /// The file, to write to it. Throws a Failure.
  [[nodiscard]] File open() const;

  /// Throws a Failure with the system's reason when the file cannot take one byte more: whoever wrote it may not have
  /// got all of it in.
  void requireSpace() const;

  /// Puts the file in the target's place.
  void commit();

 private:
  std::string target_;
  std::string path_;
};

}  // namespace tool
