// SPDX-License-Identifier: Apache-2.0
#include <fcntl.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdlib>

#include "simulator/embedded/state_file.h"
#include "simulator/embedded/system.h"

namespace simulator {
namespace {

constexpr mode_t kOwnerOnly = S_IRUSR | S_IWUSR;

bool isSameFile(const struct stat& left, const struct stat& right) {
  return left.st_dev == right.st_dev && left.st_ino == right.st_ino;
}

/// Whether the path still names the file that was opened. Another process may have put a new file in its place.
bool leadsTo(const char* path, const struct stat& opened) {
  struct stat found{};
  return stat(path, &found) == 0 && isSameFile(found, opened);
}

Reason waitForLock(int file, std::uint32_t longestWait) {
  const std::uint64_t start = system::milliseconds();
  while (flock(file, LOCK_EX | LOCK_NB) != 0) {
    constexpr useconds_t kInterval = 10'000;
    if (errno != EWOULDBLOCK && errno != EINTR) return system::failure("cannot be locked");
    if (system::milliseconds() - start >= longestWait)
      return Reason{"is in use by another driver; waited %u ms for its lock", longestWait};
    usleep(kInterval);
  }
  return {};
}

/// Unlocks the file before closing it: the lock would otherwise last until every process forked meanwhile, which has
/// the file open too, has closed it.
void letGoOf(int file) {
  flock(file, LOCK_UN);
  close(file);
}

/// Opens and locks the file at the path; `isCurrent` is false when the path names another file by then.
Reason openLocked(const char* path, std::uint32_t longestWait, int& file, std::uint64_t& length, bool& isCurrent) {
  // O_NONBLOCK: opening a pipe of that name would wait for its other end.
  file = open(path, O_RDWR | O_CREAT | O_CLOEXEC | O_NONBLOCK, kOwnerOnly);
  if (file == -1) return errno == EISDIR ? Reason{"is not a regular file"} : system::failure("cannot be opened");
  struct stat status{};
  if (fstat(file, &status) != 0) return system::failure("cannot be read");
  if (!S_ISREG(status.st_mode)) return Reason{"is not a regular file"};
  if (Reason reason = waitForLock(file, longestWait)) return reason;
  if (fstat(file, &status) != 0) return system::failure("cannot be read");
  length = static_cast<std::uint64_t>(status.st_size);
  isCurrent = leadsTo(path, status);
  return {};
}

/// Reserves the file's room on the disk. Writing to a mapped page when the disk is full would end the process.
Reason reserve(int file, std::size_t size) {
  if (fallocate(file, 0, 0, static_cast<off_t>(size)) == 0) return {};
  if (errno != EOPNOTSUPP && errno != ENOSYS) return system::failure("cannot be written");
  return ftruncate(file, static_cast<off_t>(size)) == 0 ? Reason{} : system::failure("cannot be written");
}

Reason writeAll(int file, std::span<const std::byte> content) {
  while (!content.empty()) {
    const ssize_t count = write(file, content.data(), content.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return system::failure("cannot be written");
    content = content.subspan(static_cast<std::size_t>(count));
  }
  return fsync(file) == 0 ? Reason{} : system::failure("cannot be written");
}

}  // namespace

Reason StateFile::open(const char* path, std::uint32_t longestWait) {
  for (bool isCurrent = false; !isCurrent;) {
    close();
    int file = -1;
    Reason reason = openLocked(path, longestWait, file, length_, isCurrent);
    file_ = file;
    if (!reason) continue;
    close();
    return reason;
  }
  return {};
}

void StateFile::close() {
  if (memory_ != nullptr) munmap(memory_, size_);
  if (file_ != kNone) letGoOf(static_cast<int>(file_));
  file_ = kNone;
  memory_ = nullptr;
  size_ = 0;
}

Reason StateFile::read(std::span<std::byte> content) const {
  std::size_t done = 0;
  while (done < content.size()) {
    const auto rest = content.subspan(done);
    const ssize_t count = pread(static_cast<int>(file_), rest.data(), rest.size(), static_cast<off_t>(done));
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return system::failure("cannot be read");
    if (count == 0) return Reason{"is cut short"};
    done += static_cast<std::size_t>(count);
  }
  return {};
}

Reason StateFile::map(std::size_t size) {
  const int file = static_cast<int>(file_);
  if (length_ < size)
    if (Reason reason = reserve(file, size)) return reason;
  void* const memory = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
  if (memory == MAP_FAILED) return system::failure("cannot be brought into memory");
  memory_ = static_cast<std::byte*>(memory);
  size_ = size;
  return {};
}

Reason StateFile::replace(const char* path, std::span<const std::byte> content) {
  // The place of the file itself, where the path is a link.
  char target[PATH_MAX] = {};
  char name[PATH_MAX + 8] = {};
  if (realpath(path, target) == nullptr) return system::failure("cannot be written");
  std::snprintf(name, sizeof(name), "%s.XXXXXX", target);
  const int file = mkostemp(name, O_CLOEXEC);
  if (file == -1) return system::failure("cannot be written");
  Reason reason = writeAll(file, content);
  if (!reason && rename(name, target) != 0) reason = system::failure("cannot be written");
  if (reason) unlink(name);
  ::close(file);
  close();
  return reason;
}

}  // namespace simulator
