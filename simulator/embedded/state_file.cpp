// SPDX-License-Identifier: Apache-2.0
#include "simulator/embedded/state_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <system_error>
#include <thread>

#include "simulator/embedded/state_image.h"

namespace simulator {
namespace {

using std::chrono::steady_clock;

constexpr mode_t kOwnerOnly = S_IRUSR | S_IWUSR;
constexpr std::chrono::milliseconds kLockPollInterval{10};

std::string systemError() { return std::generic_category().message(errno); }

[[noreturn]] void fail(const std::string& what) { throw StateError(what + ": " + systemError()); }

/// Found out now, a file that cannot be replaced costs nobody his changes.
void checkFolder(const std::filesystem::path& folder) {
  if (faccessat(AT_FDCWD, folder.c_str(), W_OK | X_OK, AT_EACCESS) != 0)
    fail("cannot be written: folder " + folder.string());
}

std::filesystem::path resolve(const std::filesystem::path& path) {
  std::error_code error;
  auto resolved = std::filesystem::weakly_canonical(std::filesystem::absolute(path, error), error);
  if (error) throw StateError("cannot be found: " + error.message());
  checkFolder(resolved.parent_path());
  return resolved;
}

void waitForLock(int file, std::chrono::milliseconds timeout) {
  const auto deadline = steady_clock::now() + timeout;
  while (flock(file, LOCK_EX | LOCK_NB) != 0) {
    if (errno == EINTR) continue;
    if (errno != EWOULDBLOCK) fail("cannot be locked");
    if (steady_clock::now() >= deadline)
      throw StateError("is in use by another driver; waited " + std::to_string(timeout.count()) + " ms for its lock");
    std::this_thread::sleep_for(kLockPollInterval);
  }
}

Descriptor lockBeside(const std::filesystem::path& path, std::chrono::milliseconds timeout) {
  Descriptor file{open((path.string() + ".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, kOwnerOnly)};
  if (!file) fail("its lock file cannot be opened");
  waitForLock(file.number(), timeout);
  return file;
}

std::vector<std::byte> readUpTo(int file, std::size_t limit) {
  std::vector<std::byte> content(limit);
  std::size_t length = 0;
  while (length < limit) {
    const ssize_t count = read(file, content.data() + length, limit - length);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) fail("cannot be read");
    if (count == 0) break;
    length += static_cast<std::size_t>(count);
  }
  content.resize(length);
  return content;
}

void writeAll(int file, std::span<const std::byte> content) {
  while (!content.empty()) {
    const ssize_t count = write(file, content.data(), content.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) fail("cannot be written");
    content = content.subspan(static_cast<std::size_t>(count));
  }
}

/// A file beside another one, gone with its scope unless it takes the other's place.
class TemporaryFile {
 public:
  explicit TemporaryFile(const std::filesystem::path& destination)
      : destination_(destination), name_(destination.string() + ".XXXXXX"), file_(mkostemp(name_.data(), O_CLOEXEC)) {
    if (!file_) fail("cannot be written");
  }
  ~TemporaryFile() {
    if (!name_.empty()) unlink(name_.c_str());
  }
  TemporaryFile(TemporaryFile&&) = delete;

  [[nodiscard]] int number() const { return file_.number(); }

  void takePlace() {
    if (fsync(number()) != 0 || rename(name_.c_str(), destination_.c_str()) != 0) fail("cannot be written");
    name_.clear();
  }

 private:
  const std::filesystem::path& destination_;
  std::string name_;
  Descriptor file_;
};

/// Makes a rename last. The content is safe either way, so a system that cannot do this is not an error.
void syncFolder(const std::filesystem::path& folder) {
  const Descriptor file{open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)};
  if (file) static_cast<void>(fsync(file.number()));
}

}  // namespace

StateFile::StateFile(const std::filesystem::path& path, std::chrono::milliseconds lockTimeout)
    : path_(resolve(path)), lock_(lockBeside(path_, lockTimeout)) {}

std::optional<std::vector<std::byte>> StateFile::read() const {
  // Without waiting: a pipe of that name must not hold up the caller.
  const Descriptor file{open(path_.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)};
  if (!file && errno == ENOENT) return std::nullopt;
  if (!file) fail("cannot be read");
  struct stat status{};
  if (fstat(file.number(), &status) != 0) fail("cannot be read");
  if (!S_ISREG(status.st_mode)) throw StateError("is not a regular file");
  if (static_cast<std::uint64_t>(status.st_size) > kLongestImage) throw StateError("is longer than any state");
  return readUpTo(file.number(), static_cast<std::size_t>(status.st_size));
}

void StateFile::replace(std::span<const std::byte> content) const {
  TemporaryFile file{path_};
  writeAll(file.number(), content);
  file.takePlace();
  syncFolder(path_.parent_path());
}

}  // namespace simulator
