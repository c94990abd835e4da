// SPDX-License-Identifier: Apache-2.0
#pragma once

// clang-format off
#include "host/types.h"
#include <cfgmgr32.h>
// clang-format on

/// On Windows: the functions of the system that have to do with devices, for a library whose device is in its own
/// process. They know attached devices (host/device.h) and published versions (host/file_versions.h), and no others.
namespace host {

CONFIGRET CM_Get_Device_Interface_List_SizeA(ULONG* length, GUID* interfaceClass, CHAR* deviceId, ULONG flags);
CONFIGRET CM_Get_Device_Interface_ListW(GUID* interfaceClass, WCHAR* deviceId, WCHAR* buffer, ULONG length,
                                        ULONG flags);

/// The handle is one of the system's, so that no other object of the process has it.
HANDLE CreateFileW(const WCHAR* path, DWORD access, DWORD share, SECURITY_ATTRIBUTES* security, DWORD disposition,
                   DWORD flags, HANDLE templateFile);
BOOL DeviceIoControl(HANDLE handle, DWORD code, void* input, DWORD inputLength, void* output, DWORD outputLength,
                     DWORD* returned, OVERLAPPED* overlapped);
/// Closes the system's objects, too.
BOOL CloseHandle(HANDLE handle);

/// Opens the device's event (host/events.h), or one of the system's.
HANDLE OpenEventW(DWORD access, BOOL inherit, const WCHAR* name);

DWORD GetFileVersionInfoSizeA(const CHAR* name, DWORD* handle);
BOOL GetFileVersionInfoA(const CHAR* name, DWORD handle, DWORD length, void* data);
BOOL VerQueryValueA(const void* block, const CHAR* subBlock, void** value, UINT* length);

}  // namespace host
