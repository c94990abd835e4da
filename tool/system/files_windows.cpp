// SPDX-License-Identifier: Apache-2.0
#include "tool/system/files.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <io.h>

#include <algorithm>
#include <array>
#include <cerrno>

#include "tool/system/windows_text.h"
#include "tool/terminal/errors.h"

// std::filesystem is not asked here: as the C runtime, it takes "\\?\" for wildcards, and knows no symbolic links.
namespace tool::platform {
namespace {

std::wstring fullPath(const std::wstring& path) {
  std::wstring full(kLongestPath, L'\0');
  full.resize(GetFullPathNameW(path.c_str(), kLongestPath, full.data(), nullptr));
  return full;
}

bool isDevicePath(const std::wstring& path) { return path.starts_with(L"\\\\.\\"); }

/// The path as Windows takes it: one that is too long for its usual form in the form that has no limit, in which
/// everything has to be written out.
std::wstring systemPath(const std::string& path) {
  std::wstring given = widen(path);
  if (given.starts_with(L"\\\\?\\")) return given;
  const std::wstring full = fullPath(given);
  if (full.size() < MAX_PATH || isDevicePath(full)) return given;
  return full.starts_with(L"\\\\") ? L"\\\\?\\UNC" + full.substr(1) : L"\\\\?\\" + full;
}

class OpenFile {
 public:
  OpenFile(const std::wstring& path, DWORD access)
      : handle_{CreateFileW(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                            OPEN_EXISTING, 0, nullptr)} {}
  ~OpenFile() {
    if (*this) CloseHandle(handle_);
  }
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;

  explicit operator bool() const { return handle_ != INVALID_HANDLE_VALUE; }
  [[nodiscard]] HANDLE get() const { return handle_; }

 private:
  HANDLE handle_;
};

[[noreturn]] void failToWrite(const std::string& target, DWORD error) {
  throw Failure{fmt::format("{} cannot be written: {}", target,
                            error == ERROR_SHARING_VIOLATION ? "another program has it open" : systemError(error))};
}

/// The error of a call that has just come back.
DWORD errorOf(bool succeeded) { return succeeded ? ERROR_SUCCESS : GetLastError(); }

template <std::size_t size>
bool isOneOf(DWORD error, const std::array<DWORD, size>& errors) {
  return std::ranges::find(errors, error) != errors.end();
}

/// The errors with which file systems, of networks above all, answer a function that they do not have.
constexpr std::array<DWORD, 4> kUnknownFunction = {ERROR_INVALID_FUNCTION, ERROR_NOT_SUPPORTED, ERROR_INVALID_PARAMETER,
                                                   ERROR_CALL_NOT_IMPLEMENTED};

/// ReplaceFileW has stopped on its way, and the finished file is still there under its own name.
constexpr std::array<DWORD, 4> kNotReplaced = {ERROR_UNABLE_TO_REMOVE_REPLACED, ERROR_UNABLE_TO_MOVE_REPLACEMENT,
                                               ERROR_UNABLE_TO_MOVE_REPLACEMENT_2, ERROR_FILE_NOT_FOUND};

/// Writes the file to the disk before it is put in its place, so that it is complete there even after a loss of power.
DWORD store(const std::wstring& path) {
  const OpenFile file{path, GENERIC_WRITE};
  const DWORD error = errorOf(file && FlushFileBuffers(file.get()));
  return isOneOf(error, kUnknownFunction) ? ERROR_SUCCESS : error;
}

DWORD move(const std::wstring& from, const std::wstring& to) {
  return errorOf(MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0);
}

/// Takes over the access list and the attributes of what is replaced, as far as this account may set them.
DWORD replace(const std::wstring& from, const std::wstring& to) {
  const DWORD error =
      errorOf(ReplaceFileW(to.c_str(), from.c_str(), nullptr, REPLACEFILE_IGNORE_MERGE_ERRORS, nullptr, nullptr) != 0);
  return isOneOf(error, kUnknownFunction) || isOneOf(error, kNotReplaced) ? move(from, to) : error;
}

}  // namespace

FileKind fileKind(const std::string& path) {
  if (isDevicePath(fullPath(widen(path)))) return FileKind::other;
  const DWORD attributes = GetFileAttributesW(systemPath(path).c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) return FileKind::none;
  return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? FileKind::folder : FileKind::regular;
}

std::FILE* openFile(const std::string& path, const char* mode) {
  return _wfopen(systemPath(path).c_str(), widen(mode).c_str());
}

std::optional<std::uintmax_t> fileSize(const std::string& path) {
  const OpenFile file{systemPath(path), FILE_READ_ATTRIBUTES};
  LARGE_INTEGER size{};
  if (file && GetFileSizeEx(file.get(), &size)) return static_cast<std::uintmax_t>(size.QuadPart);
  errno = EIO;
  return std::nullopt;
}

bool resizeFile(const std::string& path, std::uintmax_t size) {
  const int file = _wopen(systemPath(path).c_str(), _O_RDWR | _O_BINARY);
  if (file == -1) return false;
  const bool isDone = _chsize_s(file, static_cast<long long>(size)) == 0;
  return _close(file) == 0 && isDone;
}

void removeFile(const std::string& path) { DeleteFileW(systemPath(path).c_str()); }

std::string libraryPath(const std::string& path) {
  if (GetACP() == CP_UTF8) return narrow(systemPath(path));
  BOOL lossy = FALSE;
  std::string narrowed = narrow(systemPath(path), CP_ACP, &lossy);
  if (lossy)
    throw Failure{
        fmt::format("{}: the path has characters that this Windows cannot pass on to the library, whose paths "
                    "are 8-bit: use another name",
                    path)};
  return narrowed;
}

std::string linkTarget(const std::string& path) {
  const DWORD attributes = GetFileAttributesW(systemPath(path).c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) return path;
  std::wstring target(kLongestPath, L'\0');
  const OpenFile file{systemPath(path), FILE_READ_ATTRIBUTES};
  target.resize(file ? GetFinalPathNameByHandleW(file.get(), target.data(), kLongestPath, 0) : 0);
  if (target.empty())
    throw Failure{
        fmt::format("{} cannot be written: its link cannot be followed: {}", path, systemError(GetLastError()))};
  return narrow(target);
}

std::string createBeside(const std::string& target) {
  constexpr int kAttempts = 1000;
  DWORD error = ERROR_FILE_EXISTS;
  for (int attempt = 0; attempt < kAttempts && error == ERROR_FILE_EXISTS; ++attempt) {
    std::string path = fmt::format("{}.{}-{}.new", target, GetCurrentProcessId(), attempt);
    const HANDLE file =
        CreateFileW(systemPath(path).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file != INVALID_HANDLE_VALUE) {
      CloseHandle(file);
      return path;
    }
    error = GetLastError();
  }
  failToWrite(target, error);
}

void replaceFile(const std::string& finished, const std::string& target) {
  // Wine replaces files under their full paths only.
  const std::wstring from = fullPath(systemPath(finished));
  const std::wstring to = fullPath(systemPath(target));
  DWORD error = store(from);
  if (error == ERROR_SUCCESS)
    error = GetFileAttributesW(to.c_str()) == INVALID_FILE_ATTRIBUTES ? move(from, to) : replace(from, to);
  if (error != ERROR_SUCCESS) failToWrite(target, error);
}

}  // namespace tool::platform
