// SPDX-License-Identifier: Apache-2.0
// Runs a program in the console that this process was started in, and tells what the program made of the console:
//   console_observer REPORT KEYS COMMAND
// KEYS is "none", or "ctrl-c", which comes once the program has changed the console's mode.
#include <windows.h>
// after windows.h, which it needs
#include <shellapi.h>

#include <cstdio>
#include <string>

namespace {

constexpr DWORD kLongestRun = 60'000;

HANDLE output = nullptr;

/// Interruptions are for the program.
BOOL WINAPI ignore(DWORD /*control*/) { return TRUE; }

HANDLE openConsole(const wchar_t* name) {
  SECURITY_ATTRIBUTES inherited{.nLength = sizeof(inherited), .lpSecurityDescriptor = nullptr, .bInheritHandle = TRUE};
  return CreateFileW(name, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited, OPEN_EXISTING,
                     0, nullptr);
}

DWORD mode() {
  DWORD mode = 0;
  GetConsoleMode(output, &mode);
  return mode;
}

PROCESS_INFORMATION start(std::wstring command, HANDLE input) {
  STARTUPINFOW startup{};
  startup.cb = sizeof(startup);
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdInput = input;
  startup.hStdOutput = output;
  startup.hStdError = output;
  PROCESS_INFORMATION started{};
  CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup, &started);
  return started;
}

bool isRunning(HANDLE process, DWORD milliseconds) {
  return WaitForSingleObject(process, milliseconds) == WAIT_TIMEOUT;
}

/// The mode that the program has set; the old one when the program ends without having set any.
DWORD changedMode(HANDLE process, DWORD before) {
  while (mode() == before && isRunning(process, 10)) continue;
  return mode();
}

std::string narrow(const std::wstring& wide) {
  char text[4096] = {};
  WideCharToMultiByte(CP_UTF8, 0, wide.data(), static_cast<int>(wide.size()), text, sizeof(text) - 1, nullptr, nullptr);
  return text;
}

/// What stands on the screen, up to the line of the cursor.
std::string screen() {
  CONSOLE_SCREEN_BUFFER_INFO info{};
  GetConsoleScreenBufferInfo(output, &info);
  std::string text;
  for (SHORT row = 0; row < info.dwCursorPosition.Y; ++row) {
    std::wstring line(static_cast<std::size_t>(info.dwSize.X), L' ');
    DWORD length = 0;
    ReadConsoleOutputCharacterW(output, line.data(), static_cast<DWORD>(line.size()), {0, row}, &length);
    line.erase(line.find_last_not_of(L' ') + 1);
    text += narrow(line) + '\n';
  }
  return text;
}

}  // namespace

int main() {
  int count = 0;
  wchar_t** words = CommandLineToArgvW(GetCommandLineW(), &count);
  if (count != 4) return 2;
  std::FILE* report = _wfopen(words[1], L"wb");
  output = openConsole(L"CONOUT$");
  SetConsoleCtrlHandler(ignore, TRUE);
  const DWORD before = mode();
  std::fprintf(report, "before %u %lu\n", GetConsoleOutputCP(), before);
  const auto program = start(words[3], openConsole(L"CONIN$"));
  const bool isInterrupted = words[2] == std::wstring{L"ctrl-c"};
  std::fprintf(report, "during %lu\n", isInterrupted ? changedMode(program.hProcess, before) : before);
  if (isInterrupted) GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0);
  DWORD exitCode = 0;
  if (isRunning(program.hProcess, kLongestRun) || !GetExitCodeProcess(program.hProcess, &exitCode)) return 3;
  std::fprintf(report, "exit %lu\nafter %u %lu\n%s", exitCode, GetConsoleOutputCP(), mode(), screen().c_str());
  return std::fclose(report);
}
