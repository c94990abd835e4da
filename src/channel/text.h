// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>

#include "format/policy/text.h"

namespace vqs {

// The C runtime's conversions between 8-bit and 16-bit text, called so that they never raise the invalid-parameter
// condition, which could end the process. False when the conversion fails; errno is then as the conversion has set it.

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
