// SPDX-License-Identifier: Apache-2.0
#include "tests/tool/windows/console_run.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <iterator>
#include <ostream>
#include <sstream>
#include <thread>

#include "tests/tool/windows/run_tool.h"

namespace test {
namespace {

constexpr COORD kSize = {.X = 100, .Y = 50};

/// A console, and what leads its pictures away for as long as it is there.
class Console {
 public:
  Console() {
    HANDLE keys = nullptr;
    HANDLE pictures = nullptr;
    EXPECT_TRUE(CreatePipe(&keys, &keyboard_, nullptr, 0) && CreatePipe(&display_, &pictures, nullptr, 0));
    EXPECT_EQ(CreatePseudoConsole(kSize, keys, pictures, 0, &console_), S_OK);
    CloseHandle(keys);
    CloseHandle(pictures);
    drain_ = std::thread{[this] {
      char buffer[4096];
      DWORD length = 0;
      while (ReadFile(display_, buffer, sizeof(buffer), &length, nullptr)) continue;
    }};
  }
  ~Console() {
    ClosePseudoConsole(console_);
    drain_.join();
    CloseHandle(keyboard_);
    CloseHandle(display_);
  }
  Console(Console&&) = delete;

  [[nodiscard]] HPCON get() const { return console_; }

 private:
  HANDLE keyboard_ = nullptr;
  HANDLE display_ = nullptr;
  HPCON console_ = nullptr;
  std::thread drain_;
};

/// The start of a program in a console.
class ConsoleStart {
 public:
  explicit ConsoleStart(const Console& console) {
    SIZE_T size = 0;
    InitializeProcThreadAttributeList(nullptr, 1, 0, &size);
    memory_.resize(size);
    information_.StartupInfo.cb = sizeof(information_);
    information_.StartupInfo.dwFlags = STARTF_USESTDHANDLES;
    information_.lpAttributeList = reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(memory_.data());
    EXPECT_TRUE(InitializeProcThreadAttributeList(information_.lpAttributeList, 1, 0, &size));
    EXPECT_TRUE(UpdateProcThreadAttribute(information_.lpAttributeList, 0, PROC_THREAD_ATTRIBUTE_PSEUDOCONSOLE,
                                          console.get(), sizeof(HPCON), nullptr, nullptr));
  }
  ~ConsoleStart() { DeleteProcThreadAttributeList(information_.lpAttributeList); }
  ConsoleStart(ConsoleStart&&) = delete;

  STARTUPINFOW* get() { return &information_.StartupInfo; }

 private:
  std::vector<char> memory_;
  STARTUPINFOEXW information_{};
};

int observe(const std::wstring& command, const std::wstring& folder) {
  const Console console;
  ConsoleStart start{console};
  PROCESS_INFORMATION started{};
  std::wstring line = command;
  if (!CreateProcessW(besideTheTests(L"console_observer.exe").c_str(), line.data(), nullptr, nullptr, FALSE,
                      EXTENDED_STARTUPINFO_PRESENT, nullptr, folder.c_str(), start.get(), &started)) {
    ADD_FAILURE() << "the observer could not be started: " << GetLastError();
    return -1;
  }
  return exitCodeOf(started);
}

ConsoleRun readReport(const std::string& text) {
  std::istringstream stream{text};
  ConsoleRun run{};
  std::string word;
  stream >> word >> run.before.codePage >> run.before.mode >> word >> run.modeDuring >> word >> run.exitCode >> word >>
      run.after.codePage >> run.after.mode;
  EXPECT_TRUE(stream.good()) << text;
  stream.ignore();
  run.screen = {std::istreambuf_iterator<char>{stream}, {}};
  return run;
}

ConsoleRun observedRun(const Tool& tool, const std::vector<std::string>& arguments, const std::wstring& keys) {
  const TemporaryFolder folder;
  const std::string report = folder.path("report");
  const std::wstring command = L'"' + besideTheTests(L"vqs.exe") + L"\"" + argumentsOf(arguments);
  EXPECT_EQ(observe(L"console_observer " + quoted(widen(report)) + keys + quoted(command), widen(tool.path("."))), 0);
  return readReport(readTextFile(report));
}

}  // namespace

std::ostream& operator<<(std::ostream& stream, const ConsoleState& state) {
  return stream << "code page " << state.codePage << ", mode " << state.mode;
}

ConsoleRun runInConsole(const Tool& tool, const std::vector<std::string>& arguments) {
  return observedRun(tool, arguments, L" none ");
}

ConsoleRun interruptInConsole(const Tool& tool, const std::vector<std::string>& arguments) {
  return observedRun(tool, arguments, L" ctrl-c ");
}

}  // namespace test
