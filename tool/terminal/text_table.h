// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace tool {

enum class Align { kLeft, kRight };

/// Columns under headings, each as wide as its widest text. Texts have to be printable.
class TextTable {
 public:
  struct Column {
    std::string heading;
    Align align;
  };

  explicit TextTable(std::vector<Column> columns);
  /// A text for each column.
  void add(std::vector<std::string> row);
  /// The lines, the headings first.
  [[nodiscard]] std::vector<std::string> lines() const;
  [[nodiscard]] std::string render() const;

 private:
  [[nodiscard]] std::vector<std::size_t> widths() const;
  [[nodiscard]] std::string renderRow(const std::vector<std::string>& row,
                                      const std::vector<std::size_t>& widths) const;

  std::vector<Align> aligns_;
  std::vector<std::vector<std::string>> rows_;
};

}  // namespace tool
