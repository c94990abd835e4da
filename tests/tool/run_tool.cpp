// SPDX-License-Identifier: Apache-2.0
#include "tool/run_tool.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <linux/capability.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <ostream>
#include <sstream>

namespace test {
namespace {

constexpr const char* kState = "driver.state";

std::vector<std::string> toolCommand() {
  std::vector<std::string> words;
  std::istringstream stream{VQS_TOOL_COMMAND};
  for (std::string word; std::getline(stream, word, '|');) words.push_back(word);
  return words;
}

void redirect(int descriptor, const std::string& path) {
  const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
  if (file == -1 || dup2(file, descriptor) == -1) _exit(120);
  close(file);
}

void setEnvironment(const std::map<std::string, std::string>& environment) {
  for (const auto& [name, value] : environment)
    value.empty() ? unsetenv(name.c_str()) : setenv(name.c_str(), value.c_str(), 1);
}

void limitFiles(std::size_t longest) {
  // Refused writes shall fail, not end the process.
  static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
  const rlimit limit{.rlim_cur = longest, .rlim_max = longest};
  if (setrlimit(RLIMIT_FSIZE, &limit) != 0) _exit(121);
}

/// Permissions shall hold for the administrator too.
void dropPrivileges() {
  prctl(PR_CAPBSET_DROP, CAP_DAC_OVERRIDE, 0, 0, 0);
  prctl(PR_CAPBSET_DROP, CAP_DAC_READ_SEARCH, 0, 0, 0);
}

[[noreturn]] void becomeTool(const std::vector<std::string>& command, const std::string& folder,
                             const std::string& captured, const RunOptions& options) {
  if (chdir(folder.c_str()) != 0) _exit(122);
  redirect(STDERR_FILENO, captured + ".err");
  if (options.output == "-")
    close(STDOUT_FILENO);
  else
    redirect(STDOUT_FILENO, options.output.empty() ? captured + ".out" : options.output);
  setEnvironment({{"LC_ALL", "C"}, {"VEXOQTF_SIMULATOR_STATE", folder + "/" + kState}});
  setEnvironment(options.environment);
  if (options.longestFile) limitFiles(*options.longestFile);
  dropPrivileges();
  std::vector<char*> words;
  for (const auto& word : command) words.push_back(const_cast<char*>(word.c_str()));
  words.push_back(nullptr);
  execvp(words[0], words.data());
  _exit(127);
}

std::string readAll(const std::string& path) {
  const Bytes bytes = readFile(path);
  return {bytes.begin(), bytes.end()};
}

}  // namespace

std::ostream& operator<<(std::ostream& stream, const ToolRun& run) {
  return stream << "exit code " << run.exitCode << "\n--- out\n" << run.out << "--- err\n" << run.err << "---";
}

ToolRun done(std::string out) { return {.exitCode = 0, .out = std::move(out), .err = ""}; }
ToolRun failed(std::string err) { return {.exitCode = 1, .out = "", .err = std::move(err)}; }
ToolRun wrongUsage(std::string err) { return {.exitCode = 2, .out = "", .err = std::move(err)}; }

ToolRun Tool::run(const std::vector<std::string>& arguments, const RunOptions& options) const {
  const TemporaryFolder capture;
  const std::string captured = capture.path("standard");
  auto command = toolCommand();
  command.insert(command.end(), arguments.begin(), arguments.end());
  const pid_t child = fork();
  if (child == 0) becomeTool(command, folder_.path("."), captured, options);
  int status = 0;
  if (child == -1 || waitpid(child, &status, 0) != child) ADD_FAILURE() << "the tool could not be started";
  const int exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  return {.exitCode = exitCode,
          .out = options.output.empty() ? readAll(captured + ".out") : "",
          .err = readAll(captured + ".err")};
}

void Tool::writeText(std::string_view name, std::string_view content) const {
  write(name, Bytes(content.begin(), content.end()));
}

std::string Tool::readText(std::string_view name) const { return readAll(path(name)); }

std::vector<std::string> Tool::files() const {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator{folder_.path(".")})
    if (const auto name = entry.path().filename().string(); !name.starts_with(kState)) names.push_back(name);
  std::ranges::sort(names);
  return names;
}

}  // namespace test
