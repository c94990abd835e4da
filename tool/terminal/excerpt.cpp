// SPDX-License-Identifier: Apache-2.0
#include "tool/terminal/excerpt.h"

#include <fmt/format.h>

#include <algorithm>
#include <vector>

#include "tool/terminal/text.h"

namespace tool {
namespace {

constexpr std::size_t kTabStop = 4;
/// Columns of a line that are shown, and how many of them may stand before the marks of a longer one.
constexpr std::size_t kMostColumns = 100;
constexpr std::size_t kColumnsBefore = 40;
/// Bytes of a very long line that are looked at on either side of where the marks begin: enough for the columns, of
/// characters that have four bytes and no width of their own.
constexpr std::size_t kNearBytes = 2000;
constexpr const char* kCut = "...";

/// A character as it is shown.
struct Cell {
  std::string text;
  std::size_t width;
  bool isMarked;
};

bool isTrail(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }

/// The bytes of a character: those that follow its first are its own in UTF-8, three at most.
std::size_t characterLength(std::string_view text) {
  std::size_t length = 1;
  while (length < std::min<std::size_t>(text.size(), 4) && isTrail(text[length])) ++length;
  return length;
}

/// A stretch of a line.
struct Part {
  std::size_t first;
  std::size_t last;
};

Part nearBytes(std::string_view line, std::size_t start) {
  Part part{.first = start - std::min(start, kNearBytes), .last = std::min(line.size(), start + kNearBytes)};
  while (part.first > 0 && isTrail(line[part.first])) --part.first;
  while (part.last < line.size() && isTrail(line[part.last])) ++part.last;
  return part;
}

std::vector<Cell> cellsOf(std::string_view line, const Part& part, std::size_t start, std::size_t end) {
  std::vector<Cell> cells;
  std::size_t column = 0;
  for (std::size_t at = part.first; at < part.last;) {
    const auto character = line.substr(at, characterLength(line.substr(at, part.last - at)));
    const bool isTab = character == "\t";
    std::string text = isTab ? std::string(kTabStop - column % kTabStop, ' ') : printable(character);
    const std::size_t width = displayWidth(text);
    cells.push_back({.text = std::move(text), .width = width, .isMarked = at >= start && at < end});
    column += width;
    at += character.size();
  }
  return cells;
}

/// The cells that are shown of a line whose marks begin at one of them.
Part window(const std::vector<Cell>& cells, std::size_t mark) {
  std::size_t before = 0;
  for (std::size_t i = 0; i < mark; ++i) before += cells[i].width;
  std::size_t all = before;
  for (std::size_t i = mark; i < cells.size(); ++i) all += cells[i].width;
  Part shown{.first = 0, .last = cells.size()};
  if (all <= kMostColumns) return shown;
  while (before > kColumnsBefore) before -= cells[shown.first++].width;
  std::size_t width = 0;
  shown.last = shown.first;
  while (shown.last < cells.size() && (width += cells[shown.last].width) <= kMostColumns) ++shown.last;
  return shown;
}

struct TwoLines {
  std::string text;
  std::string marks;

  void add(const Cell& cell) {
    text += cell.text;
    // A mark is seen under a character without a width, too.
    marks.append(cell.isMarked ? std::max<std::size_t>(cell.width, 1) : cell.width, cell.isMarked ? '^' : ' ');
  }
};

}  // namespace

std::string renderExcerpt(std::size_t number, std::string_view line, std::size_t start, std::size_t end) {
  const auto near = nearBytes(line, start);
  auto cells = cellsOf(line, near, start, end);
  // What is missing is marked where it would stand: behind the line's end, or at the character that is there.
  const auto marked = std::ranges::find(cells, true, &Cell::isMarked);
  auto mark = static_cast<std::size_t>(marked - cells.begin());
  if (marked == cells.end()) {
    const auto before = cellsOf(line, {.first = near.first, .last = start}, start, end);
    mark = before.size();
    if (mark == cells.size()) cells.push_back({.text = " ", .width = 1, .isMarked = true});
    cells[mark].isMarked = true;
  }
  const auto shown = window(cells, mark);
  TwoLines lines;
  if (near.first > 0 || shown.first > 0) lines.add({.text = kCut, .width = 3, .isMarked = false});
  for (std::size_t i = shown.first; i < shown.last; ++i) lines.add(cells[i]);
  if (near.last < line.size() || shown.last < cells.size()) lines.text += kCut;
  lines.text.erase(lines.text.find_last_not_of(' ') + 1);
  lines.marks.erase(lines.marks.find_last_not_of(' ') + 1);
  const std::string gutter = fmt::format("{:>5}", number);
  return fmt::format("{} |{}{}\n{:{}} | {}\n", gutter, lines.text.empty() ? "" : " ", lines.text, "", gutter.size(),
                     lines.marks);
}

}  // namespace tool
