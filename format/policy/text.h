// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>

#include <vqs/base.h>

namespace vqs {

/// The functions that convert between the 8-bit text of structure versions 0 and 1 and the driver's 16-bit text. The
/// caller brings them along, because the character set is the caller's. Each returns false when the text cannot be
/// converted.
struct TextConversion {
  /// Widens a field that must hold a NUL. The destination has at least as many units as the field has bytes.
  bool (*widenTerminated)(std::span<VqsChar16> destination, std::span<const char> field);
  /// Widens a field that ends at its NUL or at its last byte.
  bool (*widenField)(std::span<VqsChar16> destination, std::span<const char> field);
  /// Narrows a field that ends at its zero unit or at its last unit, cutting what does not fit.
  bool (*narrowField)(std::span<char> destination, std::span<const VqsChar16> field);
};

/// Takes the place of a TextConversion in structure version 2, whose texts are the driver's already.
struct NoConversion {};

}  // namespace vqs
