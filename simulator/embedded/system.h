// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "simulator/embedded/reason.h"

/// What the simulated driver needs of the operating system that its process runs on: system_posix.cpp and
/// system_windows.cpp hold the same functions. None of them throws, and no object of theirs is destroyed at the end of
/// a process, when others may still use the driver.
namespace simulator::system {

/// Keeps this code in the process until its end: a program that unloads the library leaves handles, files and a thread
/// behind.
void stayLoaded();

/// Milliseconds since 1970.
std::uint64_t milliseconds();

/// Tells this process from others, such as those that were forked from it.
std::uint32_t processId();

/// Copies from the process's own memory; false when any byte of it cannot be read.
bool readMemory(std::uint64_t address, std::span<std::byte> destination);

/// A variable of the environment as UTF-8; empty when it is not set, and when it comes from a caller who has fewer
/// rights than the program. False when it is longer than the room for it.
bool environment(const char* name, std::span<char> value);

/// Writes to standard error.
void writeError(const char* text);

/// "what: the system's reason" for the call that has just failed.
Reason failure(const char* what);

/// The named event that tells of changed application outputs.
void createOutputEvent();
void removeOutputEvent();
void setOutputEvent(bool signalled);

/// Keeps the event behind a handle of a client; 0 when there is none.
std::uint64_t retainEvent(std::uint64_t handle);
void releaseEvent(std::uint64_t event);
void signalEvent(std::uint64_t event);

/// Calls a function once a second, on a thread of its own.
class Metronome {
 public:
  using Work = void (*)(void* context);

  /// False when the system has no thread to give.
  bool start(Work work, void* context);
  /// Waits until the thread has ended. The caller must hold no lock that its work takes.
  void stop();
  [[nodiscard]] bool isRunning() const { return isRunning_; }

 private:
  alignas(8) std::byte state_[128] = {};
  Work work_ = nullptr;
  void* context_ = nullptr;
  bool isRunning_ = false;

  friend struct MetronomeThread;
};

}  // namespace simulator::system
