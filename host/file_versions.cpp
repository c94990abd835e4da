// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cstring>
#include <mutex>
#include <optional>
#include <string_view>

#include "host/call_hook.h"
#include "host/host.h"
#include "host/list.h"
#include "host/mutex.h"

namespace {

struct FileVersion {
  static constexpr std::size_t kLongestName = 64;

  char name[kLongestName];
  std::size_t length;
  VS_FIXEDFILEINFO version;

  [[nodiscard]] std::string_view nameText() const { return {name, length}; }
};

constinit host::Mutex versionMutex;
constinit host::List<FileVersion> versions;

FileVersion* placeOf(std::string_view name) { return std::ranges::find(versions, name, &FileVersion::nameText); }

std::optional<VS_FIXEDFILEINFO> findVersion(std::string_view name) {
  const std::lock_guard lock{versionMutex};
  const FileVersion* const found = placeOf(name);
  return found == versions.end() ? std::nullopt : std::optional{found->version};
}

}  // namespace

namespace host {

bool setFileVersion(std::string_view name, const VS_FIXEDFILEINFO& version) {
  if (name.size() > FileVersion::kLongestName) return false;
  FileVersion entry{.name = {}, .length = name.size(), .version = version};
  std::ranges::copy(name, entry.name);
  const std::lock_guard lock{versionMutex};
  FileVersion* const found = placeOf(name);
  if (found == versions.end()) return versions.add(entry);
  *found = entry;
  return true;
}

void removeFileVersion(std::string_view name) {
  const std::lock_guard lock{versionMutex};
  if (FileVersion* const found = placeOf(name); found != versions.end()) versions.remove(found);
}

}  // namespace host

DWORD GetFileVersionInfoSizeA(const CHAR* name, DWORD* handle) {
  if (!host::permit("GetFileVersionInfoSizeA", std::string_view{name})) return 0;
  if (handle != nullptr) *handle = 0;
  return findVersion(name) ? sizeof(VS_FIXEDFILEINFO) : 0;
}

BOOL GetFileVersionInfoA(const CHAR* name, DWORD handle, DWORD length, void* data) {
  if (!host::permit("GetFileVersionInfoA", std::string_view{name}, handle, length)) return FALSE;
  const auto version = findVersion(name);
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
