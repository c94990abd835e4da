// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <charconv>
#include <concepts>
#include <cstdint>
#include <cstring>
#include <optional>
#include <span>
#include <string_view>

namespace tool {

/// The number that a text is, all of it.
template <std::integral Number>
std::optional<Number> parseNumber(std::string_view text, int base = 10) {
  Number number = 0;
  const std::span digits{text};
  const char* end = digits.data() + digits.size();
  const auto [rest, error] = std::from_chars(digits.data(), end, number, base);
  return error == std::errc{} && rest == end ? std::optional{number} : std::nullopt;
}

/// Whether a text is made of digits alone.
inline bool isDecimal(std::string_view text) {
  return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

/// A field of a driver's record.
template <std::integral Number>
Number numberAt(std::span<const std::uint8_t> bytes, std::size_t offset) {
  Number number = 0;
  const auto field = bytes.subspan(offset, sizeof(number));
  std::memcpy(&number, field.data(), field.size());
  return number;
}

}  // namespace tool
