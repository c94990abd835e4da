// SPDX-License-Identifier: Apache-2.0
#include <charconv>

#include "documents/syntax/tree.h"
#include "documents/text/utf.h"

namespace documents {
namespace {

constexpr char32_t kHighest = 0xDBFF;

/// What stands between the quotes: of what was written without them, or without the second one, all of it.
std::string_view withoutQuotes(std::string_view raw) {
  const bool isQuoted = raw.starts_with('"') || raw.starts_with('\'');
  if (!isQuoted) return raw;
  const bool isClosed = raw.size() > 1 && raw.back() == raw.front();
  return raw.substr(1, raw.size() - (isClosed ? 2 : 1));
}

constexpr char simpleEscape(char letter) {
  switch (letter) {
    case 'b':
      return '\b';
    case 'f':
      return '\f';
    case 'n':
      return '\n';
    case 'r':
      return '\r';
    case 't':
      return '\t';
    default:
      return letter;
  }
}

/// Takes "\uXXXX" from the front; nothing when it is something else.
std::optional<char32_t> takeUnit(std::string_view& text) {
  constexpr std::size_t kLength = 6;
  if (!text.starts_with("\\u") || text.size() < kLength) return std::nullopt;
  unsigned value = 0;
  const char* const end = text.data() + kLength;
  const auto [rest, error] = std::from_chars(text.data() + 2, end, value, 16);
  if (error != std::errc{} || rest != end) return std::nullopt;
  text.remove_prefix(kLength);
  return value;
}

/// Takes an escape from the front. Of a malformed one the backslash is left out.
void takeEscape(std::string_view& text, std::string& value) {
  if (const auto unit = takeUnit(text)) {
    std::string_view rest = text;
    if (*unit >= 0xD800 && *unit <= kHighest) {
      const auto partner = takeUnit(rest);
      if (partner && *partner > kHighest && *partner <= 0xDFFF) {
        text = rest;
        return appendUtf8(value, 0x10000 + ((*unit - 0xD800) << 10) + (*partner - 0xDC00));
      }
    }
    return appendUtf8(value, *unit);
  }
  text.remove_prefix(1);
  if (text.empty()) return;
  if (static_cast<unsigned char>(text.front()) >= 0x80) return;
  value.push_back(simpleEscape(text.front()));
  text.remove_prefix(1);
}

std::string unescaped(std::string_view text) {
  std::string value;
  value.reserve(text.size());
  while (!text.empty()) {
    if (text.front() == '\\') {
      takeEscape(text, value);
      continue;
    }
    const std::size_t plain = validUtf8(text.substr(0, text.find('\\')));
    value += text.substr(0, plain);
    text.remove_prefix(plain);
    // Bytes that are no UTF-8 are left out: a finding tells of them.
    if (!text.empty() && text.front() != '\\') text.remove_prefix(1);
  }
  return value;
}

std::string valueOf(std::string_view raw, bool hasEscapes) {
  const std::string_view text = withoutQuotes(raw);
  return hasEscapes ? unescaped(text) : std::string{text};
}

}  // namespace

std::string stringOf(const Tree& tree, const Node& node) { return valueOf(tree.slice(node.span), node.hasEscapes); }

std::string nameOf(const Tree& tree, const Node& node) { return valueOf(tree.slice(node.name), node.hasEscapesInName); }

}  // namespace documents
