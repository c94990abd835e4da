// SPDX-License-Identifier: Apache-2.0
#include "tests/tool/windows/file_calls.h"

#include <utility>

namespace test {
namespace {

FileCalls* current = nullptr;

/// The function itself, past the one below that has its place.
template <class Function>
Function real(const char* name) {
  return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("kernel32"), name)));
}

void see(const std::wstring& call) {
  if (current != nullptr) current->seen.push_back(call);
}

/// Whether a call fails now.
bool fails(const char* function) {
  if (current == nullptr || !current->failures.contains(function)) return false;
  const auto failure = current->failures.at(function);
  failure.before();
  SetLastError(failure.error);
  return true;
}

const std::wstring* linkAt(const std::wstring& path) {
  if (current == nullptr || !current->links.contains(path)) return nullptr;
  return &current->links.at(path);
}

/// The file behind a handle, for links that are none here.
std::map<HANDLE, std::wstring>& opened() {
  static std::map<HANDLE, std::wstring> paths;
  return paths;
}

HANDLE WINAPI createFile(LPCWSTR path, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES security, DWORD disposition,
                         DWORD flags, HANDLE pattern) {
  see(std::wstring{L"create "} + path);
  if (fails("CreateFileW")) return INVALID_HANDLE_VALUE;
  const auto* link = linkAt(path);
  const HANDLE file = real<decltype(&CreateFileW)>("CreateFileW")(link != nullptr ? link->c_str() : path, access, share,
                                                                  security, disposition, flags, pattern);
  if (link != nullptr && file != INVALID_HANDLE_VALUE) opened()[file] = *link;
  return file;
}

DWORD WINAPI getFileAttributes(LPCWSTR path) {
  see(std::wstring{L"attributes "} + path);
  if (linkAt(path) != nullptr) return FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_REPARSE_POINT;
  return real<decltype(&GetFileAttributesW)>("GetFileAttributesW")(path);
}

DWORD WINAPI getFinalPathName(HANDLE file, LPWSTR path, DWORD size, DWORD flags) {
  if (fails("GetFinalPathNameByHandleW")) return 0;
  if (!opened().contains(file))
    return real<decltype(&GetFinalPathNameByHandleW)>("GetFinalPathNameByHandleW")(file, path, size, flags);
  const std::wstring answer = L"\\\\?\\" + opened().at(file);
  return static_cast<DWORD>(answer.copy(path, size));
}

BOOL WINAPI flushFileBuffers(HANDLE file) {
  see(L"flush");
  return fails("FlushFileBuffers") ? FALSE : real<decltype(&FlushFileBuffers)>("FlushFileBuffers")(file);
}

BOOL WINAPI replaceFile(LPCWSTR target, LPCWSTR finished, LPCWSTR backup, DWORD flags, LPVOID exclude,
                        LPVOID reserved) {
  see(std::wstring{L"replace "} + finished + L" > " + target);
  if (fails("ReplaceFileW")) return FALSE;
  return real<decltype(&ReplaceFileW)>("ReplaceFileW")(target, finished, backup, flags, exclude, reserved);
}

BOOL WINAPI moveFile(LPCWSTR from, LPCWSTR to, DWORD flags) {
  see(std::wstring{L"move "} + from + L" > " + to);
  return fails("MoveFileExW") ? FALSE : real<decltype(&MoveFileExW)>("MoveFileExW")(from, to, flags);
}

}  // namespace

FileCalls::FileCalls() { current = this; }
FileCalls::~FileCalls() {
  current = nullptr;
  opened().clear();
}

void FileCalls::fail(const std::string& function, DWORD error, std::function<void()> before) {
  failures[function] = {.error = error, .before = std::move(before)};
}

void FileCalls::makeLink(const std::wstring& path, const std::wstring& target) { links[path] = target; }

}  // namespace test

// Calls go through these pointers, which the linker would otherwise take from the system's import library.
extern "C" {
extern const decltype(&CreateFileW) __imp_CreateFileW = test::createFile;
extern const decltype(&GetFileAttributesW) __imp_GetFileAttributesW = test::getFileAttributes;
extern const decltype(&GetFinalPathNameByHandleW) __imp_GetFinalPathNameByHandleW = test::getFinalPathName;
extern const decltype(&FlushFileBuffers) __imp_FlushFileBuffers = test::flushFileBuffers;
extern const decltype(&ReplaceFileW) __imp_ReplaceFileW = test::replaceFile;
extern const decltype(&MoveFileExW) __imp_MoveFileExW = test::moveFile;
}
