// SPDX-License-Identifier: Apache-2.0
#include "tests/tool/run_tool.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <linux/capability.h>
#include <pty.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <sstream>

namespace test {
namespace {

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

void takeInput(const std::string& path) {
  const int file = open(path.c_str(), O_RDONLY);
  if (file == -1 || dup2(file, STDIN_FILENO) == -1) _exit(123);
  close(file);
}

void redirectStreams(const std::string& captured, const RunOptions& options) {
  if (options.input) takeInput(captured + ".in");
  redirect(STDERR_FILENO, captured + ".err");
  if (options.output == "-")
    close(STDOUT_FILENO);
  else
    redirect(STDOUT_FILENO, options.output.empty() ? captured + ".out" : options.output);
}

void enter(const std::string& folder) {
  if (chdir(folder.c_str()) != 0) _exit(122);
}

/// Runs in the current folder.
[[noreturn]] void becomeTool(const std::vector<std::string>& command, const std::string& folder,
                             const RunOptions& options) {
  setEnvironment({{"LC_ALL", "C"}, {"TERM", "xterm"}, {"VEXOQTF_SIMULATOR_STATE", folder + "/" + kDriverState}});
  setEnvironment(options.environment);
  if (options.longestFile) limitFiles(*options.longestFile);
  dropPrivileges();
  std::vector<char*> words;
  words.reserve(command.size() + 1);
  for (const auto& word : command) words.push_back(const_cast<char*>(word.c_str()));
  words.push_back(nullptr);
  execvp(words[0], words.data());
  _exit(127);
}

std::vector<std::string> commandLine(const std::vector<std::string>& arguments) {
  auto command = toolCommand();
  command.insert(command.end(), arguments.begin(), arguments.end());
  return command;
}

int exitCodeOf(pid_t child) {
  int status = 0;
  if (child == -1 || waitpid(child, &status, 0) != child) ADD_FAILURE() << "the tool could not be started";
  return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

/// A run that never gets so far meets the time limit of its test.
void signalAfterALine(pid_t child, int signal, const std::string& output) {
  while (!fileExists(output) || readTextFile(output).find('\n') == std::string::npos) usleep(10000);
  kill(child, signal);
}

std::size_t occurrences(const std::string& text, const std::string& part) {
  std::size_t count = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
  return count;
}

/// Everything that the other side of a terminal writes until it ends.
std::string converse(int terminal, const Terminal& script) {
  std::string all;
  bool typed = false;
  std::array<char, 4096> buffer{};
  for (ssize_t length = 0; (length = read(terminal, buffer.data(), buffer.size())) > 0;) {
    all.append(buffer.data(), static_cast<std::size_t>(length));
    if (typed || occurrences(all, script.awaited) < script.times) continue;
    if (script.meanwhile) script.meanwhile();
    typed = write(terminal, script.keys.data(), script.keys.size()) == static_cast<ssize_t>(script.keys.size());
  }
  return all;
}

}  // namespace

RunOptions withDriverOptions(const std::string& driverOptions) {
  RunOptions options;
  options.environment["VEXOQTF_SIMULATOR_OPTIONS"] = driverOptions;
  return options;
}

RunOptions withSteadyDriver() { return withDriverOptions("time=0"); }

Tool::Tool() = default;

ToolRun Tool::run(const std::vector<std::string>& arguments, const RunOptions& options) const {
  const TemporaryFolder capture;
  const std::string captured = capture.path("standard");
  if (options.input) capture.write("standard.in", Bytes(options.input->begin(), options.input->end()));
  const auto command = commandLine(arguments);
  const pid_t child = fork();
  if (child == 0) {
    enter(folder_.path("."));
    redirectStreams(captured, options);
    becomeTool(command, folder_.path("."), options);
  }
  if (child != -1 && options.signal != 0) signalAfterALine(child, options.signal, captured + ".out");
  const int exitCode = exitCodeOf(child);
  return {.exitCode = exitCode,
          .out = options.output.empty() ? readTextFile(captured + ".out") : "",
          .err = readTextFile(captured + ".err")};
}

ToolRun Tool::runOn(const Terminal& terminal, const std::vector<std::string>& arguments,
                    const RunOptions& options) const {
  const auto command = commandLine(arguments);
  winsize size{};
  size.ws_row = static_cast<unsigned short>(terminal.lines);
  size.ws_col = static_cast<unsigned short>(terminal.columns);
  int other = -1;
  const pid_t child = forkpty(&other, nullptr, nullptr, &size);
  if (child == 0) {
    enter(folder_.path("."));
    becomeTool(command, folder_.path("."), options);
  }
  const std::string all = converse(other, terminal);
  close(other);
  return {.exitCode = exitCodeOf(child), .out = all, .err = ""};
}

}  // namespace test
