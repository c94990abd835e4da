// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <windows.h>

#include <array>
#include <memory>
#include <thread>

#include "tests/support/results.h"
#include "tests/tool/driver_client.h"
#include "tests/tool/windows/run_tool.h"

namespace test {

std::wstring widen(const std::string& utf8) {
  const int size = static_cast<int>(utf8.size());
  std::wstring wide(static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, nullptr, 0)), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, wide.data(), static_cast<int>(wide.size()));
  return wide;
}

std::wstring besideTheTests(const std::wstring& name) {
  wchar_t program[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, program, MAX_PATH);
  return std::filesystem::path{program}.replace_filename(name).wstring();
}

std::wstring quoted(const std::wstring& argument) {
  std::wstring text = L"\"";
  std::size_t backslashes = 0;
  for (const wchar_t unit : argument) {
    if (unit == L'"') text.append(backslashes + 1, L'\\');
    backslashes = unit == L'\\' ? backslashes + 1 : 0;
    text += unit;
  }
  text.append(backslashes, L'\\');
  return text + L'"';
}

std::wstring argumentsOf(const std::vector<std::string>& arguments) {
  std::wstring line;
  for (const auto& argument : arguments) line += L' ' + quoted(widen(argument));
  return line;
}

namespace {

constexpr DWORD kLongestRun = 60'000;

struct HandleCloser {
  void operator()(HANDLE handle) const { CloseHandle(handle); }
};
using Handle = std::unique_ptr<void, HandleCloser>;

Handle openForTheTool(const std::wstring& path, DWORD access, DWORD disposition) {
  SECURITY_ATTRIBUTES inherited{.nLength = sizeof(inherited), .lpSecurityDescriptor = nullptr, .bInheritHandle = TRUE};
  const HANDLE file = CreateFileW(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited, disposition,
                                  FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) ADD_FAILURE() << "a stream was not opened: " << GetLastError();
  return Handle{file};
}

}  // namespace

int exitCodeOf(const PROCESS_INFORMATION& started) {
  const Handle thread{started.hThread};
  const Handle process{started.hProcess};
  if (WaitForSingleObject(started.hProcess, kLongestRun) != WAIT_OBJECT_0) {
    ADD_FAILURE() << "the tool does not end";
    TerminateProcess(started.hProcess, 1);
  }
  DWORD exitCode = 0;
  EXPECT_TRUE(GetExitCodeProcess(started.hProcess, &exitCode));
  return static_cast<int>(exitCode);
}

namespace {

/// What programs that are started get of the environment, until the end of the scope.
class Environment {
 public:
  explicit Environment(const std::map<std::string, std::string>& variables) {
    for (const auto& [name, value] : variables) set(widen(name), widen(value));
  }
  ~Environment() {
    for (const auto& [name, value] : found_) SetEnvironmentVariableW(name.c_str(), value ? value->c_str() : nullptr);
  }
  Environment(const Environment&) = delete;
  Environment& operator=(const Environment&) = delete;

 private:
  void set(const std::wstring& name, const std::wstring& value) {
    const wchar_t* const found = _wgetenv(name.c_str());
    found_[name] = found != nullptr ? std::optional<std::wstring>{found} : std::nullopt;
    // A variable without a value is none.
    SetEnvironmentVariableW(name.c_str(), value.empty() ? nullptr : value.c_str());
  }

  std::map<std::wstring, std::optional<std::wstring>> found_;
};

int runTool(const std::wstring& program, std::wstring command, const std::wstring& folder, const Handle& output,
            const Handle& error) {
  const Handle input = openForTheTool(L"NUL", GENERIC_READ, OPEN_EXISTING);
  STARTUPINFOW startup{};
  startup.cb = sizeof(startup);
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdInput = input.get();
  startup.hStdOutput = output.get();
  startup.hStdError = error.get();
  PROCESS_INFORMATION started{};
  const auto start = [&] {
    return CreateProcessW(program.c_str(), command.data(), nullptr, nullptr, TRUE, 0, nullptr, folder.c_str(), &startup,
                          &started);
  };
  // Wine now and then cannot start a program while others start, and can a moment later.
  bool isStarted = start();
  for (int tries = 0; !isStarted && GetLastError() == ERROR_INTERNAL_ERROR && tries < 3; ++tries) isStarted = start();
  if (isStarted) return exitCodeOf(started);
  ADD_FAILURE() << "the tool could not be started: " << GetLastError();
  return -1;
}

bool isForPosixOnly(const RunOptions& options) {
  return options.output == "-" || options.longestFile || options.signal != 0;
}

void liftOverrides(QtfSession* session) {
  std::uint32_t size = 0;
  ASSERT_EQ(vqsGetInputOverrideKeyList(session, nullptr, &size, 1), kDone);
  std::vector<std::uint32_t> keys(size / sizeof(std::uint32_t));
  ASSERT_EQ(vqsGetInputOverrideKeyList(session, keys.data(), nullptr, 0), kDone);
  for (const auto key : keys) EXPECT_EQ(vqsOverrideInput(session, key, 0, 0), kDone);
}

void forgetEverything(QtfSession* session) {
  EXPECT_EQ(vqsPbReset(session), kDone);
  EXPECT_EQ(vqsAsmReset(session), kDone);
  EXPECT_EQ(vqsBalanceProfileReset(session), kDone);
  std::uint32_t verdict = 99;
  EXPECT_EQ(vqsSetBinaryVersion(session, 0, 0, &verdict, VQS_POLICY_STORE_ASM), kDone);
  EXPECT_EQ(verdict, 0U);
  liftOverrides(session);
  EXPECT_EQ(vqsSetAppInputs(session, 0, 0), kDone);
  EXPECT_EQ(vqsDynamicSliderEnableDisable(session, 0), kDone);
}

}  // namespace

RunOptions withSteadyDriver() { return {}; }

Tool::Tool() { useDriver(*this, forgetEverything); }

ToolRun Tool::run(const std::vector<std::string>& arguments, const RunOptions& options) const {
  EXPECT_FALSE(isForPosixOnly(options));
  const Environment environment{options.environment};
  const TemporaryFolder capture;
  const std::string out = options.output.empty() ? capture.path("out") : path(options.output);
  const std::wstring program = options.program.empty() ? besideTheTests(L"vqs.exe") : widen(options.program);
  const int exitCode = runTool(program, L"vqs" + argumentsOf(arguments), widen(folder_.path(".")),
                               openForTheTool(widen(out), GENERIC_WRITE, CREATE_ALWAYS),
                               openForTheTool(widen(capture.path("err")), GENERIC_WRITE, CREATE_ALWAYS));
  return {.exitCode = exitCode,
          .out = options.output.empty() ? readTextFile(out) : "",
          .err = readTextFile(capture.path("err"))};
}

std::string pipedOutput(const Tool& tool, const std::vector<std::string>& arguments) {
  HANDLE reading = nullptr;
  HANDLE writing = nullptr;
  EXPECT_TRUE(CreatePipe(&reading, &writing, nullptr, 0) &&
              SetHandleInformation(writing, HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT));
  const Handle reader{reading};
  std::string all;
  std::thread reads{[&] {
    std::array<char, 4096> buffer{};
    for (DWORD length = 0; ReadFile(reading, buffer.data(), buffer.size(), &length, nullptr);)
      all.append(buffer.data(), length);
  }};
  EXPECT_EQ(runTool(besideTheTests(L"vqs.exe"), L"vqs" + argumentsOf(arguments), widen(tool.path(".")), Handle{writing},
                    openForTheTool(L"NUL", GENERIC_WRITE, OPEN_EXISTING)),
            0);
  reads.join();
  return all;
}

}  // namespace test
