// SPDX-License-Identifier: Apache-2.0
#include "tool/system/simulated_driver.h"

#include <fmt/format.h>

#include <array>
#include <vector>

#include "tool/system/windows_text.h"
#include "tool/terminal/errors.h"

// The calls of the library are resolved when the first of them is made, by the name of the module that loadLibrary has
// loaded under that name.
namespace tool::platform {
namespace {

constexpr const wchar_t* kLibrary = L"VexoQTFServices.dll";
constexpr const wchar_t* kStateVariable = L"VEXOQTF_SIMULATOR_STATE";

/// A file of the folder that this program is in.
std::wstring besideTheProgram(const std::wstring& name) {
  std::wstring path(kLongestPath, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), kLongestPath));
  return path.substr(0, path.find_last_of(L'\\') + 1) + name;
}

void load(const std::wstring& path) {
  // What the library itself needs comes from where everything of this program comes from.
  constexpr DWORD kFolders = LOAD_LIBRARY_SEARCH_APPLICATION_DIR | LOAD_LIBRARY_SEARCH_SYSTEM32;
  if (LoadLibraryExW(path.c_str(), nullptr, kFolders) == nullptr)
    throw NoDriver{fmt::format("{} cannot be loaded: {}", narrow(path), systemError(GetLastError()))};
}

std::wstring environment(const wchar_t* name) {
  std::wstring value(kLongestPath, L'\0');
  value.resize(GetEnvironmentVariableW(name, value.data(), kLongestPath));
  return value;
}

std::wstring defaultStateFile() {
  const std::wstring home = environment(L"LOCALAPPDATA");
  if (home.empty())
    throw NoDriver{
        "there is no place for the simulated driver's state, LOCALAPPDATA is not set: name a file with "
        "--driver-state"};
  const std::wstring folder = home + L"\\vqs";
  if (!CreateDirectoryW(folder.c_str(), nullptr) && GetLastError() != ERROR_ALREADY_EXISTS)
    throw NoDriver{
        fmt::format("{}: {}: the simulated driver's state needs this directory, or name a file with --driver-state",
                    narrow(folder), systemError(GetLastError()))};
  return folder + L"\\simulator.state";
}

/// Leads standard error into a pipe for a while. More than fits into the pipe would wait for ever: there is room for
/// more than the driver says.
class StandardErrorCapture {
 public:
  StandardErrorCapture() {
    constexpr DWORD kRoom = 65536;
    if (CreatePipe(&reading_, &writing_, nullptr, kRoom)) SetStdHandle(STD_ERROR_HANDLE, writing_);
  }
  ~StandardErrorCapture() {
    SetStdHandle(STD_ERROR_HANDLE, found_);
    for (const HANDLE end : {reading_, writing_})
      if (end != nullptr) CloseHandle(end);
  }
  StandardErrorCapture(const StandardErrorCapture&) = delete;
  StandardErrorCapture& operator=(const StandardErrorCapture&) = delete;

  /// What has come so far, up to the end of its last line.
  std::string text() const {
    std::array<char, 4096> buffer{};
    DWORD length = 0;
    const bool isSomethingThere = PeekNamedPipe(reading_, nullptr, 0, nullptr, &length, nullptr) && length > 0;
    if (!isSomethingThere || !ReadFile(reading_, buffer.data(), buffer.size(), &length, nullptr)) return "";
    std::string text{buffer.data(), length};
    text.erase(text.find_last_not_of('\n') + 1);
    return text;
  }

 private:
  HANDLE found_ = GetStdHandle(STD_ERROR_HANDLE);
  HANDLE reading_ = nullptr;
  HANDLE writing_ = nullptr;
};

}  // namespace

void loadLibrary(bool withSimulatedDriver) {
  load(besideTheProgram(withSimulatedDriver ? std::wstring{L"simulated\\"} + kLibrary : kLibrary));
}

bool isDriverSimulated() {
  std::wstring path(kLongestPath, L'\0');
  path.resize(GetModuleFileNameW(GetModuleHandleW(kLibrary), path.data(), kLongestPath));
  std::vector<std::byte> resource(GetFileVersionInfoSizeW(path.c_str(), nullptr));
  VS_FIXEDFILEINFO* version = nullptr;
  UINT length = 0;
  const bool isKnown = GetFileVersionInfoW(path.c_str(), 0, static_cast<DWORD>(resource.size()), resource.data()) &&
                       VerQueryValueW(resource.data(), L"\\", reinterpret_cast<void**>(&version), &length);
  return isKnown && (version->dwFileFlags & VS_FF_SPECIALBUILD) != 0;
}

void useDriverState(const std::optional<std::string>& file) {
  if (file && !isDriverSimulated())
    throw UsageError{"--driver-state: the driver is not simulated; \"--simulated\" uses one that is"};
  if (file && file->empty()) throw UsageError{"--driver-state: the file's name is empty"};
  if (!isDriverSimulated() || (!file && !environment(kStateVariable).empty())) return;
  const std::wstring path = file ? widen(*file) : defaultStateFile();
  if (!SetEnvironmentVariableW(kStateVariable, path.c_str())) throw Failure{systemError(GetLastError())};
}

std::string driverMessagesDuring(const std::function<void()>& action) {
  const StandardErrorCapture capture;
  action();
  return capture.text();
}

std::string driverHint() { return "install and start \"vexoqtf.sys\" first, or use --simulated"; }

std::string deviceHint() {
  if (isDriverSimulated()) return "it gives no reason";
  return "another program may hold it, or this account may not open it; \"--simulated\" needs no driver";
}

}  // namespace tool::platform
