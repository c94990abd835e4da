// SPDX-License-Identifier: Apache-2.0
#include "tool/terminal/text_table.h"

#include <algorithm>
#include <utility>

#include "tool/terminal/text.h"

namespace tool {
namespace {

std::string alignedText(const std::string& text, Align align, std::size_t width) {
  if (align == Align::kLeft) return padded(text, width);
  const std::size_t used = displayWidth(text);
  return std::string(width > used ? width - used : 0, ' ') + text;
}

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
  for (const auto& row : rows_) {
    auto& line = lines.emplace_back();
    for (std::size_t column = 0; column < row.size(); ++column) {
      if (column != 0) line += "  ";
      line += alignedText(row[column], aligns_[column], widths[column]);
    }
    line.erase(line.find_last_not_of(' ') + 1);
  }
  return lines;
}

std::string TextTable::render() const {
  std::string text;
  for (const auto& line : lines()) text += line + '\n';
  return text;
}

}  // namespace tool
