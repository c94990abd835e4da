// SPDX-License-Identifier: Apache-2.0
#include "tests/tool/listings.h"

#include <gtest/gtest.h>

#include <sstream>

#include "tests/support/temporary_folder.h"

namespace test {
namespace {

std::int64_t wholeNumber(const std::string& text) {
  std::size_t used = 0;
  const std::int64_t number = std::stoll(text, &used);
  EXPECT_EQ(used, text.size()) << text;
  return number;
}

}  // namespace

ListingRow::ListingRow(const std::string& line) {
  std::istringstream stream{line + '\t'};
  for (std::string column; std::getline(stream, column, '\t');) columns_.push_back(column);
}

std::int64_t ListingRow::number(std::size_t column) const { return wholeNumber(text(column)); }

std::vector<std::pair<std::string, std::int64_t>> ListingRow::options(std::size_t column) const {
  std::vector<std::pair<std::string, std::int64_t>> options;
  std::string rest = text(column);
  while (!rest.empty()) {
    const auto close = rest.find("\"=");
    const auto end = std::min(rest.find("; \"", close), rest.size());
    options.emplace_back(rest.substr(1, close - 1), wholeNumber(rest.substr(close + 2, end - close - 2)));
    rest.erase(0, end == rest.size() ? end : end + 2);
  }
  return options;
}

std::vector<ListingRow> readListing(const std::string& file) {
  const auto bytes = readFile(std::string{VQS_TEST_DATA} + "/" + file);
  std::istringstream text{std::string{bytes.begin(), bytes.end()}};
  std::string line;
  std::getline(text, line);
  std::vector<ListingRow> rows;
  while (std::getline(text, line)) rows.emplace_back(line);
  return rows;
}

}  // namespace test
