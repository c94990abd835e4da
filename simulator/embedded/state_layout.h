// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "simulator/embedded/reason.h"
#include "simulator/model/driver.h"

namespace simulator {

/// The format whose head names the blocks behind it. A block can be added, or grow at its end, without another format:
/// bytes that a file lacks count as zero, which is what a fresh driver has.
inline constexpr std::uint32_t kBlockFormat = 3;

/// What a file of this format begins with. Offsets of blocks count from the driver's beginning.
struct StateHead {
  char magic[8];
  std::uint32_t format;
  std::uint32_t blockCount;
  DriverBlock blocks[kDriverBlocks];

  [[nodiscard]] bool isZero() const;
  /// True for a file whose content is a driver's memory as it is today.
  [[nodiscard]] bool isPresent() const;
};

/// The driver begins at a page of its own.
inline constexpr std::size_t kDriverOffset = 4096;
static_assert(sizeof(StateHead) <= kDriverOffset);
inline constexpr std::size_t kStateFileSize = kDriverOffset + sizeof(Driver);

StateHead presentHead();

/// Whether a file of that length has all of its blocks, and the driver knows them.
Reason checkLayout(const StateHead& head, std::uint64_t fileLength);

/// Fills a fresh driver from the blocks behind a head that was checked.
Reason adoptBlocks(const StateHead& head, std::span<const std::byte> blocks, Driver& driver);

}  // namespace simulator
