// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <span>

#include "simulator/embedded/reason.h"
#include "simulator/model/driver.h"

namespace simulator {

/// The first bytes of every state file, of all formats.
inline constexpr char kStateMagic[8] = {'V', 'Q', 'S', 'S', 'T', 'A', 'T', 'E'};

/// The oldest format that can be read. Older simulators, with formats 1 and 2, kept the state in memory and wrote it to
/// the file as one image in the end.
inline constexpr std::uint32_t kFirstFormat = 1;

/// Bytes of the settings in an image of format 2. They are the first bytes of today's Settings, which only grow at
/// their end.
inline constexpr std::size_t kImageSettings = 3056;
static_assert(kImageSettings <= sizeof(Settings));

/// Bytes of the longest image: that of three full stores.
inline constexpr std::size_t kLongestImage =
    32 + kImageSettings + kStoreCount * PolicyStore::kCapacity * sizeof(PackedPolicy) + sizeof(std::uint64_t);

/// Fills a fresh driver from an image of an older format. The caller has checked its first 12 bytes; all others may be
/// damaged. Returns why it cannot be read, and the driver is partly filled then.
Reason decodeImage(std::span<const std::byte> image, Driver& driver);

}  // namespace simulator
