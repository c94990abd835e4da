// SPDX-License-Identifier: Apache-2.0
#include <cstring>

#include "host/file_versions.h"
#include "host/windows_devices.h"

namespace host {
namespace {

struct FileVersion {
  std::string_view name;
  VS_FIXEDFILEINFO version;
};

/// An entry without a name is free.
FileVersion versions[2] = {};

FileVersion* find(std::string_view name) {
  for (auto& entry : versions)
    if (entry.name == name) return &entry;
  return nullptr;
}

}  // namespace

bool setFileVersion(std::string_view name, const VS_FIXEDFILEINFO& version) {
  auto* entry = find(name);
  if (entry == nullptr) entry = find({});
  if (entry == nullptr) return false;
  *entry = {.name = name, .version = version};
  return true;
}

void removeFileVersion(std::string_view name) {
  if (auto* entry = find(name)) *entry = {};
}

DWORD GetFileVersionInfoSizeA(const CHAR* name, DWORD* handle) {
  *handle = 0;
  return find(name) != nullptr ? sizeof(VS_FIXEDFILEINFO) : 0;
}

BOOL GetFileVersionInfoA(const CHAR* name, DWORD /*handle*/, DWORD length, void* data) {
  const auto* found = find(name);
  if (found == nullptr || length < sizeof(found->version)) return FALSE;
  std::memcpy(data, &found->version, sizeof(found->version));
  return TRUE;
}

BOOL VerQueryValueA(const void* block, const CHAR* subBlock, void** value, UINT* length) {
  if (std::string_view{subBlock} != "\\") return FALSE;
  *value = const_cast<void*>(block);
  *length = sizeof(VS_FIXEDFILEINFO);
  return TRUE;
}

}  // namespace host
