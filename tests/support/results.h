// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vqs/status.h>

namespace test {

// What the exports return, typed here apart from the public header: its numbers are what callers were compiled with.
inline constexpr vqsStatus kDone{0};
inline constexpr vqsStatus kFailed{1};
inline constexpr vqsStatus kInvalid{2};
inline constexpr vqsStatus kNoMemory{3};
inline constexpr vqsStatus kNoDriver{4};
inline constexpr vqsStatus kNotSupported{5};
inline constexpr vqsStatus kVersionMismatch{6};

}  // namespace test
