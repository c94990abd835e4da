// SPDX-License-Identifier: Apache-2.0
#include <fcntl.h>
#include <fmt/format.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>

#include "tool/system/process.h"
#include "tool/terminal/errors.h"

namespace tool::platform {
namespace {

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

bool isConversation() { return isatty(STDIN_FILENO) != 0 && isatty(STDOUT_FILENO) != 0; }

Terminal::Terminal() = default;
Terminal::~Terminal() = default;

std::optional<TerminalSize> Terminal::size() const {
  const char* const variable = std::getenv("TERM");
  const std::string_view kind = variable != nullptr ? variable : "";
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

}  // namespace tool::platform
