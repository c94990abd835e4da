// SPDX-License-Identifier: Apache-2.0
#include "documents/text/quote.h"

#include "documents/text/utf.h"

namespace documents {
namespace {

/// Characters that are quoted at most.
constexpr std::size_t kMostCharacters = 60;

void appendEscape(std::string& target, unsigned value) {
  constexpr char kDigits[] = "0123456789abcdef";
  target += "\\u00";
  target.push_back(kDigits[value >> 4 & 0xF]);
  target.push_back(kDigits[value & 0xF]);
}

constexpr bool isControl(char32_t value) { return value < 0x20 || (value >= 0x7F && value < 0xA0); }

}  // namespace

std::string quote(std::string_view written) {
  std::string text = "\"";
  for (std::size_t count = 0; !written.empty(); ++count) {
    if (count == kMostCharacters) {
      text += "...";
      break;
    }
    const auto character = nextCharacter(written);
    const std::size_t bytes = character ? character->bytes : 1;
    if (!character)
      appendEscape(text, static_cast<unsigned char>(written.front()));
    else if (isControl(character->value))
      appendEscape(text, character->value);
    else
      text += written.substr(0, bytes);
    written.remove_prefix(bytes);
  }
  text += '"';
  return text;
}

}  // namespace documents
