// SPDX-License-Identifier: Apache-2.0
#include "host/attachments.h"

#include <algorithm>
#include <cstring>
#include <mutex>
#include <utility>

#include "host/handle_table.h"
#include "host/list.h"
#include "host/mutex.h"

namespace host {
namespace {

/// Guards the list and each attachment's device pointer. It is never held while a device is called.
constinit Mutex attachmentMutex;
constinit List<Attachment*> attachments;
constinit HandleTable<Attachment> openings;

bool sameClass(const GUID& left, const GUID& right) { return std::memcmp(&left, &right, sizeof(GUID)) == 0; }

/// Device paths are compared without regard to case, as the object manager does.
bool samePath(Path left, Path right) {
  const auto lower = [](WCHAR unit) { return unit >= 'A' && unit <= 'Z' ? static_cast<WCHAR>(unit + 32) : unit; };
  return std::ranges::equal(left, right, {}, lower, lower);
}

std::size_t lengthOfList(const GUID& interfaceClass) {
  std::size_t length = 1;
  for (const Attachment* const attachment : attachments)
    if (sameClass(attachment->interfaceClass, interfaceClass)) length += attachment->length + 1;
  return length;
}

void writeList(const GUID& interfaceClass, WCHAR* list) {
  for (const Attachment* const attachment : attachments) {
    if (!sameClass(attachment->interfaceClass, interfaceClass)) continue;
    list = std::ranges::copy(attachment->path(), list).out;
    *list++ = 0;
  }
  *list = 0;
}

Device* deviceOf(const Shared<Attachment>& attachment) {
  const std::lock_guard lock{attachmentMutex};
  return attachment ? attachment->device : nullptr;
}

}  // namespace

bool attachDevice(Device& device, const GUID& interfaceClass, Path path) {
  if (path.size() > Attachment::kLongestPath) return false;
  Shared<Attachment> attachment{new Attachment};
  if (!attachment) return false;
  attachment->device = &device;
  attachment->interfaceClass = interfaceClass;
  std::ranges::copy(path, attachment->units);
  attachment->length = path.size();
  const std::lock_guard lock{attachmentMutex};
  if (!attachments.add(attachment.get())) return false;
  attachment.handOver();
  return true;
}

void detachDevice(const Device& device) {
  const std::lock_guard lock{attachmentMutex};
  auto* const found = std::ranges::find(attachments, &device, &Attachment::device);
  if (found == attachments.end()) return;
  const Shared<Attachment> attachment{*found};
  attachment->device = nullptr;
  attachments.remove(found);
}

Shared<Attachment> findAttachment(Path path) {
  const std::lock_guard lock{attachmentMutex};
  for (Attachment* const attachment : attachments)
    if (samePath(attachment->path(), path)) return Shared<Attachment>::of(attachment);
  return {};
}

std::size_t pathListLength(const GUID& interfaceClass) {
  const std::lock_guard lock{attachmentMutex};
  return lengthOfList(interfaceClass);
}

bool copyPathList(const GUID& interfaceClass, WCHAR* list, std::size_t room) {
  const std::lock_guard lock{attachmentMutex};
  if (lengthOfList(interfaceClass) > room) return false;
  writeList(interfaceClass, list);
  return true;
}

bool openDevice(Shared<Attachment> attachment, HANDLE handle) {
  Device* const device = deviceOf(attachment);
  if (device == nullptr || !openings.add(handle, std::move(attachment))) return false;
  if (device->open(handle)) return true;
  static_cast<void>(openings.forget(handle));
  return false;
}

Device* openedDevice(HANDLE handle) { return deviceOf(openings.find(handle)); }

bool closeDevice(HANDLE handle) {
  const auto attachment = openings.forget(handle);
  if (Device* const device = deviceOf(attachment)) device->close(handle);
  return static_cast<bool>(attachment);
}

}  // namespace host
