// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <concepts>
#include <cstddef>
#include <span>

#include "format/bytes.h"

namespace vqs {

/// Bytes of a known number, which values are read from at known places.
template <std::size_t N>
class FixedBytes {
 public:
  template <std::size_t offset, std::integral T>
  void read(T& value) const {
    static_assert(offset + sizeof(T) <= N);
    copyBytes(&value, bytes_.data() + offset, sizeof(T));
  }

  [[nodiscard]] std::span<const std::byte> bytes() const { return bytes_; }

 private:
  friend class ByteReader;
  std::span<const std::byte> bytes_;
};

/// Takes fields off the front of a file, each only when it lies wholly inside.
class ByteReader {
 public:
  explicit ByteReader(std::span<const std::byte> bytes) : rest_(bytes) {}

  /// The next `size` bytes; empty, and false, when there are not as many.
  bool take(std::size_t size, std::span<const std::byte>& field) {
    if (rest_.size() < size) return false;
    field = rest_.first(size);
    rest_ = rest_.subspan(size);
    return true;
  }

  template <std::integral T>
  bool take(T& value) {
    std::span<const std::byte> field;
    if (!take(sizeof(T), field)) return false;
    copyBytes(&value, field.data(), sizeof(T));
    return true;
  }

  template <std::size_t N>
  bool take(FixedBytes<N>& bytes) {
    return take(N, bytes.bytes_);
  }

  /// Bytes that are left.
  [[nodiscard]] std::size_t size() const { return rest_.size(); }

 private:
  std::span<const std::byte> rest_;
};

/// Appends fields to a buffer, each only when it fits.
class ByteWriter {
 public:
  explicit ByteWriter(std::span<std::byte> buffer) : rest_(buffer) {}

  bool put(std::span<const std::byte> field) {
    if (rest_.size() < field.size()) return false;
    copyBytes(rest_.data(), field.data(), field.size());
    rest_ = rest_.subspan(field.size());
    return true;
  }

  /// Appends a text up to its first zero unit, behind its size; false for a text without one, too.
  template <class Unit>
  bool putTerminated(std::span<const std::byte> text) {
    std::uint32_t size = 0;
    if (rest_.size() < sizeof(size)) return false;
    size = static_cast<std::uint32_t>(copyTerminated<Unit>(rest_.subspan(sizeof(size)), text));
    if (size == 0) return false;
    copyBytes(rest_.data(), &size, sizeof(size));
    rest_ = rest_.subspan(sizeof(size) + size);
    return true;
  }

  template <std::integral T>
  bool put(T value) {
    return put(std::as_bytes(std::span{&value, 1}));
  }

 private:
  std::span<std::byte> rest_;
};

}  // namespace vqs
