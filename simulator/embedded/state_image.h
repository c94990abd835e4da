// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <span>

#include "simulator/embedded/reason.h"
#include "simulator/model/driver.h"

namespace simulator {

/// What every state file begins with.
inline constexpr char kStateMagic[8] = {'V', 'Q', 'S', 'S', 'T', 'A', 'T', 'E'};

/// Simulators of formats 1 and 2 wrote the whole state anew at its end.
inline constexpr std::uint32_t kFirstFormat = 1;

/// The settings as format 2 had them: the first bytes of today's.
inline constexpr std::size_t kImageSettings = 3056;
static_assert(kImageSettings <= sizeof(Settings));

/// The longest image that there can be: three full stores.
inline constexpr std::size_t kLongestImage =
    32 + kImageSettings + kStoreCount * PolicyStore::kCapacity * sizeof(PackedPolicy) + sizeof(std::uint64_t);

/// Fills a fresh driver from an image of an older format, which may be anything behind its first 12 bytes. The driver
/// is partly filled when there is a reason.
Reason decodeImage(std::span<const std::byte> image, Driver& driver);

}  // namespace simulator
