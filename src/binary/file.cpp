// SPDX-License-Identifier: Apache-2.0
#include "src/binary/file.h"

#include <algorithm>
#include <array>
#include <limits>

#include "src/channel/windows_api.h"

namespace vqs {
namespace {

/// The size of an open file, which is left at its start; nothing when the size cannot be had or needs more than 32
/// bits.
std::optional<std::uint32_t> sizeOf(std::FILE* stream) {
  if (std::fseek(stream, 0, SEEK_END) != 0) return std::nullopt;
  const std::int64_t position = _ftelli64(stream);
  if (position < 0 || position > std::numeric_limits<std::uint32_t>::max()) return std::nullopt;
  if (std::fseek(stream, 0, SEEK_SET) != 0) return std::nullopt;
  return static_cast<std::uint32_t>(position);
}

/// Reads as many bytes as there is room for. When there are fewer it says so on standard output, the library's only
/// message (compatibility.md: read-message).
bool readAll(std::FILE* stream, std::span<std::byte> bytes) {
  if (std::fread(bytes.data(), bytes.size(), 1, stream) == 1) return true;
  std::fputs("File not fully read...\n", stdout);
  return false;
}

}  // namespace

File openFile(const char* path, const char* mode) { return File{std::fopen(path, mode)}; }

void writeBytes(std::FILE* stream, std::span<const std::byte> bytes) {
  static_cast<void>(std::fwrite(bytes.data(), 1, bytes.size(), stream));
}

std::optional<RuntimeBuffer> loadFile(const char* path, UsefulBytes usefulBytes) {
  const File file = openFile(path, "rb");
  if (!file) return std::nullopt;
  const auto size = sizeOf(file.get());
  if (!size) return std::nullopt;
  std::array<std::byte, kHeadSize> space;
  const auto head = std::span{space}.first(std::min<std::size_t>(*size, kHeadSize));
  if (!readAll(file.get(), head)) return std::nullopt;
  const std::uint64_t useful = std::min<std::uint64_t>(usefulBytes(head), *size);
  if (useful == 0) return std::nullopt;
  RuntimeBuffer bytes{std::max<std::size_t>(useful, head.size())};
  if (!bytes) return std::nullopt;
  std::ranges::copy(head, bytes.bytes().begin());
  const auto rest = bytes.bytes().subspan(head.size());
  if (!rest.empty() && !readAll(file.get(), rest)) return std::nullopt;
  return bytes;
}

}  // namespace vqs
