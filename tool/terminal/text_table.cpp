// SPDX-License-Identifier: Apache-2.0
#include "tool/terminal/text_table.h"

#include <algorithm>
#include <utility>

#include "tool/terminal/text.h"

namespace tool {
namespace {

/// A line that grows by texts and by room between them. Room becomes spaces when a text follows: the widest text of a
/// last column would otherwise be as many spaces in every line.
class Line {
 public:
  void leave(std::size_t columns) { room_ += columns; }
  void write(const std::string& text) {
    if (text.empty()) return;
    text_.append(std::exchange(room_, 0), ' ');
    text_ += text;
  }

  /// The line without the spaces that its last text ends with.
  std::string finish() && {
    text_.erase(text_.find_last_not_of(' ') + 1);
    return std::move(text_);
  }

 private:
  std::string text_;
  std::size_t room_ = 0;
};

}  // namespace

TextTable::TextTable(std::vector<Column> columns) {
  auto& headings = rows_.emplace_back();
  for (auto& column : columns) {
    headings.push_back(std::move(column.heading));
    aligns_.push_back(column.align);
  }
}

void TextTable::add(std::vector<std::string> row) { rows_.push_back(std::move(row)); }

std::vector<std::size_t> TextTable::widths() const {
  std::vector<std::size_t> widths(aligns_.size());
  for (const auto& row : rows_)
    for (std::size_t column = 0; column < row.size(); ++column)
      widths[column] = std::max(widths[column], displayWidth(row[column]));
  return widths;
}

std::vector<std::string> TextTable::lines() const {
  const auto widths = this->widths();
  std::vector<std::string> lines;
  lines.reserve(rows_.size());
  for (const auto& row : rows_) lines.push_back(renderRow(row, widths));
  return lines;
}

std::string TextTable::renderRow(const std::vector<std::string>& row, const std::vector<std::size_t>& widths) const {
  constexpr std::size_t kBetweenColumns = 2;
  Line line;
  for (std::size_t column = 0; column < row.size(); ++column) {
    const std::size_t rest = widths[column] - displayWidth(row[column]);
    if (aligns_[column] == Align::kRight) line.leave(rest);
    line.write(row[column]);
    if (aligns_[column] == Align::kLeft) line.leave(rest);
    line.leave(kBetweenColumns);
  }
  return std::move(line).finish();
}

std::string TextTable::render() const {
  std::string text;
  for (const auto& line : lines()) text.append(line) += '\n';
  return text;
}

}  // namespace tool
