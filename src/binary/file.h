// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>
#include <span>
#include <utility>

#include "src/channel/work_buffer.h"

namespace vqs {

struct FileCloser {
  void operator()(std::FILE* stream) const { std::fclose(stream); }
};
using File = std::unique_ptr<std::FILE, FileCloser>;

/// Opens a file with fopen, which gets path and mode unchanged. Null when it cannot be opened.
File openFile(const char* path, const char* mode);

/// Writes all bytes with one fwrite, whose errors are not reported (compatibility.md: write-errors).
void writeBytes(std::FILE* stream, std::span<const std::byte> bytes);

/// A function that tells from the first kHeadSize bytes of a file, or from all when there are fewer, how many bytes of
/// it are worth reading. 0 refuses the file.
using UsefulBytes = std::uint64_t (*)(std::span<const std::byte> head);
inline constexpr std::size_t kHeadSize = 64;

/// The bytes of a file.
class LoadedFile {
 public:
  LoadedFile(UnclearedBuffer memory, std::size_t size) : memory_(std::move(memory)), size_(size) {}
  [[nodiscard]] std::span<const std::byte> bytes() const { return memory_.bytes().first(size_); }

 private:
  UnclearedBuffer memory_;
  std::size_t size_;
};

/// Reads a file from its start, as far as `usefulBytes` says. Nothing when `usefulBytes` refuses it, when it cannot be
/// read, or when it has 4 GiB or more. A message on standard output tells when fewer bytes could be read than the file
/// is long, and when the file is empty.
std::optional<LoadedFile> loadFile(const char* path, UsefulBytes usefulBytes);

}  // namespace vqs
