// SPDX-License-Identifier: Apache-2.0
#include "bench/harness/child.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>

#include "bench/harness/require.h"

namespace bench {
namespace {

/// Where the output of a child goes.
class Redirection {
 public:
  explicit Redirection(int output) {
    posix_spawn_file_actions_init(&actions_);
    output == -1 ? posix_spawn_file_actions_addopen(&actions_, STDOUT_FILENO, "/dev/null", O_WRONLY, 0)
                 : posix_spawn_file_actions_adddup2(&actions_, output, STDOUT_FILENO);
  }
  ~Redirection() { posix_spawn_file_actions_destroy(&actions_); }
  Redirection(Redirection&&) = delete;

  [[nodiscard]] const posix_spawn_file_actions_t* get() const { return &actions_; }

 private:
  posix_spawn_file_actions_t actions_{};
};

pid_t start(const std::vector<std::string>& command, int output) {
  std::vector<char*> words;
  words.reserve(command.size() + 1);
  for (const auto& word : command) words.push_back(const_cast<char*>(word.c_str()));
  words.push_back(nullptr);
  pid_t child = -1;
  const Redirection redirection{output};
  require(posix_spawn(&child, words[0], redirection.get(), nullptr, words.data(), environ) == 0, words[0]);
  return child;
}

void awaitEnd(pid_t child, const std::string& name) {
  int status = 0;
  require(waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0,
          ("a program that ends with 0: " + name).c_str());
}

}  // namespace

double runProgram(const std::vector<std::string>& command) {
  const auto begin = std::chrono::steady_clock::now();
  awaitEnd(start(command, -1), command[0]);
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count();
}

std::vector<double> numbersFrom(const std::vector<std::string>& command) {
  int ends[2];
  require(pipe2(ends, O_CLOEXEC) == 0, "a pipe");
  const pid_t child = start(command, ends[1]);
  close(ends[1]);
  std::FILE* const output = fdopen(ends[0], "r");
  std::vector<double> numbers;
  for (double number = 0; std::fscanf(output, "%lf", &number) == 1;) numbers.push_back(number);
  std::fclose(output);
  awaitEnd(child, command[0]);
  return numbers;
}

double median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

}  // namespace bench
