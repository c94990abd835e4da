// SPDX-License-Identifier: Apache-2.0
#include "documents/print/json_text.h"

#include <cstddef>
#include <cstdint>

#include "documents/text/utf.h"

namespace documents {
namespace {

void appendUnitEscape(std::string& text, std::uint32_t unit, std::string_view digits) {
  text += "\\u";
  for (int shift = 12; shift >= 0; shift -= 4) text += digits[unit >> static_cast<unsigned>(shift) & 0xFU];
}

void appendUpperEscape(std::string& text, std::uint32_t unit) { appendUnitEscape(text, unit, "0123456789ABCDEF"); }

/// The letter of a short escape; 0 for a character that has none.
char shortEscape(char32_t character) {
  switch (character) {
    case U'"':
    case U'\\':
      return static_cast<char>(character);
    case U'\b':
      return 'b';
    case U'\f':
      return 'f';
    case U'\n':
      return 'n';
    case U'\r':
      return 'r';
    case U'\t':
      return 't';
    default:
      return 0;
  }
}

/// Control characters in the wide sense: a terminal that shows a document must not obey them.
bool isControl(char32_t character) { return character < 0x20 || (character >= 0x7F && character < 0xA0); }

void appendCharacter(std::string& text, char32_t character) {
  if (const char letter = shortEscape(character); letter != 0) {
    text += '\\';
    text += letter;
  } else if (isControl(character)) {
    appendUpperEscape(text, static_cast<std::uint32_t>(character));
  } else {
    appendUtf8(text, character);
  }
}

/// UTF-8, and what is none of it in another way: `appendBroken` appends it and tells how many bytes it was.
template <class Appender>
void appendQuotedUtf8(std::string& text, std::string_view utf8, const Appender& appendBroken) {
  text += '"';
  while (!utf8.empty()) {
    const auto character = nextCharacter(utf8);
    if (character) appendCharacter(text, character->value);
    utf8.remove_prefix(character ? character->bytes : appendBroken(utf8));
  }
  text += '"';
}

}  // namespace

void appendQuoted(std::string& text, std::u16string_view units) {
  appendQuotedUtf8(text, toUtf8(units), [&](std::string_view surrogate) {
    const auto bits = [&](std::size_t place) { return static_cast<unsigned char>(surrogate[place]) & 0x3FU; };
    appendUpperEscape(text, 0xD000U | bits(1) << 6U | bits(2));
    return std::size_t{3};
  });
}

void appendQuoted(std::string& text, std::string_view bytes) {
  appendQuotedUtf8(text, bytes, [&](std::string_view broken) {
    appendUnitEscape(text, 0xDC00U + static_cast<unsigned char>(broken.front()), "0123456789abcdef");
    return std::size_t{1};
  });
}

}  // namespace documents
