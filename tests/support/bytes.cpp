// SPDX-License-Identifier: Apache-2.0
#include "tests/support/bytes.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>

namespace test {
namespace {

[[noreturn]] void stop(const char* why) {
  std::fprintf(stderr, "mistake in a test: %s\n", why);
  std::abort();
}

int digit(char character) {
  if (character >= '0' && character <= '9') return character - '0';
  if (character >= 'a' && character <= 'f') return character - 'a' + 10;
  if (character >= 'A' && character <= 'F') return character - 'A' + 10;
  stop("not a hexadecimal digit");
}

std::string format(const char* pattern, std::size_t first, unsigned second, unsigned third) {
  char text[96];
  std::snprintf(text, sizeof(text), pattern, first, second, third);
  return text;
}

std::string dump(std::span<const std::uint8_t> bytes, std::size_t around) {
  const std::size_t first = around < 16 ? 0 : (around - 16) / 16 * 16;
  std::string text;
  for (std::size_t i = first; i < std::min(bytes.size(), first + 64); ++i) {
    if (i % 16 == 0) text += format("\n  %05zx ", i, 0, 0);
    text += format(" %02zx", bytes[i], 0, 0);
  }
  return text;
}

}  // namespace

Bytes hex(std::string_view text) {
  Bytes bytes;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (std::isspace(static_cast<unsigned char>(text[i])) != 0) continue;
    if (i + 1 == text.size()) stop("half a byte");
    bytes.push_back(static_cast<std::uint8_t>(digit(text[i]) << 4 | digit(text[i + 1])));
    ++i;
  }
  return bytes;
}

Record& Record::put(std::size_t offset, std::span<const std::uint8_t> bytes) {
  if (offset + bytes.size() > bytes_.size()) stop("outside the record");
  std::ranges::copy(bytes, bytes_.begin() + static_cast<std::ptrdiff_t>(offset));
  return *this;
}

Record& Record::fill(std::size_t offset, std::size_t count, std::uint8_t value) {
  return put(offset, Bytes(count, value));
}

Record& Record::text(std::size_t offset, std::string_view text) { return put(offset, Bytes(text.begin(), text.end())); }

Record& Record::text16(std::size_t offset, std::u16string_view text) {
  for (const char16_t unit : text) {
    u16(offset, unit);
    offset += 2;
  }
  return *this;
}

Record& Record::little(std::size_t offset, std::uint64_t value, std::size_t width) {
  Bytes bytes;
  for (std::size_t i = 0; i < width; ++i) bytes.push_back(static_cast<std::uint8_t>(value >> 8 * i));
  return put(offset, bytes);
}

void requireSize(const Bytes& bytes, std::size_t size) {
  if (bytes.size() != size) stop("not the record's size");
}

Bytes joined(const std::vector<Bytes>& parts) {
  Bytes all;
  for (const auto& part : parts) all.insert(all.end(), part.begin(), part.end());
  return all;
}

std::string difference(std::span<const std::uint8_t> actual, std::span<const std::uint8_t> expected) {
  const std::size_t common = std::min(actual.size(), expected.size());
  for (std::size_t i = 0; i < common; ++i)
    if (actual[i] != expected[i])
      return format("byte 0x%zX is %02x, expected %02x", i, actual[i], expected[i]) + "\nactual" + dump(actual, i) +
             "\nexpected" + dump(expected, i);
  if (actual.size() == expected.size()) return {};
  return std::to_string(actual.size()) + " bytes, expected " + std::to_string(expected.size());
}

}  // namespace test
