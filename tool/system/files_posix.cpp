// SPDX-License-Identifier: Apache-2.0
#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>

#include "tool/system/files.h"
#include "tool/terminal/errors.h"

namespace tool::platform {
namespace {

/// Has a file or a folder written to its disk; false, with errno telling why, when it is not.
bool store(const std::string& path) {
  const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor == -1) return false;
  const bool isStored = ::fsync(descriptor) == 0;
  const int error = errno;
  ::close(descriptor);
  errno = error;
  return isStored;
}

bool takeOverMode(const std::string& finished, const std::string& target) {
  struct stat existing{};
  return stat(target.c_str(), &existing) != 0 || chmod(finished.c_str(), existing.st_mode & 07777) == 0;
}

/// A file's name is in its folder, which some file systems store by themselves, and some users may not open.
bool storeFolderOf(const std::string& path) {
  const auto folder = std::filesystem::path{path}.parent_path();
  return store(folder.empty() ? "." : folder.string()) || errno == EINVAL || errno == EACCES;
}

}  // namespace

FileKind fileKind(const std::string& path) {
  struct stat status{};
  if (stat(path.c_str(), &status) != 0) return FileKind::kNone;
  if (S_ISDIR(status.st_mode)) return FileKind::kFolder;
  return S_ISREG(status.st_mode) ? FileKind::kRegular : FileKind::kOther;
}

std::optional<std::uintmax_t> fileSize(const std::string& path) {
  struct stat status{};
  if (stat(path.c_str(), &status) != 0) return std::nullopt;
  return static_cast<std::uintmax_t>(status.st_size);
}

bool resizeFile(const std::string& path, std::uintmax_t size) {
  return truncate(path.c_str(), static_cast<off_t>(size)) == 0;
}

void removeFile(const std::string& path) { static_cast<void>(unlink(path.c_str())); }

std::string linkTarget(const std::string& path) {
  std::error_code error;
  if (!std::filesystem::is_symlink(path, error)) return path;
  const auto target = std::filesystem::canonical(path, error);
  if (!error) return target.string();
  throw Failure{fmt::format("{} cannot be written: its link cannot be followed: {}", path, error.message())};
}

std::FILE* openFile(const std::string& path, const char* mode) { return std::fopen(path.c_str(), mode); }

std::string libraryPath(const std::string& path) { return path; }

std::string createBeside(const std::string& target) {
  constexpr int kAttempts = 1000;
  int error = EEXIST;
  for (int attempt = 0; attempt < kAttempts && error == EEXIST; ++attempt) {
    std::string path = fmt::format("{}.{}-{}.new", target, getpid(), attempt);
    const int descriptor = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (descriptor != -1) {
      ::close(descriptor);
      return path;
    }
    error = errno;
  }
  throw Failure{fmt::format("{} cannot be written: {}", target, systemMessage(error))};
}

void replaceFile(const std::string& finished, const std::string& target) {
  if (!store(finished) || !takeOverMode(finished, target) || rename(finished.c_str(), target.c_str()) != 0 ||
      !storeFolderOf(target))
    throw Failure{fmt::format("{} cannot be written: {}", target, systemMessage(errno))};
}

}  // namespace tool::platform
