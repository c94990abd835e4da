// SPDX-License-Identifier: Apache-2.0
#include <cstring>
#include <map>
#include <mutex>
#include <optional>

#include "host/call_hook.h"
#include "host/guarded.h"
#include "host/host.h"

namespace {

std::mutex versionMutex;

/// Made at its first use, for whoever publishes versions may do so before other initialisers have run; never destroyed.
auto& versions() {
  static auto& map = *new std::map<std::string, VS_FIXEDFILEINFO, std::less<>>;
  return map;
}

std::optional<VS_FIXEDFILEINFO> findVersion(std::string_view name) {
  return host::guarded(std::optional<VS_FIXEDFILEINFO>{}, [&] {
    const std::lock_guard lock{versionMutex};
    const auto found = versions().find(name);
    return found == versions().end() ? std::nullopt : std::optional{found->second};
  });
}

}  // namespace

namespace host {

bool setFileVersion(std::string_view name, const VS_FIXEDFILEINFO& version) {
  return guarded(false, [&] {
    const std::lock_guard lock{versionMutex};
    versions().insert_or_assign(std::string{name}, version);
    return true;
  });
}

void removeFileVersion(std::string_view name) {
  const std::lock_guard lock{versionMutex};
  if (const auto found = versions().find(name); found != versions().end()) versions().erase(found);
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
