// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "simulator/model/surroundings.h"

namespace simulator {

/// Memory of the log areas: written through one view, and handed out as views that can only be read.
/// log_memory_posix.cpp and log_memory_windows.cpp hold the same functions.
class LogMemory {
 public:
  LogMemory() = default;
  ~LogMemory();
  LogMemory(LogMemory&&) = delete;

  /// The view to write to, made at its first use; empty when there is no memory.
  std::span<std::byte> area(LogKind kind);
  /// One more view of an area that has been made, or 0.
  std::uint64_t map(LogKind kind);
  static void unmap(LogKind kind, std::uint64_t address);

 private:
  struct Area {
    /// the system's name of the memory, while there is a view
    std::intptr_t memory;
    std::byte* view;
    /// the process that made it, where there are forks: one that is forked from it makes its own
    std::uint32_t process = 0;
  };

  static void release(Area& area, LogKind kind);

  Area areas_[kLogKinds] = {};
};

}  // namespace simulator
