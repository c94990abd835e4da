// SPDX-License-Identifier: Apache-2.0
#include <string_view>
#include <utility>

#include "host/attachments.h"
#include "host/call_hook.h"
#include "host/handles.h"

CONFIGRET CM_Get_Device_Interface_List_SizeA(ULONG* length, GUID* interfaceClass, CHAR* deviceId, ULONG flags) {
  if (!host::permit("CM_Get_Device_Interface_List_SizeA", static_cast<const void*>(deviceId), flags)) return CR_FAILURE;
  *length = static_cast<ULONG>(host::pathListLength(*interfaceClass));
  return CR_SUCCESS;
}

CONFIGRET CM_Get_Device_Interface_ListW(GUID* interfaceClass, WCHAR* deviceId, WCHAR* buffer, ULONG length,
                                        ULONG flags) {
  if (!host::permit("CM_Get_Device_Interface_ListW", static_cast<const void*>(deviceId), length, flags))
    return CR_FAILURE;
  return host::copyPathList(*interfaceClass, buffer, length) ? CR_SUCCESS : CR_BUFFER_SMALL;
}

HANDLE CreateFileW(const WCHAR* path, DWORD access, DWORD share, SECURITY_ATTRIBUTES* security, DWORD disposition,
                   DWORD flags, HANDLE templateFile) {
  if (!host::permit("CreateFileW", std::u16string_view{path}, access, share, static_cast<const void*>(security),
                    disposition, flags, static_cast<const void*>(templateFile)))
    return INVALID_HANDLE_VALUE;
  const HANDLE handle = host::newHandle();
  return host::openDevice(host::findAttachment(path), handle) ? handle : INVALID_HANDLE_VALUE;
}

BOOL DeviceIoControl(HANDLE handle, DWORD code, void* input, DWORD inputLength, void* output, DWORD outputLength,
                     DWORD* returned, OVERLAPPED* overlapped) {
  if (!host::permit("DeviceIoControl", code, inputLength, outputLength)) return FALSE;
  host::Device* const device = host::openedDevice(handle);
  if (device == nullptr) return FALSE;
  const auto request = host::asDriversSeeIt({code, input, inputLength, output, outputLength, returned, overlapped});
  return device->control(handle, request) ? TRUE : FALSE;
}
