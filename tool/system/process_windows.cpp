// SPDX-License-Identifier: Apache-2.0
#include <fcntl.h>
#include <fmt/format.h>
#include <io.h>
#include <windows.h>
// after windows.h, which it needs
#include <shellapi.h>

#include <cerrno>
#include <memory>
#include <span>

#include "tool/system/process.h"
#include "tool/system/windows_text.h"
#include "tool/terminal/errors.h"

namespace tool::platform {
namespace {

/// The stream's handle; no valid one when the process was started without the stream.
HANDLE handleOf(std::FILE* stream) { return reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stream))); }

bool isConsole(HANDLE handle) {
  DWORD mode = 0;
  return GetConsoleMode(handle, &mode) != 0;
}

bool writeToConsole(HANDLE console, std::wstring_view text) {
  while (!text.empty()) {
    DWORD written = 0;
    if (!WriteConsoleW(console, text.data(), static_cast<DWORD>(text.size()), &written, nullptr) || written == 0) {
      errno = EIO;
      return false;
    }
    text.remove_prefix(written);
  }
  return true;
}

HANDLE interruption = nullptr;

/// Runs in a thread of its own.
BOOL WINAPI onConsoleControl(DWORD control) {
  SetEvent(interruption);
  // When the window closes, or the user leaves, the process ends with this call: the command gets the time to end
  // first.
  if (control != CTRL_C_EVENT && control != CTRL_BREAK_EVENT) Sleep(INFINITE);
  return TRUE;
}

}  // namespace

void prepareStreams() {
  _setmode(_fileno(stdin), _O_BINARY);
  _setmode(_fileno(stdout), _O_BINARY);
  _setmode(_fileno(stderr), _O_BINARY);
}

bool writeText(std::FILE* stream, std::string_view text) {
  const HANDLE handle = handleOf(stream);
  if (isConsole(handle)) return writeToConsole(handle, widen(text));
  return std::fwrite(text.data(), 1, text.size(), stream) == text.size() && std::fflush(stream) == 0;
}

std::vector<std::string> arguments(int /*argc*/, char** /*argv*/) {
  int count = 0;
  const std::unique_ptr<LPWSTR[], decltype(&LocalFree)> wide{CommandLineToArgvW(GetCommandLineW(), &count), &LocalFree};
  std::vector<std::string> result;
  if (wide == nullptr) return result;
  for (const LPWSTR word : std::span{wide.get(), static_cast<std::size_t>(count)}.subspan(1))
    result.push_back(narrow(word));
  return result;
}

bool isConversation() { return isConsole(handleOf(stdin)) && isConsole(handleOf(stdout)); }

Terminal::Terminal() {
  const HANDLE console = handleOf(stdout);
  DWORD mode = 0;
  if (GetConsoleMode(console, &mode) && SetConsoleMode(console, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING))
    found_ = mode;
}

Terminal::~Terminal() {
  if (found_) SetConsoleMode(handleOf(stdout), *found_);
}

std::optional<TerminalSize> Terminal::size() const {
  CONSOLE_SCREEN_BUFFER_INFO info{};
  if (!found_ || !GetConsoleScreenBufferInfo(handleOf(stdout), &info)) return std::nullopt;
  return TerminalSize{.columns = static_cast<std::size_t>(info.srWindow.Right - info.srWindow.Left + 1),
                      .lines = static_cast<std::size_t>(info.srWindow.Bottom - info.srWindow.Top + 1)};
}

void catchInterruptions() {
  interruption = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  if (interruption == nullptr || !SetConsoleCtrlHandler(onConsoleControl, TRUE))
    throw Failure{systemError(GetLastError())};
}

bool waitUnlessInterrupted(std::chrono::milliseconds duration) {
  return WaitForSingleObject(interruption, static_cast<DWORD>(duration.count())) == WAIT_TIMEOUT;
}

}  // namespace tool::platform
