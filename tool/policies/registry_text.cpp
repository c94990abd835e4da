// SPDX-License-Identifier: Apache-2.0
#include "tool/policies/registry_text.h"

#include <algorithm>
#include <charconv>
#include <string_view>

namespace tool {

std::optional<std::vector<std::byte>> bytesOfRegistryText(std::span<const std::byte> text) {
  constexpr std::string_view kHeading = "=hex:";
  std::string_view rest{reinterpret_cast<const char*>(text.data()), text.size()};
  const auto start = rest.find(kHeading);
  // The C runtime may have ended the line in two characters.
  const auto end = std::min(rest.find_last_not_of("\r\n"), rest.size()) + 1;
  if (start == rest.npos || end > rest.size() - 1 || rest.back() != '\n') return std::nullopt;
  rest = rest.substr(start + kHeading.size(), end - start - kHeading.size());

  std::vector<std::byte> bytes;
  while (!rest.empty()) {
    unsigned value = 0;
    const char* digits = rest.data();
    if (rest.size() < 2 || std::from_chars(digits, digits + 2, value, 16).ptr != digits + 2) return std::nullopt;
    bytes.push_back(static_cast<std::byte>(value));
    rest.remove_prefix(2);
    if (rest.empty()) break;
    if (rest.front() != ',') return std::nullopt;
    rest.remove_prefix(1);
  }
  return bytes;
}

}  // namespace tool
