// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cstring>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "host/call_hook.h"
#include "host/guarded.h"
#include "host/handles.h"
#include "host/host.h"

namespace {

/// A device that is present, or that was: openings of it outlive its attachment.
struct Attachment {
  host::Device* device;
  GUID interfaceClass;
  std::u16string path;
};

std::mutex deviceMutex;

/// Never destroyed: programs may have handles as long as they run.
auto& attachments() {
  static auto& list = *new std::vector<std::shared_ptr<Attachment>>;
  return list;
}

/// One opening of a device.
class OpenDevice : public host::Object {
 public:
  explicit OpenDevice(std::shared_ptr<const Attachment> attachment) : attachment_(std::move(attachment)) {}
  void closed(HANDLE handle) override {
    if (auto* opened = device()) opened->close(handle);
  }
  /// Null once the device is gone.
  [[nodiscard]] host::Device* device() const {
    const std::lock_guard lock{deviceMutex};
    return attachment_->device;
  }

 private:
  std::shared_ptr<const Attachment> attachment_;
};

bool sameClass(const GUID& left, const GUID& right) { return std::memcmp(&left, &right, sizeof(GUID)) == 0; }

/// The present paths of a class, each ended by a zero unit, and the terminator of the list.
std::u16string interfaceList(const GUID& interfaceClass) {
  const std::lock_guard lock{deviceMutex};
  std::u16string list;
  for (const auto& attachment : attachments())
    if (sameClass(attachment->interfaceClass, interfaceClass)) (list += attachment->path) += u'\0';
  return list += u'\0';
}

/// Device paths are compared without regard to case, as the object manager does.
bool samePath(std::u16string_view left, std::u16string_view right) {
  const auto lower = [](char16_t unit) { return unit >= u'A' && unit <= u'Z' ? char16_t(unit + 32) : unit; };
  return std::ranges::equal(left, right, {}, lower, lower);
}

std::shared_ptr<const Attachment> findByPath(std::u16string_view path) {
  const std::lock_guard lock{deviceMutex};
  const auto found = std::ranges::find_if(attachments(), [&](const auto& it) { return samePath(it->path, path); });
  return found == attachments().end() ? nullptr : *found;
}

}  // namespace

namespace host {

bool attachDevice(Device& device, const GUID& interfaceClass, std::u16string_view path) {
  return guarded(false, [&] {
    const std::lock_guard lock{deviceMutex};
    attachments().push_back(std::make_shared<Attachment>(Attachment{&device, interfaceClass, std::u16string{path}}));
    return true;
  });
}

void detachDevice(const Device& device) {
  const std::lock_guard lock{deviceMutex};
  std::erase_if(attachments(), [&](const auto& attachment) {
    if (attachment->device != &device) return false;
    attachment->device = nullptr;
    return true;
  });
}

}  // namespace host

CONFIGRET CM_Get_Device_Interface_List_SizeA(ULONG* length, GUID* interfaceClass, CHAR* deviceId, ULONG flags) {
  return host::guarded(CR_OUT_OF_MEMORY, [&] {
    if (!host::permit("CM_Get_Device_Interface_List_SizeA", static_cast<const void*>(deviceId), flags))
      return CR_FAILURE;
    *length = static_cast<ULONG>(interfaceList(*interfaceClass).size());
    return CR_SUCCESS;
  });
}

CONFIGRET CM_Get_Device_Interface_ListW(GUID* interfaceClass, WCHAR* deviceId, WCHAR* buffer, ULONG length,
                                        ULONG flags) {
  return host::guarded(CR_OUT_OF_MEMORY, [&] {
    if (!host::permit("CM_Get_Device_Interface_ListW", static_cast<const void*>(deviceId), length, flags))
      return CR_FAILURE;
    const auto list = interfaceList(*interfaceClass);
    if (list.size() > length) return CR_BUFFER_SMALL;
    std::ranges::copy(list, buffer);
    return CR_SUCCESS;
  });
}

HANDLE CreateFileW(const WCHAR* path, DWORD access, DWORD share, SECURITY_ATTRIBUTES* security, DWORD disposition,
                   DWORD flags, HANDLE templateFile) {
  return host::guarded(INVALID_HANDLE_VALUE, [&] {
    if (!host::permit("CreateFileW", std::u16string_view{path}, access, share, static_cast<const void*>(security),
                      disposition, flags, static_cast<const void*>(templateFile)))
      return INVALID_HANDLE_VALUE;
    const auto attachment = findByPath(path);
    if (attachment == nullptr) return INVALID_HANDLE_VALUE;
    const auto handle = host::registerHandle(std::make_shared<OpenDevice>(attachment));
    if (attachment->device->open(handle)) return handle;
    host::forgetHandle(handle);
    return INVALID_HANDLE_VALUE;
  });
}

BOOL DeviceIoControl(HANDLE handle, DWORD code, void* input, DWORD inputLength, void* output, DWORD outputLength,
                     DWORD* returned, OVERLAPPED* overlapped) {
  return host::guarded(FALSE, [&] {
    if (!host::permit("DeviceIoControl", code, inputLength, outputLength)) return FALSE;
    const auto opened = host::findHandleOf<OpenDevice>(handle);
    auto* device = opened == nullptr ? nullptr : opened->device();
    if (device == nullptr) return FALSE;
    const auto request = host::asDriversSeeIt({code, input, inputLength, output, outputLength, returned, overlapped});
    return device->control(handle, request) ? TRUE : FALSE;
  });
}
