// SPDX-License-Identifier: Apache-2.0
#include "host/windows_devices.h"

#include <utility>

#include "host/attachments.h"

namespace host {
namespace {

BOOL failed(DWORD error) {
  SetLastError(error);
  return FALSE;
}

HANDLE notOpened(DWORD error) {
  SetLastError(error);
  return INVALID_HANDLE_VALUE;
}

}  // namespace

CONFIGRET CM_Get_Device_Interface_List_SizeA(ULONG* length, GUID* interfaceClass, CHAR* /*deviceId*/, ULONG /*flags*/) {
  *length = static_cast<ULONG>(pathListLength(*interfaceClass));
  return CR_SUCCESS;
}

CONFIGRET CM_Get_Device_Interface_ListW(GUID* interfaceClass, WCHAR* /*deviceId*/, WCHAR* buffer, ULONG length,
                                        ULONG /*flags*/) {
  return copyPathList(*interfaceClass, buffer, length) ? CR_SUCCESS : CR_BUFFER_SMALL;
}

HANDLE CreateFileW(const WCHAR* path, DWORD /*access*/, DWORD /*share*/, SECURITY_ATTRIBUTES* /*security*/,
                   DWORD /*disposition*/, DWORD /*flags*/, HANDLE /*templateFile*/) {
  auto attachment = findAttachment(path);
  if (!attachment) return notOpened(ERROR_FILE_NOT_FOUND);
  const HANDLE handle = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  if (handle == nullptr) return INVALID_HANDLE_VALUE;
  if (openDevice(std::move(attachment), handle)) return handle;
  ::CloseHandle(handle);
  return notOpened(ERROR_GEN_FAILURE);
}

BOOL DeviceIoControl(HANDLE handle, DWORD code, void* input, DWORD inputLength, void* output, DWORD outputLength,
                     DWORD* returned, OVERLAPPED* overlapped) {
  Device* const device = openedDevice(handle);
  if (device == nullptr) return failed(ERROR_INVALID_HANDLE);
  const auto request = asDriversSeeIt({code, input, inputLength, output, outputLength, returned, overlapped});
  return device->control(handle, request) ? TRUE : failed(ERROR_GEN_FAILURE);
}

BOOL CloseHandle(HANDLE handle) {
  closeDevice(handle);
  return ::CloseHandle(handle);
}

}  // namespace host
