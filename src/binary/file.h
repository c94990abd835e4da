// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdio>
#include <memory>
#include <optional>
#include <span>

#include "channel/work_buffer.h"

namespace vqs {

struct FileCloser {
  void operator()(std::FILE* stream) const { std::fclose(stream); }
};
using File = std::unique_ptr<std::FILE, FileCloser>;

/// Null when the file cannot be opened. The path goes to the runtime as it is.
File openFile(const char* path, const char* mode);

/// One write of all bytes; errors are not looked at.
void writeBytes(std::FILE* stream, std::span<const std::byte> bytes);

/// The bytes of a whole file; nothing when it cannot be read in full. A read that falls short, as of an empty file, is
/// told on standard output.
std::optional<RuntimeBuffer> loadFile(const char* path);

}  // namespace vqs
