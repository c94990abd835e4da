// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace simulator {

enum class LogKind : std::uint32_t { kPlain = 0, kEx = 1, kKeyValue = 2, kExKeyValue = 3 };

inline constexpr std::size_t kLogKinds = 4;

/// Bytes of a log area of each kind: whole pages.
inline constexpr std::size_t kLogAreaSize[kLogKinds] = {4096, 4096, 16384, 4096};

/// What the driver asks of the system that it runs in. It is called during calls of the driver only, on the thread of
/// the request, and so knows whose request it is.
class Surroundings {
 public:
  /// Milliseconds of a clock. It may stand still and it may jump.
  virtual std::uint64_t now() = 0;

  /// Names the calling process.
  virtual std::uint64_t process() = 0;

  /// The driver's own view of a log area, zeroed at first; empty when there is no memory for it.
  virtual std::span<std::byte> logArea(LogKind kind) = 0;
  /// Maps a log area once more into the calling process, to be read there; the address, or 0.
  virtual std::uint64_t mapLog(LogKind kind) = 0;
  /// Takes back a mapping that mapLog made in that process.
  virtual void unmapLog(LogKind kind, std::uint64_t process, std::uint64_t address) = 0;

  /// Copies from the calling process's memory; false when any byte of it cannot be read.
  virtual bool readCaller(std::uint64_t address, std::span<std::byte> destination) = 0;

  /// Sets or resets the event that tells of changed application outputs.
  virtual void setOutputEvent(bool signalled) = 0;

  /// Keeps the event object behind a handle of the calling process; 0 when there is none. Released once.
  virtual std::uint64_t retainEvent(std::uint64_t handle) = 0;
  virtual void releaseEvent(std::uint64_t event) = 0;
  virtual void signalEvent(std::uint64_t event) = 0;

 protected:
  ~Surroundings() = default;
};

}  // namespace simulator
