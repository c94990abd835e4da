// SPDX-License-Identifier: Apache-2.0
#include "binary/file.h"

#include <cstdint>
#include <limits>

namespace vqs {
namespace {

/// The size of an open file, which is then at its start again; nothing when it cannot be told in 32 bits.
std::optional<std::uint32_t> sizeOf(std::FILE* stream) {
  if (std::fseek(stream, 0, SEEK_END) != 0) return std::nullopt;
  const auto position = static_cast<std::int64_t>(std::ftell(stream));
  if (position < 0 || position > std::numeric_limits<std::uint32_t>::max()) return std::nullopt;
  if (std::fseek(stream, 0, SEEK_SET) != 0) return std::nullopt;
  return static_cast<std::uint32_t>(position);
}

}  // namespace

File openFile(const char* path, const char* mode) { return File{std::fopen(path, mode)}; }

void writeBytes(std::FILE* stream, std::span<const std::byte> bytes) {
  static_cast<void>(std::fwrite(bytes.data(), 1, bytes.size(), stream));
}

std::optional<RuntimeBuffer> loadFile(const char* path) {
  const File file = openFile(path, "rb");
  if (!file) return std::nullopt;
  const auto size = sizeOf(file.get());
  if (!size) return std::nullopt;
  RuntimeBuffer bytes{*size};
  if (!bytes) return std::nullopt;
  if (std::fread(bytes.bytes().data(), *size, 1, file.get()) != 1) {
    std::fputs("File not fully read...\n", stdout);
    return std::nullopt;
  }
  return bytes;
}

}  // namespace vqs
