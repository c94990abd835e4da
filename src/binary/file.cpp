// SPDX-License-Identifier: Apache-2.0
#include "src/binary/file.h"

#include <algorithm>
#include <array>
#include <cstring>
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

/// Files up to this size are read in one piece. Of larger ones the head is looked at first, so that a file that is not
/// a policy binary, or announces too much, takes no memory.
constexpr std::size_t kSmallFile = std::size_t{128} * 1024;

std::optional<LoadedFile> loadWhole(std::FILE* stream, std::size_t size, UsefulBytes usefulBytes) {
  UnclearedBuffer memory{size};
  if (!memory) return std::nullopt;
  const auto bytes = memory.bytes().first(size);
  if (!readAll(stream, bytes)) return std::nullopt;
  const std::uint64_t useful = usefulBytes(bytes.first(std::min(size, kHeadSize)));
  if (useful == 0) return std::nullopt;
  return LoadedFile{std::move(memory), std::min<std::size_t>(useful, size)};
}

std::optional<LoadedFile> loadHeadFirst(std::FILE* stream, std::size_t size, UsefulBytes usefulBytes) {
  std::array<std::byte, kHeadSize> head;
  if (!readAll(stream, head)) return std::nullopt;
  const std::uint64_t useful = std::min<std::uint64_t>(usefulBytes(head), size);
  if (useful == 0) return std::nullopt;
  UnclearedBuffer memory{std::max<std::size_t>(useful, head.size())};
  if (!memory) return std::nullopt;
  std::memcpy(memory.bytes().data(), head.data(), head.size());
  const auto rest = memory.bytes().subspan(head.size());
  if (!rest.empty() && !readAll(stream, rest)) return std::nullopt;
  return LoadedFile{std::move(memory), useful};
}

}  // namespace

File openFile(const char* path, const char* mode) { return File{std::fopen(path, mode)}; }

void writeBytes(std::FILE* stream, std::span<const std::byte> bytes) {
  static_cast<void>(std::fwrite(bytes.data(), 1, bytes.size(), stream));
}

std::optional<LoadedFile> loadFile(const char* path, UsefulBytes usefulBytes) {
  const File file = openFile(path, "rb");
  if (!file) return std::nullopt;
  // A stream with a buffer reads the end of the file to find its size, and then everything through the buffer.
  static_cast<void>(std::setvbuf(file.get(), nullptr, _IONBF, 0));
  const auto size = sizeOf(file.get());
  if (!size) return std::nullopt;
  return *size <= kSmallFile ? loadWhole(file.get(), *size, usefulBytes)
                             : loadHeadFirst(file.get(), *size, usefulBytes);
}

}  // namespace vqs
