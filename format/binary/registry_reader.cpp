// SPDX-License-Identifier: Apache-2.0
#include "format/binary/registry_reader.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "format/binary/registry_text.h"

namespace vqs {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

/// The second one is the older form, in 8-bit characters.
constexpr std::array<std::string_view, 2> kHeadings = {kRegistryHeading, "REGEDIT4"};
/// What they begin with in any version.
constexpr std::array<std::string_view, 2> kHeadingStarts = {"Windows Registry Editor", "REGEDIT"};

/// The one that values are written under, and those that editors show beside it, of control sets by number.
constexpr std::string_view kKeyStart = "HKEY_LOCAL_MACHINE\\SYSTEM\\";
constexpr std::string_view kKeyEnd = "\\Services\\vexoqtf\\Parameters";
constexpr std::array<std::string_view, 2> kControlSets = {"CurrentControlSet", "ControlSet"};

constexpr std::array<std::string_view, 3> kValueNames = {kAsmValueName, kBalanceProfileValueName, ""};
/// Both say that the value is binary.
constexpr std::string_view kBinaryTypes[] = {"hex:", "hex(3):"};

bool isBlank(char character) { return character == ' ' || character == '\t' || character == '\r'; }

char folded(char character) {
  return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

bool isSame(std::string_view a, std::string_view b) {
  return std::ranges::equal(a, b, [](char x, char y) { return folded(x) == folded(y); });
}

/// The name of a value that has policies.
bool isOurs(std::string_view name) {
  return std::ranges::any_of(kValueNames, [&](auto ours) { return isSame(ours, name); });
}

bool beginsWith(std::string_view text, std::string_view start) { return isSame(text.substr(0, start.size()), start); }

std::string_view trimmedEnd(std::string_view line) {
  while (!line.empty() && isBlank(line.back())) line.remove_suffix(1);
  return line;
}

/// 16 for a character that is no digit.
unsigned digitOf(char character) {
  if (character >= '0' && character <= '9') return static_cast<unsigned>(character - '0');
  const char letter = folded(character);
  return letter >= 'a' && letter <= 'f' ? static_cast<unsigned>(letter - 'a') + 10 : 16;
}

bool isDigit(char character) { return digitOf(character) < 16; }

/// "CurrentControlSet", "ControlSet001".
bool isControlSet(std::string_view name) {
  if (isSame(name, kControlSets[0])) return true;
  if (!beginsWith(name, kControlSets[1])) return false;
  name.remove_prefix(kControlSets[1].size());
  return !name.empty() && std::ranges::all_of(name, [](char digit) { return digit >= '0' && digit <= '9'; });
}

bool isDriversKey(std::string_view key) {
  if (key.size() < kKeyStart.size() + kKeyEnd.size() || !beginsWith(key, kKeyStart)) return false;
  key.remove_prefix(kKeyStart.size());
  return isSame(key.substr(key.size() - kKeyEnd.size()), kKeyEnd) &&
         isControlSet(key.substr(0, key.size() - kKeyEnd.size()));
}

}  // namespace

bool isRegistryText(std::string_view text) {
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  return std::ranges::any_of(kHeadingStarts, [&](auto start) { return beginsWith(text, start); });
}

RegistryReader::RegistryReader(std::string_view text) : text_{text} {
  if (text.starts_with(kByteOrderMark)) position_ = kByteOrderMark.size();
  lineStart_ = position_;
  static_cast<void>(takeHeading());
}

bool RegistryReader::next(RegistryBinary& value) {
  while (defect_.kind == RegistryDefectKind::kNone) {
    skipBlanks();
    if (isAtEnd()) return false;
    lineStart_ = position_;
    if (isAt(';')) {
      position_ = endOfLine();
    } else if (isAt('[')) {
      if (!takeKey()) return false;
    } else {
      if (!takeName(value.name)) return false;
      if (isOurKey_ && isOurs(value.name)) return takeBinary(value);
      if (!skipData()) return false;
    }
    if (!skip('\n') && !isAtEnd()) return failInLine();
  }
  return false;
}

std::size_t RegistryReader::endOfLine() const { return std::min(text_.find('\n', position_), text_.size()); }

bool RegistryReader::skip(char character) {
  if (!isAt(character)) return false;
  ++position_;
  return true;
}

void RegistryReader::skipBlanks() {
  while (!isAtEnd() && (isBlank(text_[position_]) || text_[position_] == '\n')) ++position_;
}

bool RegistryReader::fail(RegistryDefectKind kind, std::size_t offset, std::size_t length) {
  defect_ = {.kind = kind, .offset = offset, .length = length};
  return false;
}

bool RegistryReader::failInLine() {
  const std::size_t end = endOfLine();
  if (isAtEnd()) return fail(RegistryDefectKind::kCut, text_.size(), 0);
  const auto line = trimmedEnd(text_.substr(lineStart_, end - lineStart_));
  return fail(RegistryDefectKind::kUnknownLine, lineStart_, line.size());
}

bool RegistryReader::takeHeading() {
  const auto line = trimmedEnd(text_.substr(position_, endOfLine() - position_));
  if (std::ranges::none_of(kHeadings, [&](auto heading) { return isSame(line, heading); }))
    return fail(RegistryDefectKind::kNoHeading, position_, line.size());
  position_ = endOfLine();
  return true;
}

bool RegistryReader::takeKey() {
  const std::size_t end = endOfLine();
  auto line = trimmedEnd(text_.substr(position_, end - position_));
  const bool isClosed = line.ends_with(']');
  if (!isClosed && end == text_.size()) return fail(RegistryDefectKind::kCut, end, 0);
  if (!isClosed) return fail(RegistryDefectKind::kUnknownLine, position_, line.size());
  line.remove_prefix(1);
  line.remove_suffix(1);
  hasKey_ = true;
  isOurKey_ = isDriversKey(line);
  position_ = end;
  return true;
}

/// A backslash takes away what the next character means.
bool RegistryReader::takeQuoted(std::string_view& inner) {
  const std::size_t start = ++position_;
  while (!isAtEnd() && !isAt('"')) position_ += isAt('\\') && position_ + 1 < text_.size() ? 2 : 1;
  inner = text_.substr(start, position_ - start);
  return skip('"') || fail(RegistryDefectKind::kCut, text_.size(), 0);
}

bool RegistryReader::takeName(std::string_view& name) {
  name = {};
  if (!hasKey_ || (!isAt('"') && !isAt('@'))) return failInLine();
  if (isAt('"')) {
    // No name goes on in the next line, as a text may.
    const std::size_t end = endOfLine();
    if (!takeQuoted(name) || position_ > end) {
      position_ = lineStart_;
      if (end == text_.size()) return fail(RegistryDefectKind::kCut, end, 0);
      return failInLine();
    }
  } else {
    ++position_;
  }
  while (!isAtEnd() && isBlank(text_[position_])) ++position_;
  if (!skip('=')) return failInLine();
  while (!isAtEnd() && isBlank(text_[position_])) ++position_;
  return true;
}

bool RegistryReader::takeBinary(RegistryBinary& value) {
  const auto rest = text_.substr(position_, endOfLine() - position_);
  const auto* const type = std::ranges::find_if(kBinaryTypes, [&](auto start) { return beginsWith(rest, start); });
  if (type == std::end(kBinaryTypes)) {
    const auto data = trimmedEnd(rest);
    if (position_ + rest.size() == text_.size() &&
        std::ranges::any_of(kBinaryTypes, [&](auto start) { return beginsWith(start, data); }))
      return fail(RegistryDefectKind::kCut, text_.size(), 0);
    return fail(RegistryDefectKind::kNotBinary, position_, data.size());
  }
  value.offset = lineStart_;
  position_ += type->size();
  return takeDigits(value);
}

bool RegistryReader::takeDigits(RegistryBinary& value) {
  const std::size_t start = position_;
  value.size = 0;
  if (!skipWrapping()) return false;
  if (isAtEnd()) return fail(RegistryDefectKind::kCut, text_.size(), 0);
  while (!isAt('\n')) {
    if (!takeByte()) return false;
    ++value.size;
    if (!skipWrapping()) return false;
    if (isAtEnd() || isAt('\n')) break;
    if (!skip(',')) return fail(RegistryDefectKind::kNoComma, position_, 1);
    if (!skipWrapping()) return false;
    // A line that ends in a comma goes on nowhere.
    if (isAt('\n')) return fail(RegistryDefectKind::kNoDigits, position_, 0);
  }
  value.digits = text_.substr(start, position_ - start);
  value.hasLineEnd = skip('\n');
  return true;
}

bool RegistryReader::takeByte() {
  const auto rest = text_.substr(position_, 2);
  if (rest.size() < 2 && std::ranges::all_of(rest, isDigit)) return fail(RegistryDefectKind::kCut, text_.size(), 0);
  if (!std::ranges::all_of(rest, isDigit)) {
    const bool isHalf = isDigit(rest.front());
    return fail(RegistryDefectKind::kNoDigits, position_, isHalf || rest.front() != '\n' ? 1 : 0);
  }
  position_ += 2;
  return true;
}

bool RegistryReader::skipWrapping() {
  while (!isAtEnd()) {
    if (isBlank(text_[position_])) {
      ++position_;
    } else if (isAt('\\')) {
      const std::size_t place = position_++;
      while (!isAtEnd() && isBlank(text_[position_])) ++position_;
      if (isAtEnd()) return fail(RegistryDefectKind::kCut, text_.size(), 0);
      if (!skip('\n')) return fail(RegistryDefectKind::kNoComma, place, 1);
    } else {
      break;
    }
  }
  return true;
}

/// What stands in other values is not looked at. A text in quotes may go over several lines, other data goes on behind
/// a line that ends in a backslash.
bool RegistryReader::skipData() {
  if (isAt('"')) {
    std::string_view text;
    if (!takeQuoted(text)) return false;
    return endLine();
  }
  if (isAt('\n')) return failInLine();
  for (;;) {
    const std::size_t end = endOfLine();
    const auto line = trimmedEnd(text_.substr(position_, end - position_));
    position_ = end;
    if (!line.ends_with('\\')) return !isAtEnd() || !line.empty() || fail(RegistryDefectKind::kCut, end, 0);
    if (!skip('\n')) return fail(RegistryDefectKind::kCut, text_.size(), 0);
  }
}

/// Nothing but a comment may follow.
bool RegistryReader::endLine() {
  while (!isAtEnd() && isBlank(text_[position_])) ++position_;
  if (isAt(';')) position_ = endOfLine();
  return isAtEnd() || isAt('\n') || failInLine();
}

void takeBytes(const RegistryBinary& value, std::span<std::byte> bytes) {
  std::size_t place = 0;
  for (auto& byte : bytes) {
    while (!isDigit(value.digits[place])) ++place;
    byte = static_cast<std::byte>(digitOf(value.digits[place]) << 4U | digitOf(value.digits[place + 1]));
    place += 2;
  }
}

}  // namespace vqs
