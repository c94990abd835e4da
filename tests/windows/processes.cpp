// SPDX-License-Identifier: Apache-2.0
#include "windows/processes.h"

#include <gtest/gtest.h>
#include <windows.h>

namespace test {
namespace {

/// This program once more.
PROCESS_INFORMATION start(const std::string& arguments, DWORD flags) {
  char program[MAX_PATH] = {};
  GetModuleFileNameA(nullptr, program, MAX_PATH);
  std::string command = "\"" + std::string{program} + "\" " + arguments;
  STARTUPINFOA startup{};
  startup.cb = sizeof(startup);
  PROCESS_INFORMATION process{};
  if (!CreateProcessA(program, command.data(), nullptr, nullptr, TRUE, flags, nullptr, nullptr, &startup, &process))
    ADD_FAILURE() << "the process was not started: " << GetLastError();
  return process;
}

void close(const PROCESS_INFORMATION& process) {
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
}

}  // namespace

RunningCase::RunningCase(const std::string& name) : process_(start("--gtest_filter=" + name, 0)) {}

RunningCase::~RunningCase() { close(process_); }

std::uint32_t RunningCase::wait() {
  DWORD exitCode = ~0U;
  EXPECT_EQ(WaitForSingleObject(process_.hProcess, 60'000), WAIT_OBJECT_0);
  GetExitCodeProcess(process_.hProcess, &exitCode);
  return exitCode;
}

void RunningCase::kill() {
  EXPECT_TRUE(TerminateProcess(process_.hProcess, 0));
  wait();
}

std::uint32_t runCase(const std::string& name) { return RunningCase{name}.wait(); }

IdleProcess::IdleProcess() : process_(start("", CREATE_SUSPENDED)) {}

void IdleProcess::end() {
  if (process_.hProcess == nullptr) return;
  TerminateProcess(process_.hProcess, 0);
  WaitForSingleObject(process_.hProcess, 60'000);
  close(process_);
  process_ = {};
}

}  // namespace test
