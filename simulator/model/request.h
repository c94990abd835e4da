// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <type_traits>

namespace simulator {

/// Names one opening of the device, from its open to its close.
using SessionId = std::uint64_t;

/// What became of a request. Only a success has an answer; to the caller, all others are one failure.
enum class Outcome : std::uint8_t {
  kSuccess,
  /// no such code, or no such operation of it
  kUnknownRequest,
  kWrongLength,
  /// a field holds what no caller may send
  kMalformed,
  /// well formed, but not possible with what the driver holds
  kRefused
};

struct Answer {
  Outcome outcome;
  /// bytes of the buffer that travel back, never more than the output length
  std::uint32_t length;
};

constexpr Answer failed(Outcome outcome) { return {outcome, 0}; }
constexpr Answer succeeded(std::size_t length) { return {Outcome::kSuccess, static_cast<std::uint32_t>(length)}; }

/// A request in its buffer, which is as long as the longer of its two lengths. Fields are copied in and out: nothing
/// is assumed about where the buffer lies.
struct Request {
  SessionId session;
  std::span<std::byte> buffer;
  std::uint32_t inputLength;
  std::uint32_t outputLength;

  [[nodiscard]] bool hasLengths(std::uint64_t input, std::uint64_t output) const {
    return inputLength == input && outputLength == output;
  }

  template <class T>
  [[nodiscard]] T load(std::size_t offset) const {
    static_assert(std::is_trivially_copyable_v<T>);
    T value;
    std::memcpy(&value, buffer.subspan(offset, sizeof(T)).data(), sizeof(T));
    return value;
  }

  template <class T>
  void store(std::size_t offset, const T& value) const {
    static_assert(std::is_trivially_copyable_v<T>);
    std::memcpy(buffer.subspan(offset, sizeof(T)).data(), &value, sizeof(T));
  }
};

/// Everything that a request may need beside its bytes: see context.h.
struct Context;

/// Carries out a request, or fails and leaves everything as it was.
using Handler = Answer (*)(const Context& context, const Request& request);

/// Bytes that are looked at together, which compilers do with few instructions.
inline constexpr std::size_t kPiece = 64;

inline bool isPieceZero(std::span<const std::byte, kPiece> piece) {
  std::byte any{};
  for (const std::byte byte : piece) any |= byte;
  return any == std::byte{};
}

inline bool isZero(std::span<const std::byte> bytes) {
  for (; bytes.size() >= kPiece; bytes = bytes.subspan(kPiece))
    if (!isPieceZero(bytes.first<kPiece>())) return false;
  return std::ranges::all_of(bytes, [](std::byte byte) { return byte == std::byte{}; });
}

/// For records and arrays without padding.
template <class T>
bool isZeroFilled(const T& value) {
  static_assert(std::has_unique_object_representations_v<T>);
  return isZero(std::as_bytes(std::span{&value, 1}));
}

}  // namespace simulator
