// SPDX-License-Identifier: Apache-2.0
#include "output_file.h"

#include <fmt/format.h>

#include <cerrno>

#include "errors.h"
#include "paths.h"
#include "platform.h"

namespace tool {
namespace {

[[noreturn]] void failToWrite(const std::string& target, const std::string& reason) {
  throw Failure{fmt::format("{} cannot be written: {}", target, reason)};
}

/// The file that is replaced in the end: where a link leads to, not the link.
std::string resolved(const std::string& target) {
  if (target.empty()) throw UsageError{"FILE: the file's name is empty"};
  std::error_code error;
  const auto status = std::filesystem::status(toPath(target), error);
  if (!std::filesystem::exists(status)) return target;
  if (std::filesystem::is_directory(status)) failToWrite(target, systemMessage(EISDIR));
  if (!std::filesystem::is_regular_file(status))
    failToWrite(target, "it is not a regular file, which is replaced whole");
  if (!std::filesystem::is_symlink(toPath(target), error)) return target;
  const auto path = std::filesystem::canonical(toPath(target), error);
  return error ? target : fromPath(path);
}

}  // namespace

OutputFile::OutputFile(const std::string& target) : target_{resolved(target)}, path_{platform::createBeside(target_)} {}

OutputFile::~OutputFile() {
  std::error_code ignored;
  if (!path_.empty()) std::filesystem::remove(toPath(path_), ignored);
}

File OutputFile::open() const {
  File file{platform::openFile(path_, "wb")};
  if (!file) failToWrite(target_, systemMessage(errno));
  return file;
}

void OutputFile::requireSpace() const {
  std::error_code error;
  const auto size = std::filesystem::file_size(toPath(path_), error);
  if (error) failToWrite(target_, error.message());
  {
    const File file{platform::openFile(path_, "ab")};
    if (!file || std::fputc(0, file.get()) == EOF || std::fflush(file.get()) != 0)
      failToWrite(target_, systemMessage(errno));
  }
  std::filesystem::resize_file(toPath(path_), size, error);
  if (error) failToWrite(target_, error.message());
}

void OutputFile::commit() {
  platform::replaceFile(path_, target_);
  path_.clear();
}

}  // namespace tool
