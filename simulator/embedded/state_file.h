// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <span>
#include <vector>

#include "simulator/embedded/descriptor.h"

namespace simulator {

/// A state file, locked against every other holder of the same file for as long as the object lives.
/// All members throw StateError.
class StateFile {
 public:
  /// Waits for the lock, which lies beside the file as "<file>.lock". Refuses a file that could not be replaced later.
  StateFile(const std::filesystem::path& path, std::chrono::milliseconds lockTimeout);

  /// The file's content, at most as much as an image can be long; nothing when there is no file.
  [[nodiscard]] std::optional<std::vector<std::byte>> read() const;

  /// Replaces the file in one step: whatever goes wrong, it has its old content or the new one.
  void replace(std::span<const std::byte> content) const;

 private:
  /// Absolute and free of links: later changes of the working directory mean nothing, and a link keeps its target.
  std::filesystem::path path_;
  Descriptor lock_;
};

}  // namespace simulator
