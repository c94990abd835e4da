// SPDX-License-Identifier: Apache-2.0
#include "tool/system/output_file.h"

#include <fmt/format.h>

#include <cerrno>

#include "tool/system/files.h"
#include "tool/terminal/errors.h"

namespace tool {
namespace {

[[noreturn]] void failToWrite(const std::string& target, const std::string& reason) {
  throw Failure{fmt::format("{} cannot be written: {}", target, reason)};
}

/// The file that is replaced in the end: where a link leads to, not the link.
std::string resolved(const std::string& target) {
  if (target.empty()) throw UsageError{"FILE: the file's name is empty"};
  const auto kind = platform::fileKind(target);
  if (kind == platform::FileKind::kFolder) failToWrite(target, systemMessage(EISDIR));
  if (kind == platform::FileKind::kOther) failToWrite(target, "it is not a regular file, which is replaced whole");
  return platform::linkTarget(target);
}

bool appendByte(const std::string& path) {
  const File file{platform::openFile(path, "ab")};
  return file && std::fputc(0, file.get()) != EOF && std::fflush(file.get()) == 0;
}

}  // namespace

OutputFile::OutputFile(const std::string& target) : target_{resolved(target)}, path_{platform::createBeside(target_)} {}

OutputFile::~OutputFile() {
  if (!path_.empty()) platform::removeFile(path_);
}

File OutputFile::open() const {
  File file{platform::openFile(path_, "wb")};
  if (!file) failToWrite(target_, systemMessage(errno));
  return file;
}

void OutputFile::requireSpace() const {
  const auto size = platform::fileSize(path_);
  if (!size || !appendByte(path_) || !platform::resizeFile(path_, *size)) failToWrite(target_, systemMessage(errno));
}

void OutputFile::commit() {
  platform::replaceFile(path_, target_);
  path_.clear();
}

}  // namespace tool
