// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace test {

/// A row of a listing in tests/data, by column.
class ListingRow {
 public:
  explicit ListingRow(const std::string& line);

  [[nodiscard]] const std::string& text(std::size_t column) const { return columns_.at(column); }
  [[nodiscard]] std::int64_t number(std::size_t column) const;
  /// "text"=value; "text"=value
  [[nodiscard]] std::vector<std::pair<std::string, std::int64_t>> options(std::size_t column) const;

 private:
  std::vector<std::string> columns_;
};

/// The rows below the columns' names.
std::vector<ListingRow> readListing(const std::string& file);

}  // namespace test
