// SPDX-License-Identifier: Apache-2.0
#include "host/windows_devices.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "host/device.h"
#include "host/handle_list.h"

namespace host {
namespace {

using Path = std::basic_string_view<WCHAR>;

class Lock {
 public:
  explicit Lock(SRWLOCK& lock) : lock_(lock) { AcquireSRWLockExclusive(&lock_); }
  ~Lock() { ReleaseSRWLockExclusive(&lock_); }
  Lock(Lock&&) = delete;

 private:
  SRWLOCK& lock_;
};

/// The device that is present; there is none when it is null.
struct Attachment {
  static constexpr std::size_t kLongestPath = 128;

  Device* device;
  GUID interfaceClass;
  WCHAR path[kLongestPath];
  std::size_t pathLength;
};

/// Guards what follows; never held during a call of the device.
SRWLOCK deviceLock = SRWLOCK_INIT;
Attachment attached = {};

/// Never destroyed: programs may have handles as long as they run.
[[clang::no_destroy]] constinit HandleList openHandles;

/// The path of the present device of a class; empty when there is none.
Path presentPath(const GUID& interfaceClass) {
  if (attached.device == nullptr || std::memcmp(&attached.interfaceClass, &interfaceClass, sizeof(GUID)) != 0)
    return {};
  return {attached.path, attached.pathLength};
}

/// Units of the list of a class's paths: each ended by a zero unit, and one more at the end.
std::size_t listLength(Path path) { return path.empty() ? 1 : path.size() + 2; }

/// Device paths are compared without regard to case, as the object manager does.
bool samePath(Path left, Path right) {
  const auto lower = [](WCHAR unit) { return unit >= L'A' && unit <= L'Z' ? static_cast<WCHAR>(unit + 32) : unit; };
  return std::ranges::equal(left, right, {}, lower, lower);
}

Device* deviceAt(Path path) {
  const Lock lock{deviceLock};
  const bool isPresent = attached.device != nullptr && samePath({attached.path, attached.pathLength}, path);
  return isPresent ? attached.device : nullptr;
}

bool addHandle(HANDLE handle) {
  const Lock lock{deviceLock};
  return openHandles.add(handle);
}

bool removeHandle(HANDLE handle) {
  const Lock lock{deviceLock};
  return openHandles.remove(handle);
}

/// The device behind an open handle; null once the device is gone.
Device* deviceOf(HANDLE handle) {
  const Lock lock{deviceLock};
  const auto handles = openHandles.all();
  return std::ranges::find(handles, handle) == handles.end() ? nullptr : attached.device;
}

BOOL failed(DWORD error) {
  SetLastError(error);
  return FALSE;
}

}  // namespace

bool attachDevice(Device& device, const GUID& interfaceClass, Path path) {
  const Lock lock{deviceLock};
  if (attached.device != nullptr || path.size() > Attachment::kLongestPath) return false;
  attached = {.device = &device, .interfaceClass = interfaceClass, .path = {}, .pathLength = path.size()};
  std::ranges::copy(path, attached.path);
  return true;
}

void detachDevice(const Device& device) {
  const Lock lock{deviceLock};
  if (attached.device == &device) attached.device = nullptr;
}

CONFIGRET CM_Get_Device_Interface_List_SizeA(ULONG* length, GUID* interfaceClass, CHAR* /*deviceId*/, ULONG /*flags*/) {
  const Lock lock{deviceLock};
  *length = static_cast<ULONG>(listLength(presentPath(*interfaceClass)));
  return CR_SUCCESS;
}

CONFIGRET CM_Get_Device_Interface_ListW(GUID* interfaceClass, WCHAR* /*deviceId*/, WCHAR* buffer, ULONG length,
                                        ULONG /*flags*/) {
  const Lock lock{deviceLock};
  const Path path = presentPath(*interfaceClass);
  const std::size_t needed = listLength(path);
  if (needed > length) return CR_BUFFER_SMALL;
  std::fill_n(std::ranges::copy(path, buffer).out, needed - path.size(), L'\0');
  return CR_SUCCESS;
}

HANDLE CreateFileW(const WCHAR* path, DWORD /*access*/, DWORD /*share*/, SECURITY_ATTRIBUTES* /*security*/,
                   DWORD /*disposition*/, DWORD /*flags*/, HANDLE /*templateFile*/) {
  Device* const device = deviceAt(path);
  if (device == nullptr) {
    SetLastError(ERROR_FILE_NOT_FOUND);
    return INVALID_HANDLE_VALUE;
  }
  const HANDLE handle = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  if (handle == nullptr) return INVALID_HANDLE_VALUE;
  if (addHandle(handle) && device->open(handle)) return handle;
  removeHandle(handle);
  ::CloseHandle(handle);
  SetLastError(ERROR_GEN_FAILURE);
  return INVALID_HANDLE_VALUE;
}

BOOL DeviceIoControl(HANDLE handle, DWORD code, void* input, DWORD inputLength, void* output, DWORD outputLength,
                     DWORD* returned, OVERLAPPED* overlapped) {
  Device* const device = deviceOf(handle);
  if (device == nullptr) return failed(ERROR_INVALID_HANDLE);
  const auto request = asDriversSeeIt({code, input, inputLength, output, outputLength, returned, overlapped});
  return device->control(handle, request) ? TRUE : failed(ERROR_GEN_FAILURE);
}

BOOL CloseHandle(HANDLE handle) {
  Device* const device = deviceOf(handle);
  if (removeHandle(handle) && device != nullptr) device->close(handle);
  return ::CloseHandle(handle);
}

}  // namespace host
