// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <span>

#include "simulator/embedded/reason.h"
#include "simulator/model/driver.h"

namespace simulator {

/// What every state file begins with.
inline constexpr char kStateMagic[8] = {'V', 'Q', 'S', 'S', 'T', 'A', 'T', 'E'};

/// Formats of older simulators, which wrote the whole state anew at its end.
inline constexpr std::uint32_t kFirstFormat = 1;
inline constexpr std::uint32_t kLastImageFormat = 2;

/// The longest image that there can be: three full stores.
inline constexpr std::size_t kLongestImage =
    32 + sizeof(Settings) + kStoreCount * PolicyStore::kCapacity * sizeof(PackedPolicy) + sizeof(std::uint64_t);

/// Fills a fresh driver from an image of an older format, which may be anything behind its first 12 bytes. The driver
/// is partly filled when there is a reason.
Reason decodeImage(std::span<const std::byte> image, Driver& driver);

}  // namespace simulator
