// SPDX-License-Identifier: Apache-2.0
#include "simulator/embedded/kept_driver.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "simulator/embedded/state_image.h"
#include "simulator/embedded/state_layout.h"

namespace simulator {
namespace {

struct Free {
  void operator()(void* memory) const { std::free(memory); }
};
template <class T>
using Allocation = std::unique_ptr<T, Free>;

Allocation<std::byte> allocate(std::size_t size) {
  return Allocation<std::byte>{static_cast<std::byte*>(std::calloc(1, size))};
}

Reason checkFormat(std::uint32_t format) {
  if (format > kBlockFormat)
    return Reason{"was written by a newer simulator (format %u, this one reads %u)", format, kBlockFormat};
  if (format < kFirstFormat) return Reason{"has the unknown format %u", format};
  return {};
}

/// Whether a file is of a format that can be read, and no longer than one of that format can be.
Reason checkFile(const StateHead& head, std::uint64_t length) {
  if (Reason reason = checkFormat(head.format)) return reason;
  if (head.format == kBlockFormat) return checkLayout(head, length);
  return length > kLongestImage ? Reason{"is longer than any state"} : Reason{};
}

/// Fills a fresh driver from the content of an older file.
Reason fill(Driver& driver, const StateHead& head, std::span<const std::byte> content) {
  return head.format == kBlockFormat ? adoptBlocks(head, content.subspan(kDriverOffset), driver)
                                     : decodeImage(content, driver);
}

/// A driver's memory with the head of its file before it.
Driver& driverIn(std::byte* file) { return *reinterpret_cast<Driver*>(file + kDriverOffset); }

}  // namespace

Driver& KeptDriver::driver() const { return driverIn(file_.memory().data()); }

Reason KeptDriver::open(const char* path, std::uint32_t longestWait) {
  Reason reason;
  bool isReplaced = true;
  while (isReplaced && !reason) {
    isReplaced = false;
    reason = openOnce(path, longestWait, isReplaced);
  }
  if (reason) close();
  return reason;
}

Reason KeptDriver::openOnce(const char* path, std::uint32_t longestWait, bool& isReplaced) {
  if (Reason reason = file_.open(path, longestWait)) return reason;
  StateHead head{};
  const std::size_t known = std::min<std::uint64_t>(file_.length(), sizeof(head));
  if (Reason reason = file_.read(std::as_writable_bytes(std::span{&head, 1}).first(known))) return reason;
  // Made by a process that ended before it wrote the head.
  const bool isFresh = head.isZero() && (file_.length() == 0 || file_.length() == kStateFileSize);
  if (isFresh) return enter();
  if (!std::ranges::equal(head.magic, kStateMagic)) return Reason{"is not a state file of the simulator"};
  if (known < offsetof(StateHead, blockCount)) return Reason{"is cut short"};
  if (Reason reason = checkFile(head, file_.length())) return reason;
  isReplaced = !head.isPresent();
  return isReplaced ? convert(path, head) : enter();
}

Reason KeptDriver::enter() {
  if (Reason reason = file_.map(kStateFileSize)) return reason;
  auto& head = *reinterpret_cast<StateHead*>(file_.memory().data());
  if (head.isZero()) head = presentHead();
  driver().recover();
  return driver().isSound() ? Reason{} : Reason{"holds a state that no driver can have"};
}

Reason KeptDriver::convert(const char* path, const StateHead& head) {
  const auto size = static_cast<std::size_t>(file_.length());
  const auto older = allocate(size);
  const auto content = allocate(kStateFileSize);
  if (older == nullptr || content == nullptr) return Reason{"needs more memory than there is"};
  if (Reason reason = file_.read({older.get(), size})) return reason;
  if (Reason reason = fill(driverIn(content.get()), head, {older.get(), size})) return reason;
  const StateHead present = presentHead();
  std::memcpy(content.get(), &present, sizeof(present));
  return file_.replace(path, {content.get(), kStateFileSize});
}

}  // namespace simulator
