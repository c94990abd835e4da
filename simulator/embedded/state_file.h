// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "simulator/embedded/reason.h"

namespace simulator {

/// An open file, which one process at a time can open in this way, and its mapping into memory: what is written there
/// reaches the file even if the process is killed. state_file_posix.cpp and state_file_windows.cpp hold the same
/// functions.
class StateFile {
 public:
  StateFile() = default;
  ~StateFile() { close(); }
  StateFile(StateFile&&) = delete;

  /// Opens a file, made if need be, for the owner alone, and waits for other processes to close it. Links are followed.
  Reason open(const char* path, std::uint32_t longestWait);
  void close();
  [[nodiscard]] bool isOpen() const { return file_ != kNone; }

  [[nodiscard]] std::uint64_t length() const { return length_; }
  /// Copies from the beginning of the file, which has as many bytes.
  Reason read(std::span<std::byte> content) const;

  /// Brings the first bytes of the file into memory. A file that is shorter grows, by zeros.
  Reason map(std::size_t size);
  [[nodiscard]] std::span<std::byte> memory() const { return {memory_, size_}; }

  /// Gives the path of an open file new content in one step: it has the old or the new. The file is closed.
  Reason replace(const char* path, std::span<const std::byte> content);

 private:
  static constexpr std::intptr_t kNone = -1;

  /// the system's name of the open file
  std::intptr_t file_ = kNone;
  std::uint64_t length_ = 0;
  std::byte* memory_ = nullptr;
  std::size_t size_ = 0;
};

}  // namespace simulator
