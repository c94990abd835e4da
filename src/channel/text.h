// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>

#include "format/policy/text.h"

namespace vqs {

// The runtime's conversions between 8-bit and 16-bit text, kept clear of the conditions for which the runtime ends the
// process. False when the conversion fails, with the runtime's error indicator set as by the conversion.

/// Widens a field that must hold a NUL. The destination has at least as many units as the field has bytes.
bool widenTerminated(std::span<VqsChar16> destination, std::span<const char> field);

/// Widens a field that ends at its NUL or at its last byte.
bool widenField(std::span<VqsChar16> destination, std::span<const char> field);

/// Narrows a field that ends at its zero unit or at its last unit, cutting what does not fit.
bool narrowField(std::span<char> destination, std::span<const VqsChar16> field);

inline constexpr TextConversion kRuntimeText = {
    .widenTerminated = widenTerminated, .widenField = widenField, .narrowField = narrowField};

/// Copies a field that ends at its NUL or at its last byte; one that does not fit with its NUL comes out empty, and the
/// copy is false.
bool copyBounded(std::span<char> destination, std::span<const char> field);

}  // namespace vqs
