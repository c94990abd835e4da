// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "format/binary/defect.h"
#include "format/binary/layout.h"

namespace vqs {

/// The number of policies that a file's header announces; 0 for a file that is not a policy binary.
std::uint32_t announcedPolicyCount(std::span<const std::byte> file);

/// The most bytes of a file that its policies can take up, header included, judged by the file's first bytes; 0 for a
/// file that is not a policy binary. What lies behind them is never looked at.
std::uint64_t mostUsefulBytes(std::span<const std::byte> head);

/// What is wrong with the header, before any policy is looked at; a defect of no kind when nothing is.
Defect headerDefect(std::span<const std::byte> file);

/// Takes the version numbers as far as the file has them.
void takeVersions(std::span<const std::byte> file, BinaryVersions& versions);

/// 0 for a file that ends before it.
std::uint16_t revisionOf(std::span<const std::byte> file);

/// Where the policies begin.
std::size_t headerSizeOf(std::span<const std::byte> file);

/// Upper bounds of what an entry may hold: in revision 5 the format's, before it what the file states for itself within
/// what a packed policy holds.
struct EntryLimits {
  std::uint32_t name;
  std::uint32_t description;
  std::uint32_t conditions;
  std::uint32_t texts;
  std::uint32_t textSize;
  std::uint32_t actions;
};

EntryLimits entryLimitsOf(std::span<const std::byte> file);

}  // namespace vqs
