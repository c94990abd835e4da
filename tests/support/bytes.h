// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace test {

using Bytes = std::vector<std::uint8_t>;

/// "01 02 ff" as bytes; white space is free. Anything else ends the test program.
Bytes hex(std::string_view text);

/// A record put together by explicit offsets; what is not set is zero.
class Record {
 public:
  explicit Record(std::size_t size, std::uint8_t fill = 0) : bytes_(size, fill) {}

  Record& u8(std::size_t offset, std::uint8_t value) { return put(offset, {&value, 1}); }
  Record& u16(std::size_t offset, std::uint16_t value) { return little(offset, value, 2); }
  Record& u32(std::size_t offset, std::uint32_t value) { return little(offset, value, 4); }
  Record& u64(std::size_t offset, std::uint64_t value) { return little(offset, value, 8); }
  Record& fill(std::size_t offset, std::size_t count, std::uint8_t value);
  Record& put(std::size_t offset, std::span<const std::uint8_t> bytes);
  Record& text(std::size_t offset, std::string_view text);
  Record& text16(std::size_t offset, std::u16string_view text);

  operator const Bytes&() const { return bytes_; }  // NOLINT(google-explicit-constructor): a record is its bytes
  [[nodiscard]] const Bytes& bytes() const { return bytes_; }
  [[nodiscard]] std::size_t size() const { return bytes_.size(); }
  [[nodiscard]] auto begin() const { return bytes_.begin(); }
  [[nodiscard]] auto end() const { return bytes_.end(); }

 private:
  Record& little(std::size_t offset, std::uint64_t value, std::size_t width);

  Bytes bytes_;
};

/// Parts one after the other.
Bytes joined(const std::vector<Bytes>& parts);

/// Ends the test program unless there are so many bytes.
void requireSize(const Bytes& bytes, std::size_t size);

/// The bytes of an object, and an object of bytes.
template <class T>
Bytes bytesOf(const T& object) {
  const auto* first = reinterpret_cast<const std::uint8_t*>(&object);
  return {first, first + sizeof(T)};
}

template <class T>
T recordOf(const Bytes& bytes) {
  requireSize(bytes, sizeof(T));
  T record{};
  std::memcpy(&record, bytes.data(), sizeof(T));
  return record;
}

/// Empty when both are equal; otherwise the first difference and both surroundings, for a failure message.
std::string difference(std::span<const std::uint8_t> actual, std::span<const std::uint8_t> expected);

/// What outputs are filled with first, so that what is left untouched, or read beyond, shows.
inline constexpr std::uint8_t kPoison = 0xA5;
inline constexpr std::uint32_t kPoisonWord = 0xA5A5A5A5;

template <class T>
T poisoned() {
  T object;
  for (std::size_t i = 0; i < sizeof(T); ++i) reinterpret_cast<std::uint8_t*>(&object)[i] = kPoison;
  return object;
}

}  // namespace test
