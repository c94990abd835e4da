// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tool {

/// What a command is given to read, and how messages call it.
struct Input {
  std::string name;
  /// as typed; "-" is standard input
  std::string path;
  std::vector<std::byte> bytes;

  [[nodiscard]] bool isStandardInput() const { return path == "-"; }
  [[nodiscard]] std::string_view text() const { return {reinterpret_cast<const char*>(bytes.data()), bytes.size()}; }
};

/// Reads a file, or standard input for "-". Throws a Failure with the reason, also for files of a size that nothing
/// about policies has.
Input readInput(const std::string& path);

/// Reads all of them. Throws a UsageError when standard input is among them twice.
std::vector<Input> readInputs(const std::vector<std::string>& paths);

/// Throws a UsageError when a file that is to be written is the one that was read: it would be lost.
void requireAnotherFile(const Input& input, const std::string& output);

}  // namespace tool
