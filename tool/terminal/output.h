// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "tool/system/output_file.h"
#include "tool/system/paths.h"

namespace tool {

/// Where a command's text goes: to standard output at once, or into a file that is there when the command has
/// succeeded.
class Output {
 public:
  /// A file instead of standard output; "-" is standard output.
  void useFile(const std::string& path);
  /// The file's path, or "-".
  [[nodiscard]] std::string path() const { return path_.value_or("-"); }
  [[nodiscard]] bool isFile() const { return path_.has_value(); }

  /// Throws a Failure when not all of the text gets there.
  void write(std::string_view text);
  /// Puts the file, if there is one, in its place.
  void finish();

 private:
  std::optional<std::string> path_;
  std::optional<OutputFile> target_;
  File file_;
};

/// Writes printable lines on standard error, beside what a command puts out.
void writeRemarks(std::string_view lines);

/// Writes the one line on standard error: "vqs: " and the message, whatever the message holds.
void writeError(std::string_view message);

}  // namespace tool
