// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

// The listings in tests/data: what the library's tables must hold, typed apart from it.

namespace test {

inline constexpr char kKeyListing[] = "kv_keys.tsv";
inline constexpr char kExKeyListing[] = "ex_kv_keys.tsv";
inline constexpr char kConditionListing[] = "conditions.tsv";
inline constexpr char kActionListing[] = "actions.tsv";

using ListedOption = std::pair<std::string, std::int64_t>;

/// A row of a listing, by column.
class ListingRow {
 public:
  explicit ListingRow(const std::string& line);

  [[nodiscard]] std::size_t columns() const { return columns_.size(); }
  [[nodiscard]] const std::string& text(std::size_t column) const { return columns_.at(column); }
  [[nodiscard]] std::int64_t number(std::size_t column) const;
  /// Signed and unsigned numbers alike, as the 32 bits that a record holds.
  [[nodiscard]] std::uint32_t word(std::size_t column) const { return static_cast<std::uint32_t>(number(column)); }
  /// "text"=value; "text"=value
  [[nodiscard]] std::vector<ListedOption> options(std::size_t column) const;

 private:
  std::vector<std::string> columns_;
};

/// The rows below the columns' names.
std::vector<ListingRow> readListing(const std::string& file);

/// How many rows a listing has.
std::uint32_t listedIn(const std::string& file);

/// A row of the two listings of keys.
struct KeyRow {
  std::uint32_t id;
  std::string name;
  std::uint32_t type;
  std::uint32_t count;
  std::uint32_t param;
  std::uint32_t valueSize;
};

/// The rows of a listing of keys, in its order.
std::vector<KeyRow> keyRows(const std::string& file);

}  // namespace test
