// SPDX-License-Identifier: Apache-2.0
#include <fcntl.h>
#include <fmt/format.h>
#include <io.h>
#include <windows.h>
// after windows.h, which it needs
#include <shellapi.h>

#include <filesystem>
#include <memory>
#include <span>

#include "errors.h"
#include "platform.h"

namespace tool::platform {
namespace {

std::wstring widen(std::string_view utf8) {
  const int size = static_cast<int>(utf8.size());
  std::wstring wide(static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, nullptr, 0)), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, wide.data(), static_cast<int>(wide.size()));
  return wide;
}

/// In a code page; `lossy` tells whether characters had to be replaced, which UTF-8 never does.
std::string narrow(const std::wstring& wide, UINT codePage, BOOL* lossy) {
  const DWORD flags = lossy != nullptr ? WC_NO_BEST_FIT_CHARS : 0;
  const int size = static_cast<int>(wide.size());
  const int needed = WideCharToMultiByte(codePage, flags, wide.data(), size, nullptr, 0, nullptr, lossy);
  std::string text(static_cast<std::size_t>(needed), '\0');
  WideCharToMultiByte(codePage, flags, wide.data(), size, text.data(), needed, nullptr, lossy);
  return text;
}

std::string systemError(DWORD error) {
  wchar_t text[256] = {};
  FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error, 0, text, 256, nullptr);
  std::wstring message = text;
  while (!message.empty() && (message.back() == L'\n' || message.back() == L'\r' || message.back() == L'.'))
    message.pop_back();
  return message.empty() ? fmt::format("error {}", error) : narrow(message, CP_UTF8, nullptr);
}

[[noreturn]] void failToWrite(const std::string& target) {
  const DWORD error = GetLastError();
  throw Failure{fmt::format("{} cannot be written: {}", target, systemError(error))};
}

/// Invalid for a stream that the process was started without.
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
    result.push_back(narrow(word, CP_UTF8, nullptr));
  return result;
}

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

std::FILE* openFile(const std::string& path, const char* mode) {
  return _wfopen(widen(path).c_str(), widen(mode).c_str());
}

std::string libraryPath(const std::string& path) {
  if (GetACP() == CP_UTF8) return path;
  BOOL lossy = FALSE;
  std::string narrowed = narrow(widen(path), CP_ACP, &lossy);
  if (lossy)
    throw Failure{
        fmt::format("{}: the path has characters that this Windows cannot pass on to the library, whose paths "
                    "are 8-bit: use another name",
                    path)};
  return narrowed;
}

std::string createBeside(const std::string& target) {
  constexpr int kAttempts = 1000;
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    std::string path = fmt::format("{}.{}-{}.new", target, GetCurrentProcessId(), attempt);
    const HANDLE file =
        CreateFileW(widen(path).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file != INVALID_HANDLE_VALUE) {
      CloseHandle(file);
      return path;
    }
    if (GetLastError() != ERROR_FILE_EXISTS) break;
  }
  failToWrite(target);
}

void replaceFile(const std::string& finished, const std::string& target) {
  const auto from = std::filesystem::absolute(widen(finished));
  const auto to = std::filesystem::absolute(widen(target));
  // ReplaceFileW takes over access rights and attributes, but there has to be something to replace.
  const bool isDone = GetFileAttributesW(to.c_str()) == INVALID_FILE_ATTRIBUTES
                          ? MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_WRITE_THROUGH) != 0
                          : ReplaceFileW(to.c_str(), from.c_str(), nullptr, 0, nullptr, nullptr) != 0;
  if (!isDone) failToWrite(target);
}

void useDriverState(const std::optional<std::string>& file) {
  if (file) throw UsageError{"--driver-state: the driver is not simulated on this system"};
}

std::string driverMessagesDuring(const std::function<void()>& action) {
  action();
  return "";
}

std::string deviceHint() { return "another program may hold it, or this account may not open it"; }

}  // namespace tool::platform
