// SPDX-License-Identifier: Apache-2.0
#include "simulator/installer/child_process.h"

#include <fmt/format.h>

#include "simulator/installer/windows_text.h"

namespace setup {
namespace {

/// As the C runtime takes command lines apart: backslashes count only before a quote.
std::wstring quoted(const std::wstring& argument) {
  std::wstring text = L"\"";
  std::size_t backslashes = 0;
  for (const wchar_t unit : argument) {
    if (unit == L'"') text.append(backslashes + 1, L'\\');
    backslashes = unit == L'\\' ? backslashes + 1 : 0;
    text += unit;
  }
  return text.append(backslashes, L'\\') + L'"';
}

DWORD waitForEnd(PROCESS_INFORMATION process) {
  DWORD exitCode = 0;
  WaitForSingleObject(process.hProcess, INFINITE);
  GetExitCodeProcess(process.hProcess, &exitCode);
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
  return exitCode;
}

}  // namespace

std::wstring commandLine(const std::filesystem::path& program, const std::vector<std::wstring>& arguments) {
  std::wstring line = quoted(program.wstring());
  for (const auto& argument : arguments) line += L' ' + quoted(argument);
  return line;
}

void run(const std::filesystem::path& program, const std::vector<std::wstring>& arguments) {
  const std::string name = narrow(program.filename().wstring());
  std::wstring line = commandLine(program, arguments);
  STARTUPINFOW startup{};
  startup.cb = sizeof(startup);
  PROCESS_INFORMATION process{};
  require(CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup, &process),
          name + " cannot be started");
  const DWORD exitCode = waitForEnd(process);
  if (exitCode != 0) throw Failure{fmt::format("{} failed with {}: see what it said above", name, exitCode)};
}

}  // namespace setup
