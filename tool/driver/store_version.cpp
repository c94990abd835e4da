// SPDX-License-Identifier: Apache-2.0
#include "tool/driver/store_version.h"

#include <fmt/format.h>

#include <filesystem>
#include <vector>

#include <vqs/policy_binary.h>
#include "format/binary/header.h"
#include "tool/system/files.h"
#include "tool/system/input_file.h"
#include "tool/system/paths.h"
#include "tool/terminal/errors.h"

namespace tool {
namespace {

/// A file that is removed when it is no longer needed.
class TemporaryFile {
 public:
  TemporaryFile() : path_{platform::createBeside(fromPath(std::filesystem::temp_directory_path() / "vqs"))} {}
  ~TemporaryFile() { platform::removeFile(path_); }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  [[nodiscard]] const std::string& path() const { return path_; }

 private:
  std::string path_;
};

}  // namespace

std::optional<vqs::BinaryVersions> readStoreVersion(const Session& session, const Store& store) {
  if (store.id != VQS_POLICY_STORE_ASM) return std::nullopt;
  // No function of the library hands out the version alone: it is in the files that it writes.
  const TemporaryFile file;
  const std::string path = platform::libraryPath(file.path());
  require(vqsAsmCreateBinaryFromDriver(session.get(), path.c_str(), 0, 0, 0),
          fmt::format("the version of the {} store cannot be read", store.title));
  std::vector<std::byte> head;
  InputFile{file.path()}.readUpTo(vqs::kSmallestHead, head);
  vqs::BinaryVersions versions{};
  vqs::takeVersions(head, versions);
  return versions;
}

}  // namespace tool
