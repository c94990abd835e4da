// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>
#include <span>

#include "src/channel/work_buffer.h"

namespace vqs {

struct FileCloser {
  void operator()(std::FILE* stream) const { std::fclose(stream); }
};
using File = std::unique_ptr<std::FILE, FileCloser>;

/// Null when the file cannot be opened. The path goes to the runtime as it is.
File openFile(const char* path, const char* mode);

/// One write of all bytes; errors are not looked at.
void writeBytes(std::FILE* stream, std::span<const std::byte> bytes);

/// How many bytes of a file are of use, judged by its first kHeadSize bytes, or by all when there are fewer. 0 refuses
/// the file.
using UsefulBytes = std::uint64_t (*)(std::span<const std::byte> head);
inline constexpr std::size_t kHeadSize = 64;

/// The useful bytes of a file, from its start; nothing when it is refused, cannot be read, or has 4 GiB or more. A read
/// that falls short, as of an empty file, is told on standard output.
std::optional<RuntimeBuffer> loadFile(const char* path, UsefulBytes usefulBytes);

}  // namespace vqs
