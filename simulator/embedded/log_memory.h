// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "simulator/embedded/descriptor.h"
#include "simulator/model/surroundings.h"

namespace simulator {

/// Memory of the log areas: written through one view, and handed out as views that can only be read.
class LogMemory {
 public:
  LogMemory() = default;
  ~LogMemory();
  LogMemory(LogMemory&&) = delete;

  /// The view to write to, made at its first use; empty when there is no memory.
  std::span<std::byte> area(LogKind kind);
  /// One more view to read from, or 0.
  std::uint64_t map(LogKind kind);
  static void unmap(LogKind kind, std::uint64_t address);

 private:
  struct Area {
    Descriptor file{-1};
    std::byte* view = nullptr;
  };

  std::array<Area, kLogKinds> areas_;
};

}  // namespace simulator
