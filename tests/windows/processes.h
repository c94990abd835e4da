// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

namespace test {

/// One case of this test program, running as a process of its own.
class RunningCase {
 public:
  explicit RunningCase(const std::string& name);
  ~RunningCase();
  RunningCase(RunningCase&&) = delete;

  /// Waits for its end; its exit code.
  std::uint32_t wait();
  /// Ends it, whatever it is at.
  void kill();

 private:
  PROCESS_INFORMATION process_;
};

/// The folder of this program, without a slash behind it.
std::string programFolder();

/// Runs another program to its end, with what it says on this program's output; returns its exit code.
std::uint32_t runProgram(const std::string& program, const std::string& arguments);

/// Runs a case to its end; returns its exit code.
std::uint32_t runCase(const std::string& name);

/// A process that does nothing, until the end of its scope.
class IdleProcess {
 public:
  IdleProcess();
  ~IdleProcess() { end(); }
  IdleProcess(IdleProcess&&) = delete;

  [[nodiscard]] HANDLE handle() const { return process_.hProcess; }
  void end();

 private:
  PROCESS_INFORMATION process_{};
};

}  // namespace test
