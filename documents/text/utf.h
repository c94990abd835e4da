// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace documents {

/// The next character of UTF-8 and its bytes; nothing where they are not UTF-8. Surrogates are none.
struct Character {
  char32_t value;
  std::size_t bytes;
};
std::optional<Character> nextCharacter(std::string_view utf8);

/// The bytes of the longest beginning that is UTF-8.
std::size_t validUtf8(std::string_view bytes);

/// Appends a character, or a surrogate in the three bytes that UTF-8 would have for it.
void appendUtf8(std::string& target, char32_t character);

/// UTF-16 of UTF-8 that may hold surrogates in three bytes each; and back, where a surrogate with its partner becomes
/// one character.
std::u16string toUtf16(std::string_view utf8);
std::string toUtf8(std::u16string_view units);

}  // namespace documents
