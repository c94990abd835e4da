// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "documents/findings/finding.h"

namespace documents {

/// Which value of the driver's key registry text sets.
enum class RegistryValue : std::uint8_t { kAsm, kBalanceProfile };

/// The encoding of registry text, with the line ends that go with it: UTF-8 without a byte order mark and LF, or UTF-16
/// with one, little-endian, and CR LF, as registry editors write it.
enum class RegistryEncoding : std::uint8_t { kUtf8, kUtf16 };

}  // namespace documents
