// SPDX-License-Identifier: Apache-2.0
#include <windows.h>

#include <cstdio>

#include "simulator/embedded/state_file.h"
#include "simulator/embedded/system.h"
#include "simulator/embedded/windows_text.h"

namespace simulator {
namespace {

/// Paths of this program are UTF-8.
using WidePath = WideText<4096>;

HANDLE handleOf(std::intptr_t file) { return reinterpret_cast<HANDLE>(file); }

/// A file handle that is closed with its scope.
class File {
 public:
  explicit File(HANDLE handle) : handle_(handle) {}
  ~File() {
    if (isOpen()) CloseHandle(handle_);
  }
  File(File&&) = delete;

  [[nodiscard]] bool isOpen() const { return handle_ != INVALID_HANDLE_VALUE; }
  [[nodiscard]] HANDLE get() const { return handle_; }

 private:
  HANDLE handle_;
};

/// Opens a file that nobody else has open, or can open until it is closed.
HANDLE openAlone(const wchar_t* path, DWORD disposition) {
  return CreateFileW(path, GENERIC_READ | GENERIC_WRITE, 0, nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
}

bool isFolder(const wchar_t* path) {
  const DWORD attributes = GetFileAttributesW(path);
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

Reason waitToOpen(const wchar_t* path, std::uint32_t longestWait, HANDLE& file) {
  const std::uint64_t start = GetTickCount64();
  if (isFolder(path)) return Reason{"is not a regular file"};
  while ((file = openAlone(path, OPEN_ALWAYS)) == INVALID_HANDLE_VALUE) {
    constexpr DWORD kInterval = 10;
    if (GetLastError() != ERROR_SHARING_VIOLATION) return system::failure("cannot be opened");
    if (GetTickCount64() - start >= longestWait)
      return Reason{"is in use by another driver; waited %lu ms for it", static_cast<unsigned long>(longestWait)};
    Sleep(kInterval);
  }
  return {};
}

/// Reserves the file's room on the disk. Writing to a mapped page when the disk is full would end the process.
Reason reserve(HANDLE file, std::size_t size) {
  LARGE_INTEGER end{};
  end.QuadPart = static_cast<LONGLONG>(size);
  if (SetFilePointerEx(file, end, nullptr, FILE_BEGIN) && SetEndOfFile(file)) return {};
  return system::failure("cannot be written");
}

Reason writeAll(HANDLE file, std::span<const std::byte> content) {
  DWORD count = 0;
  const auto size = static_cast<DWORD>(content.size());
  const bool isWritten =
      WriteFile(file, content.data(), size, &count, nullptr) && count == size && FlushFileBuffers(file);
  return isWritten ? Reason{} : system::failure("cannot be written");
}

}  // namespace

Reason StateFile::open(const char* path, std::uint32_t longestWait) {
  close();
  WidePath wide;
  if (!wide.assign(path)) return Reason{"cannot be opened: the path is too long"};
  HANDLE file = INVALID_HANDLE_VALUE;
  if (Reason reason = waitToOpen(wide.text(), longestWait, file)) return reason;
  file_ = reinterpret_cast<std::intptr_t>(file);
  LARGE_INTEGER length{};
  Reason reason;
  if (GetFileType(file) != FILE_TYPE_DISK)
    reason = Reason{"is not a regular file"};
  else if (!GetFileSizeEx(file, &length))
    reason = system::failure("cannot be read");
  length_ = static_cast<std::uint64_t>(length.QuadPart);
  if (reason) close();
  return reason;
}

void StateFile::close() {
  if (memory_ != nullptr) UnmapViewOfFile(memory_);
  if (file_ != kNone) CloseHandle(handleOf(file_));
  file_ = kNone;
  memory_ = nullptr;
  size_ = 0;
}

Reason StateFile::read(std::span<std::byte> content) const {
  OVERLAPPED beginning{};
  DWORD count = 0;
  const auto size = static_cast<DWORD>(content.size());
  if (size == 0) return {};
  if (!ReadFile(handleOf(file_), content.data(), size, &count, &beginning)) return system::failure("cannot be read");
  return count == size ? Reason{} : Reason{"is cut short"};
}

Reason StateFile::map(std::size_t size) {
  const HANDLE file = handleOf(file_);
  if (length_ < size)
    if (Reason reason = reserve(file, size)) return reason;
  const HANDLE mapping = CreateFileMappingW(file, nullptr, PAGE_READWRITE, 0, static_cast<DWORD>(size), nullptr);
  if (mapping == nullptr) return system::failure("cannot be brought into memory");
  void* const memory = MapViewOfFile(mapping, FILE_MAP_WRITE, 0, 0, size);
  const Reason reason = memory != nullptr ? Reason{} : system::failure("cannot be brought into memory");
  // The mapped view keeps the mapping alive.
  CloseHandle(mapping);
  memory_ = static_cast<std::byte*>(memory);
  size_ = size;
  return reason;
}

Reason StateFile::replace(const char* path, std::span<const std::byte> content) {
  WidePath target;
  WidePath name;
  char narrowName[4200];
  std::snprintf(narrowName, sizeof(narrowName), "%s.%lu.new", path, GetCurrentProcessId());
  if (!target.assign(path) || !name.assign(narrowName)) return Reason{"cannot be written: the path is too long"};
  Reason reason;
  {
    const File file{openAlone(name.text(), CREATE_ALWAYS)};
    reason = file.isOpen() ? writeAll(file.get(), content) : system::failure("cannot be written");
  }
  // An open file cannot be replaced.
  close();
  if (!reason && !MoveFileExW(name.text(), target.text(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
    reason = system::failure("cannot be written");
  if (reason) DeleteFileW(name.text());
  return reason;
}

}  // namespace simulator
