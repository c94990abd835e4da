// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstddef>
#include <span>

#include <vqs/base.h>

namespace vqs {

/// Units before the first zero unit, or the whole size when there is none.
template <class Unit>
std::size_t unitsBeforeZero(std::span<const Unit> text) {
  return static_cast<std::size_t>(std::ranges::find(text, Unit{0}) - text.begin());
}

/// How 8-bit text, which policies of structure versions 0 and 1 have, becomes 16-bit text and the reverse: what their
/// characters are is for others to say. Each returns false when the text cannot be converted.
struct TextConversion {
  /// Widens a field that must hold a NUL. The destination has at least as many units as the field has bytes.
  bool (*widenTerminated)(std::span<VqsChar16> destination, std::span<const char> field);
  /// Widens a field that ends at its NUL or at its last byte.
  bool (*widenField)(std::span<VqsChar16> destination, std::span<const char> field);
  /// Narrows a field that ends at its zero unit or at its last unit, cutting what does not fit.
  bool (*narrowField)(std::span<char> destination, std::span<const VqsChar16> field);
};

/// Stands in for it where texts are as the driver has them, in structure version 2.
struct NoConversion {};

}  // namespace vqs
