// SPDX-License-Identifier: Apache-2.0
#include "tests/windows/processes.h"

#include <gtest/gtest.h>
#include <windows.h>

namespace test {
namespace {

std::string thisProgram() {
  char program[MAX_PATH] = {};
  GetModuleFileNameA(nullptr, program, MAX_PATH);
  return program;
}

PROCESS_INFORMATION start(const std::string& program, const std::string& arguments, DWORD flags) {
  std::string command = "\"" + program + "\" " + arguments;
  STARTUPINFOA startup{};
  startup.cb = sizeof(startup);
  PROCESS_INFORMATION process{};
  if (!CreateProcessA(program.c_str(), command.data(), nullptr, nullptr, TRUE, flags, nullptr, nullptr, &startup,
                      &process))
    ADD_FAILURE() << "the process was not started: " << program << ", " << GetLastError();
  return process;
}

std::uint32_t waitForEnd(HANDLE process) {
  DWORD exitCode = ~0U;
  EXPECT_EQ(WaitForSingleObject(process, 60'000), WAIT_OBJECT_0);
  GetExitCodeProcess(process, &exitCode);
  return exitCode;
}

void close(const PROCESS_INFORMATION& process) {
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
}

}  // namespace

RunningCase::RunningCase(const std::string& name) : process_(start(thisProgram(), "--gtest_filter=" + name, 0)) {}

RunningCase::~RunningCase() { close(process_); }

std::uint32_t RunningCase::wait() { return waitForEnd(process_.hProcess); }

void RunningCase::kill() {
  EXPECT_TRUE(TerminateProcess(process_.hProcess, 0));
  wait();
}

std::string programFolder() {
  const std::string program = thisProgram();
  return program.substr(0, program.rfind('\\'));
}

std::uint32_t runProgram(const std::string& program, const std::string& arguments) {
  const PROCESS_INFORMATION process = start(program, arguments, 0);
  const std::uint32_t exitCode = waitForEnd(process.hProcess);
  close(process);
  return exitCode;
}

std::uint32_t runCase(const std::string& name) { return RunningCase{name}.wait(); }

IdleProcess::IdleProcess() : process_(start(thisProgram(), "", CREATE_SUSPENDED)) {}

void IdleProcess::end() {
  if (process_.hProcess == nullptr) return;
  TerminateProcess(process_.hProcess, 0);
  WaitForSingleObject(process_.hProcess, 60'000);
  close(process_);
  process_ = {};
}

}  // namespace test
