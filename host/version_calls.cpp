// SPDX-License-Identifier: Apache-2.0
#include <cstring>
#include <string_view>

#include "host/call_hook.h"
#include "host/file_versions.h"

DWORD GetFileVersionInfoSizeA(const CHAR* name, DWORD* handle) {
  if (!host::permit("GetFileVersionInfoSizeA", std::string_view{name})) return 0;
  if (handle != nullptr) *handle = 0;
  return host::fileVersion(name) ? sizeof(VS_FIXEDFILEINFO) : 0;
}

BOOL GetFileVersionInfoA(const CHAR* name, DWORD handle, DWORD length, void* data) {
  if (!host::permit("GetFileVersionInfoA", std::string_view{name}, handle, length)) return FALSE;
  const auto version = host::fileVersion(name);
  if (!version || length < sizeof(*version)) return FALSE;
  std::memcpy(data, &*version, sizeof(*version));
  return TRUE;
}

BOOL VerQueryValueA(const void* block, const CHAR* subBlock, void** value, UINT* length) {
  if (!host::permit("VerQueryValueA", std::string_view{subBlock}, *length)) return FALSE;
  if (std::string_view{subBlock} != "\\") return FALSE;
  *value = const_cast<void*>(block);
  *length = sizeof(VS_FIXEDFILEINFO);
  return TRUE;
}
