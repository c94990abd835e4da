// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cstring>
#include <mutex>
#include <string_view>

#include "host/call_hook.h"
#include "host/handles.h"
#include "host/host.h"

namespace {

/// A device that is present, or that was: openings of it outlive its attachment.
struct Attachment : host::Counted {
  static constexpr std::size_t kLongestPath = 128;

  /// null once the device is gone
  host::Device* device;
  GUID interfaceClass;
  char16_t units[kLongestPath];
  std::size_t length;

  [[nodiscard]] std::u16string_view path() const { return {units, length}; }
  [[nodiscard]] bool isOf(const GUID& other) const { return std::memcmp(&interfaceClass, &other, sizeof(GUID)) == 0; }
};

/// Guards the list and who is gone; never held during a call of a device.
constinit host::Mutex deviceMutex;
constinit host::List<Attachment*> attachments;
constinit host::HandleTable<Attachment> openings;

host::Device* deviceOf(const host::Shared<Attachment>& attachment) {
  const std::lock_guard lock{deviceMutex};
  return attachment ? attachment->device : nullptr;
}

/// How long the list of the present paths of a class is: each is ended by a zero unit, and so is the list.
std::size_t listLength(const GUID& interfaceClass) {
  std::size_t length = 1;
  for (const Attachment* const attachment : attachments)
    if (attachment->isOf(interfaceClass)) length += attachment->length + 1;
  return length;
}

void writeList(const GUID& interfaceClass, WCHAR* list) {
  for (const Attachment* const attachment : attachments) {
    if (!attachment->isOf(interfaceClass)) continue;
    list = std::ranges::copy(attachment->path(), list).out;
    *list++ = 0;
  }
  *list = 0;
}

/// Device paths are compared without regard to case, as the object manager does.
bool samePath(std::u16string_view left, std::u16string_view right) {
  const auto lower = [](char16_t unit) { return unit >= u'A' && unit <= u'Z' ? char16_t(unit + 32) : unit; };
  return std::ranges::equal(left, right, {}, lower, lower);
}

/// What the I/O manager makes of a call for a buffered code: where there is no buffer, there is no length.
host::DeviceRequest asTheDriverSeesIt(host::DeviceRequest request) {
  constexpr DWORD kTransferMethod = 3;
  if ((request.code & kTransferMethod) != 0) return request;
  if (request.input == nullptr) request.inputLength = 0;
  if (request.output == nullptr) request.outputLength = 0;
  return request;
}

host::Shared<Attachment> findByPath(std::u16string_view path) {
  const std::lock_guard lock{deviceMutex};
  for (Attachment* const attachment : attachments)
    if (samePath(attachment->path(), path)) return host::Shared<Attachment>::of(attachment);
  return {};
}

}  // namespace

namespace host {

bool attachDevice(Device& device, const GUID& interfaceClass, std::u16string_view path) {
  if (path.size() > Attachment::kLongestPath) return false;
  Shared<Attachment> attachment{new Attachment};
  if (!attachment) return false;
  attachment->device = &device;
  attachment->interfaceClass = interfaceClass;
  std::ranges::copy(path, attachment->units);
  attachment->length = path.size();
  const std::lock_guard lock{deviceMutex};
  if (!attachments.add(attachment.get())) return false;
  attachment.handOver();
  return true;
}

void detachDevice(const Device& device) {
  const std::lock_guard lock{deviceMutex};
  auto* const found = std::ranges::find(attachments, &device, &Attachment::device);
  if (found == attachments.end()) return;
  const Shared<Attachment> attachment{*found};
  attachment->device = nullptr;
  attachments.remove(found);
}

bool closeDevice(HANDLE handle) {
  const auto attachment = openings.forget(handle);
  if (Device* const device = deviceOf(attachment)) device->close(handle);
  return static_cast<bool>(attachment);
}

}  // namespace host

CONFIGRET CM_Get_Device_Interface_List_SizeA(ULONG* length, GUID* interfaceClass, CHAR* deviceId, ULONG flags) {
  if (!host::permit("CM_Get_Device_Interface_List_SizeA", static_cast<const void*>(deviceId), flags)) return CR_FAILURE;
  const std::lock_guard lock{deviceMutex};
  *length = static_cast<ULONG>(listLength(*interfaceClass));
  return CR_SUCCESS;
}

CONFIGRET CM_Get_Device_Interface_ListW(GUID* interfaceClass, WCHAR* deviceId, WCHAR* buffer, ULONG length,
                                        ULONG flags) {
  if (!host::permit("CM_Get_Device_Interface_ListW", static_cast<const void*>(deviceId), length, flags))
    return CR_FAILURE;
  const std::lock_guard lock{deviceMutex};
  if (listLength(*interfaceClass) > length) return CR_BUFFER_SMALL;
  writeList(*interfaceClass, buffer);
  return CR_SUCCESS;
}

HANDLE CreateFileW(const WCHAR* path, DWORD access, DWORD share, SECURITY_ATTRIBUTES* security, DWORD disposition,
                   DWORD flags, HANDLE templateFile) {
  if (!host::permit("CreateFileW", std::u16string_view{path}, access, share, static_cast<const void*>(security),
                    disposition, flags, static_cast<const void*>(templateFile)))
    return INVALID_HANDLE_VALUE;
  auto attachment = findByPath(path);
  host::Device* const device = deviceOf(attachment);
  const HANDLE handle = device == nullptr ? nullptr : openings.add(std::move(attachment));
  if (handle == nullptr) return INVALID_HANDLE_VALUE;
  if (device->open(handle)) return handle;
  static_cast<void>(openings.forget(handle));
  return INVALID_HANDLE_VALUE;
}

BOOL DeviceIoControl(HANDLE handle, DWORD code, void* input, DWORD inputLength, void* output, DWORD outputLength,
                     DWORD* returned, OVERLAPPED* overlapped) {
  if (!host::permit("DeviceIoControl", code, inputLength, outputLength)) return FALSE;
  host::Device* const device = deviceOf(openings.find(handle));
  if (device == nullptr) return FALSE;
  const auto request = asTheDriverSeesIt({code, input, inputLength, output, outputLength, returned, overlapped});
  return device->control(handle, request) ? TRUE : FALSE;
}
