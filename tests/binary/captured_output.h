// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <unistd.h>

#include <array>
#include <cstdio>
#include <string>

namespace test {

inline constexpr char kNotFullyRead[] = "File not fully read...\n";

/// What is printed on standard output meanwhile, a few lines at most. Unlike the test framework's own capture it makes
/// no runtime call that Faults counts.
class CapturedOutput {
 public:
  CapturedOutput() : before_(dup(STDOUT_FILENO)) {
    std::fflush(stdout);
    if (pipe(ends_.data()) != 0) std::perror("pipe");
    dup2(ends_[1], STDOUT_FILENO);
    close(ends_[1]);
  }
  ~CapturedOutput() {
    restore();
    close(ends_[0]);
  }
  CapturedOutput(const CapturedOutput&) = delete;
  CapturedOutput& operator=(const CapturedOutput&) = delete;

  /// Ends the capture.
  std::string text() {
    restore();
    std::string result;
    std::array<char, 256> part{};
    for (ssize_t size = 0; (size = ::read(ends_[0], part.data(), part.size())) > 0;)
      result.append(part.data(), static_cast<std::size_t>(size));
    return result;
  }

 private:
  void restore() {
    if (before_ < 0) return;
    std::fflush(stdout);
    dup2(before_, STDOUT_FILENO);
    close(before_);
    before_ = -1;
  }

  int before_;
  std::array<int, 2> ends_{};
};

}  // namespace test
