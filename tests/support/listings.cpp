// SPDX-License-Identifier: Apache-2.0
#include "tests/support/listings.h"

#include <gtest/gtest.h>

#include <algorithm>
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

KeyRow keyRowOf(const ListingRow& row) {
  return {.id = row.word(0),
          .name = row.text(1),
          .type = row.word(2),
          .count = row.word(3),
          .param = row.word(4),
          .valueSize = row.word(5)};
}

}  // namespace

ListingRow::ListingRow(const std::string& line) {
  std::istringstream stream{line + '\t'};
  for (std::string column; std::getline(stream, column, '\t');) columns_.push_back(column);
}

std::int64_t ListingRow::number(std::size_t column) const { return wholeNumber(text(column)); }

std::vector<ListedOption> ListingRow::options(std::size_t column) const {
  std::vector<ListedOption> options;
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
  std::getline(text, line);  // the columns' names
  std::vector<ListingRow> rows;
  while (std::getline(text, line)) rows.emplace_back(line);
  return rows;
}

std::uint32_t listedIn(const std::string& file) { return static_cast<std::uint32_t>(readListing(file).size()); }

std::vector<KeyRow> keyRows(const std::string& file) {
  std::vector<KeyRow> rows;
  for (const auto& row : readListing(file)) rows.push_back(keyRowOf(row));
  return rows;
}

}  // namespace test
