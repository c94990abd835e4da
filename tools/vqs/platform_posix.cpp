// SPDX-License-Identifier: Apache-2.0
#include <fcntl.h>
#include <fmt/format.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <filesystem>

#include "errors.h"
#include "platform.h"

namespace tool::platform {
namespace {

constexpr const char* kStateVariable = "VEXOQTF_SIMULATOR_STATE";

std::string environment(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr ? value : "";
}

/// A file opened later must not take a closed stream's number. What takes its place here refuses the stream's use.
void reserve(int descriptor, int mode) {
  if (fcntl(descriptor, F_GETFD) != -1) return;
  const int opened = ::open("/dev/null", mode);
  if (opened != descriptor && opened != -1) ::close(opened);
}

sigset_t interruptions() {
  sigset_t signals;
  sigemptyset(&signals);
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) sigaddset(&signals, signal);
  return signals;
}

std::filesystem::path stateHome() {
  std::filesystem::path chosen = environment("XDG_STATE_HOME");
  if (chosen.is_absolute()) return chosen;
  const std::filesystem::path home = environment("HOME");
  if (home.empty())
    throw Failure{
        "there is no place for the simulated driver's state, HOME is not set: name a file with --driver-state"};
  return home / ".local" / "state";
}

std::string defaultStateFile() {
  const auto directory = stateHome() / "vqs";
  std::error_code error;
  std::filesystem::create_directories(directory, error);
  if (error)
    throw Failure{
        fmt::format("{}: {}: the simulated driver's state needs this directory, or name a file with "
                    "--driver-state",
                    directory.string(), error.message())};
  return (directory / "simulator.state").string();
}

/// Leads standard error into a pipe for a while. What does not fit into the pipe is lost.
class StandardErrorCapture {
 public:
  StandardErrorCapture() {
    if (pipe2(ends_.data(), O_CLOEXEC | O_NONBLOCK) != 0) return;
    saved_ = fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 0);
    if (saved_ != -1) ::dup2(ends_[1], STDERR_FILENO);
  }
  ~StandardErrorCapture() {
    if (saved_ != -1) ::dup2(saved_, STDERR_FILENO);
    for (const int descriptor : {saved_, ends_[0], ends_[1]})
      if (descriptor != -1) ::close(descriptor);
  }
  StandardErrorCapture(const StandardErrorCapture&) = delete;
  StandardErrorCapture& operator=(const StandardErrorCapture&) = delete;

  /// What has come so far, up to the end of its last line.
  std::string text() const {
    std::array<char, 4096> buffer{};
    const ssize_t length = ends_[0] == -1 ? 0 : ::read(ends_[0], buffer.data(), buffer.size());
    std::string text{buffer.data(), length > 0 ? static_cast<std::size_t>(length) : 0};
    text.erase(text.find_last_not_of('\n') + 1);
    return text;
  }

 private:
  std::array<int, 2> ends_ = {-1, -1};
  int saved_ = -1;
};

}  // namespace

void prepareStreams() {
  reserve(STDIN_FILENO, O_RDONLY);
  reserve(STDOUT_FILENO, O_RDONLY);
  reserve(STDERR_FILENO, O_RDONLY);
}

std::vector<std::string> arguments(int argc, char** argv) {
  return argc > 0 ? std::vector<std::string>{argv + 1, argv + argc} : std::vector<std::string>{};
}

bool writeText(std::FILE* stream, std::string_view text) {
  return std::fwrite(text.data(), 1, text.size(), stream) == text.size() && std::fflush(stream) == 0;
}

Terminal::Terminal() = default;
Terminal::~Terminal() = default;

std::optional<TerminalSize> Terminal::size() const {
  const std::string kind = environment("TERM");
  if (isatty(STDOUT_FILENO) == 0 || kind.empty() || kind == "dumb") return std::nullopt;
  winsize size{};
  const bool known = ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col != 0 && size.ws_row != 0;
  return known ? TerminalSize{.columns = size.ws_col, .lines = size.ws_row} : TerminalSize{.columns = 80, .lines = 24};
}

void catchInterruptions() {
  const sigset_t signals = interruptions();
  // Blocked signals wait to be asked for: none gets lost between two waits.
  pthread_sigmask(SIG_BLOCK, &signals, nullptr);
  static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
}

bool waitUnlessInterrupted(std::chrono::milliseconds duration) {
  const sigset_t signals = interruptions();
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(duration);
  const timespec time{.tv_sec = seconds.count(), .tv_nsec = std::chrono::nanoseconds{duration - seconds}.count()};
  return sigtimedwait(&signals, nullptr, &time) == -1;
}

void useDriverState(const std::optional<std::string>& file) {
  if (file && file->empty()) throw UsageError{"--driver-state: the file's name is empty"};
  if (!file && !environment(kStateVariable).empty()) return;
  const std::string path = file ? *file : defaultStateFile();
  if (setenv(kStateVariable, path.c_str(), 1) != 0) throw Failure{systemMessage(errno)};
}

std::string driverMessagesDuring(const std::function<void()>& action) {
  const StandardErrorCapture capture;
  action();
  return capture.text();
}

std::string deviceHint() { return "it gives no reason"; }

}  // namespace tool::platform
