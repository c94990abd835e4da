// SPDX-License-Identifier: Apache-2.0
#include "simulator/embedded/state_layout.h"

#include <algorithm>
#include <cstring>

#include "simulator/embedded/state_image.h"

namespace simulator {
namespace {

constexpr std::uint64_t kAlignment = alignof(Driver);

constexpr std::uint64_t roundUp(std::uint64_t size) { return (size + kAlignment - 1) / kAlignment * kAlignment; }

Reason unknownLayout() { return Reason{"lays its content out in another way"}; }
Reason newerLayout() { return Reason{"was written by a newer simulator, which keeps more than this one"}; }

bool isNamed(const DriverBlock& block, const DriverBlock& other) { return std::ranges::equal(block.name, other.name); }

/// Where the driver has a block of that name today; nullptr when it has none.
const DriverBlock* findPresent(const StateHead& present, const DriverBlock& block) {
  const auto found = std::ranges::find_if(present.blocks, [&](const auto& it) { return isNamed(it, block); });
  return found == std::end(present.blocks) ? nullptr : found;
}

bool isKnown(const StateHead& present, const DriverBlock& block) {
  const DriverBlock* const known = findPresent(present, block);
  return known != nullptr && block.size <= known->size;
}

std::span<const DriverBlock> blocksOf(const StateHead& head) { return std::span{head.blocks}.first(head.blockCount); }

/// True for blocks that follow one another, each at a multiple of the alignment; `end` is where the last one ends.
bool areInRow(std::span<const DriverBlock> blocks, std::uint64_t& end) {
  end = 0;
  for (const DriverBlock& block : blocks) {
    if (block.offset < end || block.offset >= end + kAlignment) return false;
    end = std::uint64_t{block.offset} + block.size;
  }
  return true;
}

bool areDifferent(std::span<const DriverBlock> blocks) {
  return std::ranges::all_of(blocks, [&](const DriverBlock& block) {
    return std::ranges::count_if(blocks, [&](const auto& it) { return isNamed(it, block); }) == 1;
  });
}

Reason checkLength(std::uint64_t length, std::uint64_t expected) {
  if (length < expected) return Reason{"is cut short"};
  return length > expected ? Reason{"is longer than its content"} : Reason{};
}

bool isSame(const StateHead& left, const StateHead& right) { return std::memcmp(&left, &right, sizeof(left)) == 0; }

}  // namespace

bool StateHead::isZero() const { return isSame(*this, StateHead{}); }
bool StateHead::isPresent() const { return isSame(*this, presentHead()); }

StateHead presentHead() {
  StateHead head{};
  std::ranges::copy(kStateMagic, head.magic);
  head.format = kBlockFormat;
  head.blockCount = kDriverBlocks;
  Driver::describe(head.blocks);
  return head;
}

Reason checkLayout(const StateHead& head, std::uint64_t fileLength) {
  if (fileLength < kDriverOffset) return Reason{"is cut short"};
  if (head.blockCount > kDriverBlocks) return newerLayout();
  const auto blocks = blocksOf(head);
  std::uint64_t end = 0;
  if (!areInRow(blocks, end) || !areDifferent(blocks)) return unknownLayout();
  const StateHead present = presentHead();
  if (!std::ranges::all_of(blocks, [&](const auto& block) { return isKnown(present, block); })) return newerLayout();
  return checkLength(fileLength, kDriverOffset + roundUp(end));
}

Reason adoptBlocks(const StateHead& head, std::span<const std::byte> blocks, Driver& driver) {
  const StateHead present = presentHead();
  const auto memory = std::as_writable_bytes(std::span{&driver, 1});
  for (const DriverBlock& block : blocksOf(head))
    std::ranges::copy(blocks.subspan(block.offset, block.size),
                      memory.subspan(findPresent(present, block)->offset, block.size).begin());
  driver.recover();
  return driver.isSound() ? Reason{} : Reason{"holds a state that no driver can have"};
}

}  // namespace simulator
