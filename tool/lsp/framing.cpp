// SPDX-License-Identifier: Apache-2.0
#include "tool/lsp/framing.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <utility>

#include "tool/terminal/nearest.h"
#include "tool/terminal/numbers.h"

namespace tool::lsp {
namespace {

std::string_view trimmed(std::string_view text) {
  constexpr std::string_view kBlanks = " \t";
  const std::size_t begin = text.find_first_not_of(kBlanks);
  if (begin == std::string_view::npos) return {};
  return text.substr(begin, text.find_last_not_of(kBlanks) + 1 - begin);
}

}  // namespace

Incoming MessageReader::next() {
  room_ = kLongestHeader;
  hasBegun_ = false;
  const auto length = header();
  if (!length) return {.kind = hasBegun_ ? Incoming::Kind::kBroken : Incoming::Kind::kEnd};
  if (*length <= kLongestBody) return body(*length);
  return {.kind = skip(*length) ? Incoming::Kind::kTooLong : Incoming::Kind::kBroken};
}

/// A line of a header without its end; nothing when it has none, or is too long.
std::optional<std::string> MessageReader::line() {
  std::string text;
  for (int byte = 0; room_ > 0 && (byte = std::getc(stream_)) != EOF;) {
    hasBegun_ = true;
    --room_;
    if (byte == '\n') {
      if (text.ends_with('\r')) text.pop_back();
      return text;
    }
    text += static_cast<char>(byte);
  }
  return std::nullopt;
}

/// The length that a header says; nothing when it is none.
std::optional<std::uint64_t> MessageReader::header() {
  std::optional<std::uint64_t> length;
  for (auto text = line(); text; text = line()) {
    if (text->empty()) return length;
    const std::string_view field = *text;
    const std::size_t colon = field.find(':');
    if (colon == std::string_view::npos) return std::nullopt;
    // Names of fields are compared without their case.
    if (folded(field.substr(0, colon)) != "content-length") continue;
    const auto value = trimmed(field.substr(colon + 1));
    if (length || !isDecimal(value)) return std::nullopt;
    length = parseNumber<std::uint64_t>(value);
    if (!length) return std::nullopt;
  }
  return std::nullopt;
}

Incoming MessageReader::body(std::uint64_t length) {
  std::string text(static_cast<std::size_t>(length), '\0');
  if (std::fread(text.data(), 1, text.size(), stream_) != text.size()) return {.kind = Incoming::Kind::kBroken};
  return {.kind = Incoming::Kind::kMessage, .body = std::move(text)};
}

bool MessageReader::skip(std::uint64_t length) {
  std::array<char, 65536> buffer;
  while (length > 0) {
    const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(length, buffer.size()));
    if (std::fread(buffer.data(), 1, wanted, stream_) != wanted) return false;
    length -= wanted;
  }
  return true;
}

std::string framed(std::string_view body) { return fmt::format("Content-Length: {}\r\n\r\n{}", body.size(), body); }

}  // namespace tool::lsp
