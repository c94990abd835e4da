// SPDX-License-Identifier: Apache-2.0
#include "tool/terminal/text.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

namespace tool {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool isHighSurrogate(char32_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool isLowSurrogate(char32_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

void append(std::string& utf8, char32_t code) {
  const auto trail = [&](int shift) { utf8 += static_cast<char>(0x80 | ((code >> shift) & 0x3F)); };
  if (code < 0x80) {
    utf8 += static_cast<char>(code);
  } else if (code < 0x800) {
    utf8 += static_cast<char>(0xC0 | (code >> 6));
    trail(0);
  } else if (code < 0x10000) {
    utf8 += static_cast<char>(0xE0 | (code >> 12));
    trail(6);
    trail(0);
  } else {
    utf8 += static_cast<char>(0xF0 | (code >> 18));
    trail(12);
    trail(6);
    trail(0);
  }
}

struct Range {
  char32_t first;
  char32_t last;
};

bool isWithin(std::span<const Range> ranges, char32_t code) {
  return std::ranges::any_of(ranges, [&](const Range& range) { return code >= range.first && code <= range.last; });
}

/// Control characters, and the invisible ones that break lines or turn the direction of text.
constexpr std::array<Range, 7> kUnprintable = {Range{0x00, 0x1F}, {0x7F, 0x9F},     {0x200E, 0x200F}, {0x2028, 0x202E},
                                               {0x2066, 0x2069},  {0xFEFF, 0xFEFF}, {0xFFF9, 0xFFFB}};

constexpr std::array<Range, 13> kTwoColumns = {
    Range{0x1100, 0x115F}, {0x2E80, 0x303E},   {0x3041, 0xA4CF},  {0xAC00, 0xD7A3},   {0xF900, 0xFAFF},
    {0xFE30, 0xFE6F},      {0xFF00, 0xFF60},   {0xFFE0, 0xFFE6},  {0x1F300, 0x1F64F}, {0x1F680, 0x1F6FF},
    {0x1F900, 0x1F9FF},    {0x20000, 0x2FFFD}, {0x30000, 0x3FFFD}};

constexpr std::array<Range, 4> kNoColumn = {
    Range{0x0300, 0x036F}, {0x200B, 0x200D}, {0x20D0, 0x20FF}, {0xFE00, 0xFE0F}};

/// One character of a text that may come from anywhere: nothing is assumed about its bytes.
struct Decoded {
  char32_t code;
  std::size_t length;
  bool valid;
};

Decoded decode(std::string_view text) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const Decoded invalid{.code = byte(0), .length = 1, .valid = false};
  if (byte(0) < 0x80) return {.code = byte(0), .length = 1, .valid = true};
  const std::size_t length = byte(0) >= 0xF0 ? 4 : byte(0) >= 0xE0 ? 3 : 2;
  if (byte(0) < 0xC2 || byte(0) > 0xF4 || length > text.size()) return invalid;
  char32_t code = byte(0) & (0xFFU >> (length + 1));
  for (std::size_t i = 1; i < length; ++i) {
    if ((byte(i) & 0xC0) != 0x80) return invalid;
    code = code << 6 | (byte(i) & 0x3FU);
  }
  constexpr std::array<char32_t, 5> kSmallest = {0, 0, 0x80, 0x800, 0x10000};
  if (code < kSmallest[length] || code > 0x10FFFF || isHighSurrogate(code) || isLowSurrogate(code)) return invalid;
  return {.code = code, .length = length, .valid = true};
}

std::string escape(const Decoded& character) {
  if (!character.valid) return fmt::format("\\x{:02x}", static_cast<unsigned>(character.code));
  switch (character.code) {
    case U'\n':
      return "\\n";
    case U'\r':
      return "\\r";
    case U'\t':
      return "\\t";
    default:
      return fmt::format("\\u{:04x}", static_cast<unsigned>(character.code));
  }
}

/// What nearly all text consists of: one column and one byte each, and nothing that is ever escaped.
constexpr bool isPlain(char byte) { return byte >= ' ' && byte < 0x7F && byte != '"' && byte != '\\'; }

/// The plain characters that a text begins with, which are taken from it.
std::string_view takePlain(std::string_view& text) {
  std::size_t length = 0;
  while (length < text.size() && isPlain(text[length])) ++length;
  const auto plain = text.substr(0, length);
  text.remove_prefix(length);
  return plain;
}

std::string escape(std::string_view text, const Decoded& character, std::string_view special) {
  if (!character.valid || isWithin(kUnprintable, character.code)) return escape(character);
  const bool isSpecial = character.code < 0x80 && special.find(static_cast<char>(character.code)) != special.npos;
  return (isSpecial ? "\\" : "") + std::string{text.substr(0, character.length)};
}

/// Escapes what is unprintable, and puts a backslash before each of `special`.
std::string escaped(std::string_view text, std::string_view special) {
  std::string result{takePlain(text)};
  while (!text.empty()) {
    const Decoded character = decode(text);
    result += escape(text, character, special);
    text.remove_prefix(character.length);
    result += takePlain(text);
  }
  return result;
}

}  // namespace

std::string fromUtf16(std::span<const VqsChar16> units) {
  std::string utf8;
  for (std::size_t i = 0; i < units.size() && units[i] != 0; ++i) {
    const auto unit = static_cast<char32_t>(units[i]);
    const char32_t next = i + 1 < units.size() ? static_cast<char32_t>(units[i + 1]) : 0;
    if (isHighSurrogate(unit) && isLowSurrogate(next)) {
      append(utf8, 0x10000 + ((unit - 0xD800) << 10) + (next - 0xDC00));
      ++i;
    } else {
      append(utf8, isHighSurrogate(unit) || isLowSurrogate(unit) ? kReplacement : unit);
    }
  }
  return utf8;
}

std::string fromLatin1(std::span<const char> bytes) {
  std::string utf8;
  for (const char byte : bytes) {
    if (byte == '\0') break;
    append(utf8, static_cast<unsigned char>(byte));
  }
  return utf8;
}

std::string printable(std::string_view utf8) { return escaped(utf8, ""); }

std::string inQuotes(std::string_view utf8) { return '"' + escaped(utf8, "\"\\") + '"'; }

std::size_t displayWidth(std::string_view utf8) {
  std::size_t width = takePlain(utf8).size();
  while (!utf8.empty()) {
    const Decoded character = decode(utf8);
    width += isWithin(kNoColumn, character.code) ? 0 : isWithin(kTwoColumns, character.code) ? 2 : 1;
    utf8.remove_prefix(character.length);
    width += takePlain(utf8).size();
  }
  return width;
}

std::string padded(std::string text, std::size_t width) {
  const std::size_t used = displayWidth(text);
  if (used < width) text.append(width - used, ' ');
  return text;
}

std::string indented(std::string_view lines, std::size_t indent) {
  std::string text;
  while (!lines.empty()) {
    const auto end = std::min(lines.find('\n'), lines.size());
    text += (end != 0 ? std::string(indent, ' ') : "") + printable(lines.substr(0, end)) + '\n';
    lines.remove_prefix(std::min(end + 1, lines.size()));
  }
  return text;
}

std::string yesOrNo(bool answer) { return answer ? "yes" : "no"; }

std::string countOfPolicies(std::size_t count) {
  return fmt::format("{} {}", count, count == 1 ? "policy" : "policies");
}

}  // namespace tool
