// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/device/kernel.h"
#include "simulator/model/surroundings.h"

namespace device {

/// The memory of the logs: one section a kind, which the driver writes and callers' processes read. An object of zero
/// bytes has none yet.
class LogAreas {
 public:
  /// The driver's view, valid in every process; empty when there is no memory for it.
  std::span<std::byte> own(simulator::LogKind kind);

  /// Maps an area once more into the calling process; the address, or 0.
  std::uint64_t map(simulator::LogKind kind);
  /// Takes back what map gave that process, from whichever process this is called.
  void unmap(std::uint64_t process, std::uint64_t address);

  /// Takes back everything.
  void release();

 private:
  struct Area {
    HANDLE section;
    void* view;
  };
  struct Mapping {
    Mapping* next;
    std::uint64_t process;
    HANDLE handle;
    void* address;
  };

  static NTSTATUS create(Area& area, std::size_t size);
  static void destroy(Area& area);
  static void destroy(Mapping* mapping);

  Area areas_[simulator::kLogKinds];
  Mapping* mappings_;
};

}  // namespace device
