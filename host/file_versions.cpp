// SPDX-License-Identifier: Apache-2.0
#include "host/file_versions.h"

#include <algorithm>
#include <cstddef>
#include <mutex>

#include "host/list.h"
#include "host/mutex.h"

namespace host {
namespace {

struct FileVersion {
  static constexpr std::size_t kLongestName = 64;

  char name[kLongestName];
  std::size_t length;
  VS_FIXEDFILEINFO version;

  [[nodiscard]] std::string_view nameText() const { return {name, length}; }
};

constinit Mutex versionMutex;
constinit List<FileVersion> versions;

FileVersion* placeOf(std::string_view name) { return std::ranges::find(versions, name, &FileVersion::nameText); }

}  // namespace

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

std::optional<VS_FIXEDFILEINFO> fileVersion(std::string_view name) {
  const std::lock_guard lock{versionMutex};
  const FileVersion* const found = placeOf(name);
  return found == versions.end() ? std::nullopt : std::optional{found->version};
}

}  // namespace host
