// SPDX-License-Identifier: Apache-2.0
#include "documents/text/utf.h"

namespace documents {
namespace {

constexpr bool isContinuation(unsigned char byte) { return (byte & 0xC0) == 0x80; }
constexpr bool isSurrogate(char32_t value) { return value >= 0xD800 && value <= 0xDFFF; }
constexpr bool isHigh(char32_t value) { return value >= 0xD800 && value <= 0xDBFF; }
constexpr bool isLow(char32_t value) { return value >= 0xDC00 && value <= 0xDFFF; }

/// What the first byte of a sequence says: how long it is, its own bits, and the least value that needs this length.
struct Lead {
  std::size_t bytes;
  char32_t bits;
  char32_t least;
};

constexpr Lead leadOf(unsigned char byte) {
  if (byte < 0x80) return {.bytes = 1, .bits = byte, .least = 0};
  if (byte < 0xC0) return {.bytes = 0, .bits = 0, .least = 0};
  if (byte < 0xE0) return {.bytes = 2, .bits = byte & 0x1FU, .least = 0x80};
  if (byte < 0xF0) return {.bytes = 3, .bits = byte & 0x0FU, .least = 0x800};
  if (byte < 0xF8) return {.bytes = 4, .bits = byte & 0x07U, .least = 0x10000};
  return {.bytes = 0, .bits = 0, .least = 0};
}

/// As nextCharacter, with surrogates in three bytes for characters.
std::optional<Character> nextOrSurrogate(std::string_view utf8) {
  if (utf8.empty()) return std::nullopt;
  const Lead lead = leadOf(static_cast<unsigned char>(utf8.front()));
  if (lead.bytes == 0 || lead.bytes > utf8.size()) return std::nullopt;
  char32_t value = lead.bits;
  for (std::size_t i = 1; i < lead.bytes; ++i) {
    const auto byte = static_cast<unsigned char>(utf8[i]);
    if (!isContinuation(byte)) return std::nullopt;
    value = value << 6 | (byte & 0x3FU);
  }
  if (value < lead.least || value > 0x10FFFF) return std::nullopt;
  return Character{.value = value, .bytes = lead.bytes};
}

void appendUtf16(std::u16string& target, char32_t value) {
  if (value < 0x10000) {
    target.push_back(static_cast<char16_t>(value));
    return;
  }
  target.push_back(static_cast<char16_t>(0xD800 + ((value - 0x10000) >> 10)));
  target.push_back(static_cast<char16_t>(0xDC00 + (value & 0x3FF)));
}

}  // namespace

std::optional<Character> nextCharacter(std::string_view utf8) {
  const auto character = nextOrSurrogate(utf8);
  return character && isSurrogate(character->value) ? std::nullopt : character;
}

std::size_t validUtf8(std::string_view bytes) {
  std::size_t valid = 0;
  while (valid < bytes.size()) {
    if (static_cast<unsigned char>(bytes[valid]) < 0x80) {
      ++valid;
      continue;
    }
    const auto character = nextCharacter(bytes.substr(valid));
    if (!character) break;
    valid += character->bytes;
  }
  return valid;
}

void appendUtf8(std::string& target, char32_t character) {
  const auto append = [&target](char32_t byte) { target.push_back(static_cast<char>(byte)); };
  if (character < 0x80) return append(character);
  if (character < 0x800) {
    append(0xC0 | character >> 6);
  } else {
    if (character < 0x10000) {
      append(0xE0 | character >> 12);
    } else {
      append(0xF0 | character >> 18);
      append(0x80 | (character >> 12 & 0x3F));
    }
    append(0x80 | (character >> 6 & 0x3F));
  }
  append(0x80 | (character & 0x3F));
}

std::u16string toUtf16(std::string_view utf8) {
  std::u16string units;
  units.reserve(utf8.size());
  while (!utf8.empty()) {
    // A byte that belongs to no character is left out: whoever must know asks validUtf8 first.
    const auto character = nextOrSurrogate(utf8);
    if (character) appendUtf16(units, character->value);
    utf8.remove_prefix(character ? character->bytes : 1);
  }
  return units;
}

std::string toUtf8(std::u16string_view units) {
  std::string utf8;
  utf8.reserve(units.size());
  for (std::size_t i = 0; i < units.size(); ++i) {
    char32_t value = units[i];
    if (isHigh(value) && i + 1 < units.size() && isLow(units[i + 1]))
      value = 0x10000 + ((value - 0xD800) << 10) + (units[++i] - char32_t{0xDC00});
    appendUtf8(utf8, value);
  }
  return utf8;
}

}  // namespace documents
