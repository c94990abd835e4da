// SPDX-License-Identifier: Apache-2.0
#include <cstring>
#include <string_view>

#include "host/file_versions.h"
#include "host/windows_devices.h"

namespace host {

DWORD GetFileVersionInfoSizeA(const CHAR* name, DWORD* handle) {
  *handle = 0;
  return fileVersion(name) ? sizeof(VS_FIXEDFILEINFO) : 0;
}

BOOL GetFileVersionInfoA(const CHAR* name, DWORD /*handle*/, DWORD length, void* data) {
  const auto version = fileVersion(name);
  if (!version || length < sizeof(*version)) return FALSE;
  std::memcpy(data, &*version, sizeof(*version));
  return TRUE;
}

BOOL VerQueryValueA(const void* block, const CHAR* subBlock, void** value, UINT* length) {
  if (std::string_view{subBlock} != "\\") return FALSE;
  *value = const_cast<void*>(block);
  *length = sizeof(VS_FIXEDFILEINFO);
  return TRUE;
}

}  // namespace host
