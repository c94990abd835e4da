// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <string>

namespace test {

/// How a program ended, and what it wrote.
struct Ended {
  /// its exit code, or minus the signal that ended it
  int status;
  std::string output;
};

/// Runs a program, given as a shell would take it, and waits for its end.
inline Ended run(const std::string& command) {
  Ended ended{-1000, {}};
  std::FILE* const pipe = popen(("exec " + command + " 2>&1").c_str(), "r");
  EXPECT_NE(pipe, nullptr);
  if (pipe == nullptr) return ended;
  std::array<char, 256> part{};
  while (std::fgets(part.data(), part.size(), pipe) != nullptr) ended.output += part.data();
  const int status = pclose(pipe);
  ended.status = WIFSIGNALED(status) ? -WTERMSIG(status) : WEXITSTATUS(status);
  return ended;
}

/// The same, with a state file for the simulated driver.
inline Ended runOn(const std::string& stateFile, const std::string& command) {
  return run("env VEXOQTF_SIMULATOR_STATE=" + stateFile + " " + command);
}

}  // namespace test
