// SPDX-License-Identifier: Apache-2.0
#include "tool/system/input_file.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>

#include "tool/system/files.h"
#include "tool/terminal/errors.h"

namespace tool {
namespace {

[[noreturn]] void failToRead(const std::string& path, int error) {
  throw Failure{fmt::format("{} cannot be read: {}", path, systemMessage(error))};
}

/// Checks what can be checked without opening the file: opening a pipe would wait for its other end.
void requireRegularFile(const std::string& path) {
  const auto kind = platform::fileKind(path);
  if (kind == platform::FileKind::kFolder) failToRead(path, EISDIR);
  if (kind == platform::FileKind::kOther)
    throw Failure{fmt::format("{} cannot be read: it is not a regular file", path)};
}

}  // namespace

InputFile::InputFile(const std::string& path) : path_{path} {
  if (path.empty()) throw UsageError{"FILE: the file's name is empty"};
  requireRegularFile(path);
  file_.reset(platform::openFile(path, "rb"));
  if (!file_) failToRead(path, errno);
}

InputFile InputFile::standardInput() {
  InputFile input;
  input.path_ = "standard input";
  return input;
}

void InputFile::readUpTo(std::uint64_t size, std::vector<std::byte>& bytes) {
  constexpr std::uint64_t kPiece = 65536;
  std::FILE* const stream = file_ ? file_.get() : stdin;
  while (bytes.size() < size) {
    const std::size_t had = bytes.size();
    bytes.resize(had + static_cast<std::size_t>(std::min(size - had, std::max<std::uint64_t>(had, kPiece))));
    errno = 0;
    const std::size_t read = std::fread(bytes.data() + had, 1, bytes.size() - had, stream);
    const bool isWhole = had + read == bytes.size();
    bytes.resize(had + read);
    if (std::ferror(stream) != 0) failToRead(path_, errno != 0 ? errno : EIO);
    if (!isWhole) return;
  }
}

}  // namespace tool
