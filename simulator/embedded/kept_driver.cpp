// SPDX-License-Identifier: Apache-2.0
#include "simulator/embedded/kept_driver.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "simulator/embedded/state_image.h"

namespace simulator {
namespace {

constexpr std::uint32_t kFormat = 3;

struct FileHead {
  char magic[8];
  std::uint32_t format;
  std::uint32_t blockCount;
  DriverBlock blocks[kDriverBlocks];
};

/// The driver begins at a page of its own.
constexpr std::size_t kDriverOffset = 4096;
static_assert(sizeof(FileHead) <= kDriverOffset);
constexpr std::size_t kFileSize = kDriverOffset + sizeof(Driver);

FileHead presentHead() {
  FileHead head{};
  std::ranges::copy(kStateMagic, head.magic);
  head.format = kFormat;
  head.blockCount = kDriverBlocks;
  Driver::describe(head.blocks);
  return head;
}

struct Free {
  void operator()(void* memory) const { std::free(memory); }
};
template <class T>
using Allocation = std::unique_ptr<T, Free>;

Allocation<std::byte> allocate(std::size_t size) {
  return Allocation<std::byte>{static_cast<std::byte*>(std::calloc(1, size))};
}

bool isZero(const FileHead& head) {
  const FileHead zero{};
  return std::memcmp(&head, &zero, sizeof(head)) == 0;
}

Reason checkFormat(std::uint32_t format) {
  if (format > kFormat)
    return Reason{"was written by a newer simulator (format %u, this one reads %u)", format, kFormat};
  if (format < kFirstFormat) return Reason{"has the unknown format %u", format};
  return {};
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
  FileHead head{};
  const std::size_t known = std::min<std::uint64_t>(file_.length(), sizeof(head));
  if (Reason reason = file_.read(std::as_writable_bytes(std::span{&head, 1}).first(known))) return reason;
  // Made by a process that ended before it wrote the head.
  const bool isFresh = isZero(head) && (file_.length() == 0 || file_.length() == kFileSize);
  if (isFresh) return enter();
  if (!std::ranges::equal(head.magic, kStateMagic)) return Reason{"is not a state file of the simulator"};
  if (known < offsetof(FileHead, blockCount)) return Reason{"is cut short"};
  if (Reason reason = checkFormat(head.format)) return reason;
  isReplaced = head.format <= kLastImageFormat;
  return isReplaced ? convert(path) : enter();
}

Reason KeptDriver::enter() {
  const std::uint64_t length = file_.length();
  if (length != 0 && length < kFileSize) return Reason{"is cut short"};
  if (length > kFileSize) return Reason{"is longer than its content"};
  if (Reason reason = file_.map(kFileSize)) return reason;
  auto& head = *reinterpret_cast<FileHead*>(file_.memory().data());
  const FileHead expected = presentHead();
  if (isZero(head)) head = expected;
  if (std::memcmp(&head, &expected, sizeof(head)) != 0) return Reason{"lays its content out in another way"};
  driver().recover();
  return driver().isSound() ? Reason{} : Reason{"holds a state that no driver can have"};
}

Reason KeptDriver::convert(const char* path) {
  if (file_.length() > kLongestImage) return Reason{"is longer than any state"};
  const auto size = static_cast<std::size_t>(file_.length());
  const auto image = allocate(size);
  const auto content = allocate(kFileSize);
  if (image == nullptr || content == nullptr) return Reason{"needs more memory than there is"};
  if (Reason reason = file_.read({image.get(), size})) return reason;
  if (Reason reason = decodeImage({image.get(), size}, driverIn(content.get()))) return reason;
  const FileHead head = presentHead();
  std::memcpy(content.get(), &head, sizeof(head));
  return file_.replace(path, {content.get(), kFileSize});
}

}  // namespace simulator
