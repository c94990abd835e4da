// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#ifdef __SSE2__
#include <emmintrin.h>
#endif

// All of format/ copies and searches bytes through copyBytes, unitsBeforeZero and copyTerminated, so that a test can
// count what they do.

namespace vqs {

/// Neither pointer may be null, whatever the size.
inline void copyBytes(void* destination, const void* source, std::size_t size) {
  std::memcpy(destination, source, size);
}

/// Bytes that are searched at a time.
inline constexpr std::size_t kLineSize = 64;

template <class Unit>
Unit unitAt(const std::byte* bytes) {
  Unit unit{};
  std::memcpy(&unit, bytes, sizeof(unit));
  return unit;
}

/// Bytes before the first zero unit of a line, or the line's size.
template <class Unit>
std::size_t bytesBeforeZeroPortably(const std::byte* line) {
  // There is no way out of this loop, so that compilers look at many units at a time.
  Unit found{};
  for (std::size_t i = 0; i < kLineSize; i += sizeof(Unit))
    found = static_cast<Unit>(found | static_cast<Unit>(unitAt<Unit>(line + i) == Unit{}));
  if (found == Unit{}) return kLineSize;
  std::size_t size = 0;
  while (unitAt<Unit>(line + size) != Unit{}) size += sizeof(Unit);
  return size;
}

#ifdef __SSE2__
/// The same in instructions that every 64-bit x86 has: a third of those that compilers make of the loop.
template <class Unit>
std::size_t bytesBeforeZero(const std::byte* line) {
  const auto zeros = [line](std::size_t offset) {
    const __m128i units = _mm_loadu_si128(reinterpret_cast<const __m128i*>(line + offset));
    return sizeof(Unit) == 1 ? _mm_cmpeq_epi8(units, _mm_setzero_si128()) : _mm_cmpeq_epi16(units, _mm_setzero_si128());
  };
  const auto mask = [](__m128i found) { return std::uint64_t{static_cast<std::uint32_t>(_mm_movemask_epi8(found))}; };
  const std::array found{zeros(0), zeros(16), zeros(32), zeros(48)};
  if (mask(_mm_or_si128(_mm_or_si128(found[0], found[1]), _mm_or_si128(found[2], found[3]))) == 0) return kLineSize;
  return static_cast<std::size_t>(
      std::countr_zero(mask(found[0]) | mask(found[1]) << 16 | mask(found[2]) << 32 | mask(found[3]) << 48));
}
#else
template <class Unit>
std::size_t bytesBeforeZero(const std::byte* line) {
  return bytesBeforeZeroPortably<Unit>(line);
}
#endif

/// Units before the first zero unit, or the whole size when there is none.
template <class Unit>
std::size_t unitsBeforeZero(std::span<const std::byte> text) {
  std::size_t size = 0;
  while (text.size() - size >= kLineSize) {
    const std::size_t passed = bytesBeforeZero<Unit>(&text[size]);
    size += passed;
    if (passed < kLineSize) return size / sizeof(Unit);
  }
  while (text.size() - size >= sizeof(Unit) && unitAt<Unit>(&text[size]) != Unit{}) size += sizeof(Unit);
  return size / sizeof(Unit);
}

/// Copies a text up to its first zero unit, and this too, in one pass: the bytes that were copied, or 0 when the text
/// has no zero unit or does not fit.
template <class Unit>
std::size_t copyTerminated(std::span<std::byte> destination, std::span<const std::byte> text) {
  std::size_t size = 0;
  std::size_t passed = kLineSize;
  while (passed == kLineSize && std::min(destination.size(), text.size()) - size >= kLineSize) {
    passed = bytesBeforeZero<Unit>(&text[size]);
    copyBytes(&destination[size], &text[size], passed);
    size += passed;
  }
  for (; std::min(destination.size(), text.size()) - size >= sizeof(Unit); size += sizeof(Unit)) {
    copyBytes(&destination[size], &text[size], sizeof(Unit));
    if (unitAt<Unit>(&text[size]) == Unit{}) return size + sizeof(Unit);
  }
  return 0;
}

template <class Unit>
std::size_t unitsBeforeZero(std::span<const Unit> text) {
  return unitsBeforeZero<Unit>(std::as_bytes(text));
}

}  // namespace vqs
