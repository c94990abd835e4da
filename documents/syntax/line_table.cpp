// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "documents/findings/finding.h"
#include "documents/text/utf.h"

namespace documents {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
/// Bytes from one mark to the next, at least.
constexpr std::size_t kMarkDistance = 1024;

Character characterAt(std::string_view text, std::size_t offset) {
  const auto byte = static_cast<unsigned char>(text[offset]);
  if (byte < 0x80) return {.value = byte, .bytes = 1};
  return nextCharacter(text.substr(offset)).value_or(Character{.value = 0xFFFD, .bytes = 1});
}

constexpr std::size_t unitsOf(const Character& character) { return character.value < 0x10000 ? 1 : 2; }

}  // namespace

LineTable::LineTable(std::string_view text) : text_(text) {
  Mark mark{.offset = text.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0};
  starts_.push_back(mark.offset);
  marks_.push_back(mark);
  while (mark.offset < text.size()) {
    const Character character = characterAt(text, mark.offset);
    mark.offset += character.bytes;
    ++mark.characters;
    mark.units += unitsOf(character);
    const bool isLineEnd =
        character.value == U'\n' || (character.value == U'\r' && !text.substr(mark.offset).starts_with('\n'));
    if (isLineEnd) starts_.push_back(mark.offset);
    if (mark.offset - marks_.back().offset >= kMarkDistance) marks_.push_back(mark);
  }
}

/// The mark of the character that holds this byte.
LineTable::Mark LineTable::markAt(std::size_t offset) const {
  Mark mark = *std::prev(std::ranges::upper_bound(marks_, offset, {}, &Mark::offset));
  while (mark.offset < text_.size()) {
    const Character character = characterAt(text_, mark.offset);
    if (mark.offset + character.bytes > offset) break;
    mark.offset += character.bytes;
    ++mark.characters;
    mark.units += unitsOf(character);
  }
  return mark;
}

Position LineTable::positionOf(std::size_t offset) const {
  const std::size_t known = std::clamp(offset, starts_.front(), text_.size());
  const auto next = std::ranges::upper_bound(starts_, known);
  const Mark start = markAt(*std::prev(next));
  const Mark mark = markAt(known);
  return {.line = static_cast<std::size_t>(next - starts_.begin()),
          .column = mark.characters - start.characters + 1,
          .unit = mark.units - start.units};
}

std::size_t LineTable::endOfLine(std::size_t index) const {
  const std::size_t start = starts_[index];
  std::size_t end = index + 1 < starts_.size() ? starts_[index + 1] : text_.size();
  while (end > start && (text_[end - 1] == '\n' || text_[end - 1] == '\r')) --end;
  return end;
}

std::size_t LineTable::offsetOf(std::size_t line, std::size_t unit) const {
  if (line == 0) return starts_.front();
  if (line > starts_.size()) return text_.size();
  const std::size_t end = endOfLine(line - 1);
  const std::size_t start = starts_[line - 1];
  const std::size_t wanted = markAt(start).units + unit;
  const auto next = std::ranges::upper_bound(marks_, wanted, {}, &Mark::units);
  Mark mark = *std::prev(next);
  if (mark.offset < start) mark = markAt(start);
  while (mark.offset < end) {
    const Character character = characterAt(text_, mark.offset);
    if (mark.units + unitsOf(character) > wanted) break;
    mark.offset += character.bytes;
    mark.units += unitsOf(character);
  }
  return std::min(mark.offset, end);
}

std::string_view LineTable::line(std::size_t number) const {
  if (number == 0 || number > starts_.size()) return {};
  return text_.substr(starts_[number - 1], endOfLine(number - 1) - starts_[number - 1]);
}

}  // namespace documents
