// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vqs {

/// A text that leaves no room for its NUL does not compile: the write past the field's end is no constant expression.
template <std::size_t N>
constexpr void copyText(char (&field)[N], std::string_view text) {
  for (std::size_t i = 0; i < text.size(); ++i) field[i] = text[i];
  field[text.size()] = '\0';
}

/// A record with the fields that conditions and actions have alike.
template <class Record, class Row>
constexpr Record commonRecord(const Row& row) {
  Record record{};
  record.Id = row.id;
  record.Enabled = row.enabled;
  record.Type = row.type;
  record.MinValue = row.min;
  record.MaxValue = row.max;
  copyText(record.Units, row.units);
  copyText(record.Name, row.name);
  record.OptionCount = static_cast<std::uint32_t>(row.options.size());
  record.Options = row.options.data();
  record.DriverFlag = row.driverFlag;
  record.Attr1 = row.attr1;
  return record;
}

/// Every row's record, made while compiling.
template <class Record, class Row, std::size_t N>
consteval std::array<Record, N> records(const Row (&rows)[N], Record (*make)(const Row&)) {
  std::array<Record, N> made{};
  std::ranges::transform(rows, made.begin(), make);
  return made;
}

}  // namespace vqs
