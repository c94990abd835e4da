// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <string>

#include "tests/simulator/model/client.h"
#include "tests/support/listings.h"

namespace test {

inline constexpr std::uint32_t kLog = 0x80222058;

inline constexpr std::uint32_t kStartOperations[] = {0, 2, 7, 10};
inline constexpr std::uint32_t kStopOperations[] = {1, 3, 8, 11};
inline constexpr LogKind kLogKinds[] = {LogKind::kPlain, LogKind::kEx, LogKind::kKeyValue, LogKind::kExKeyValue};

inline Record logRequest(std::uint32_t operation, std::uint32_t logId = 0) {
  return Record{32}.u32(0, logId).u32(4, operation);
}

/// Starts a log and returns its id.
inline std::uint32_t startLog(ModelClient& client, std::uint32_t operation) {
  return word(client.answer(kLog, logRequest(operation), 32), 0);
}

/// A listing of keys, by id.
inline std::vector<KeyRow> rowsById(const std::string& file) {
  auto rows = keyRows(file);
  std::ranges::sort(rows, {}, &KeyRow::id);
  return rows;
}

inline const std::vector<KeyRow>& kvRows() {
  static const auto rows = rowsById(kKeyListing);
  return rows;
}
inline const std::vector<KeyRow>& exKVRows() {
  static const auto rows = rowsById(kExKeyListing);
  return rows;
}

inline Bytes bytesOfArea(std::span<const std::byte> area) {
  const auto* first = reinterpret_cast<const std::uint8_t*>(area.data());
  return {first, first + area.size()};
}

/// What keeps an area from being one record of each key in order of the ids, an end marker and zeros; empty when
/// nothing does.
inline std::string faultOfArea(const Bytes& area, const std::vector<KeyRow>& rows) {
  std::size_t offset = 0;
  for (const auto& row : rows) {
    if (offset + 4 + row.valueSize + 4 > area.size()) return "no room for " + row.name;
    if (word(area, offset) != row.id)
      return row.name + ": id " + std::to_string(word(area, offset)) + " at " + std::to_string(offset);
    offset += 4 + row.valueSize;
  }
  for (; offset < area.size(); ++offset)
    if (area[offset] != 0) return "not zero behind the end, at " + std::to_string(offset);
  return {};
}

/// The key/value logs of both generations, started for as long as the client lives, and read as clients do.
class Telemetry {
 public:
  explicit Telemetry(ModelClient& client) : client_(client) {
    startLog(client_, 7);
    startLog(client_, 10);
  }

  [[nodiscard]] Bytes value(std::uint32_t key) const { return valueIn(LogKind::kKeyValue, kvRows(), key); }
  [[nodiscard]] Bytes exValue(std::uint32_t key) const { return valueIn(LogKind::kExKeyValue, exKVRows(), key); }
  [[nodiscard]] std::uint32_t number(std::uint32_t key) const { return word(value(key), 0); }
  [[nodiscard]] std::uint32_t exNumber(std::uint32_t key) const { return word(exValue(key), 0); }
  [[nodiscard]] std::int32_t signedNumber(std::uint32_t key) const { return static_cast<std::int32_t>(number(key)); }
  [[nodiscard]] std::uint32_t half(std::uint32_t key, std::size_t index = 0) const {
    const auto bytes = value(key);
    return bytes.at(2 * index) | std::uint32_t{bytes.at(2 * index + 1)} << 8;
  }
  /// A text key, whose text is padded with zero bytes.
  [[nodiscard]] std::string text(std::uint32_t key) const {
    const auto bytes = value(key);
    const auto end = std::ranges::find(bytes, 0);
    EXPECT_TRUE(std::all_of(end, bytes.end(), [](std::uint8_t byte) { return byte == 0; })) << "key " << key;
    return {bytes.begin(), end};
  }

 private:
  [[nodiscard]] Bytes valueIn(LogKind kind, const std::vector<KeyRow>& rows, std::uint32_t key) const {
    const auto area = bytesOfArea(client_.surroundings.area(kind));
    EXPECT_EQ(faultOfArea(area, rows), "");
    std::size_t offset = 0;
    for (const auto& row : rows) {
      if (row.id == key) return part(area, offset + 4, row.valueSize);
      offset += 4 + row.valueSize;
    }
    ADD_FAILURE() << "no key " << key;
    return Bytes(128);
  }

  ModelClient& client_;
};

}  // namespace test
