// SPDX-License-Identifier: Apache-2.0
#include "tool/policies/policy_file.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <limits>

#include "documents/files/defect_text.h"
#include "format/binary/reader.h"
#include "format/policy/conversion.h"
#include "tool/system/files.h"
#include "tool/system/paths.h"
#include "tool/terminal/errors.h"

namespace tool {
namespace {

constexpr std::uint64_t kAll = std::numeric_limits<std::uint64_t>::max();

[[noreturn]] void failToRead(const std::string& path, int error) {
  throw Failure{fmt::format("{} cannot be read: {}", path, systemMessage(error))};
}

/// Checks what can be checked without opening the file: opening a pipe would wait for its other end.
void requireRegularFile(const std::string& path) {
  const auto kind = platform::fileKind(path);
  if (kind == platform::FileKind::kFolder) failToRead(path, EISDIR);
  if (kind == platform::FileKind::kOther)
    throw Failure{fmt::format("{} cannot be read: it is not a regular file", path)};
}

/// A file that is read from its start.
class Source {
 public:
  explicit Source(const std::string& path) : path_{path} {
    if (path.empty()) throw UsageError{"FILE: the file's name is empty"};
    requireRegularFile(path);
    file_.reset(platform::openFile(path, "rb"));
    if (!file_) failToRead(path, errno);
  }

  /// Adds what follows, until there are so many bytes or the file ends.
  void readUpTo(std::uint64_t size, std::vector<std::byte>& bytes) {
    constexpr std::uint64_t kPiece = 65536;
    while (bytes.size() < size) {
      const std::size_t had = bytes.size();
      bytes.resize(had + static_cast<std::size_t>(std::min(size - had, std::max<std::uint64_t>(had, kPiece))));
      errno = 0;
      const std::size_t read = std::fread(bytes.data() + had, 1, bytes.size() - had, file_.get());
      const bool isWhole = had + read == bytes.size();
      bytes.resize(had + read);
      if (std::ferror(file_.get()) != 0) failToRead(path_, errno != 0 ? errno : EIO);
      if (!isWhole) return;
    }
  }

 private:
  const std::string& path_;
  File file_;
};

void requireContent(const std::vector<std::byte>& bytes, const std::string& path) {
  if (bytes.empty()) throw Failure{fmt::format("{} is empty, a policy binary is not", path)};
}

/// Reads as much of a policy binary as its head says that its policies can take.
std::vector<std::byte> readBinaryBytes(const std::string& path) {
  Source source{path};
  std::vector<std::byte> bytes;
  source.readUpTo(vqs::kOldHeaderSize, bytes);
  requireContent(bytes, path);
  source.readUpTo(vqs::mostUsefulBytes(bytes), bytes);
  return bytes;
}

std::vector<VqsPolicyV2> unpacked(const std::vector<vqs::PackedPolicy>& packed) {
  std::vector<VqsPolicyV2> policies(packed.size());
  for (std::size_t i = 0; i < packed.size(); ++i) vqs::unpackPolicyV2(&packed[i], &policies[i]);
  return policies;
}

/// The policies as the file has them. The defect tells whether the file is good.
std::vector<vqs::PackedPolicy> parse(const std::vector<std::byte>& bytes, vqs::BinaryVersions& versions,
                                     vqs::Defect& defect) {
  defect = vqs::headerDefect(bytes);
  if (defect.kind != vqs::DefectKind::kNone) return {};
  std::vector<vqs::PackedPolicy> packed(vqs::announcedPolicyCount(bytes));
  static_cast<void>(vqs::readBinary(bytes, packed, versions, &defect));
  return packed;
}

}  // namespace

std::vector<std::byte> readBytes(const std::string& path) {
  std::vector<std::byte> bytes;
  Source{path}.readUpTo(kAll, bytes);
  requireContent(bytes, path);
  return bytes;
}

std::optional<PolicyFileSummary> summarize(const std::vector<std::byte>& bytes) {
  vqs::Defect defect{};
  vqs::BinaryVersions versions{};
  const std::size_t count = parse(bytes, versions, defect).size();
  if (defect.kind != vqs::DefectKind::kNone) return std::nullopt;
  return PolicyFileSummary{.versions = versions, .policyCount = count};
}

PolicyFile readPolicyFile(const std::string& path) {
  const auto bytes = readBinaryBytes(path);
  vqs::Defect defect{};
  vqs::BinaryVersions versions{};
  const auto packed = parse(bytes, versions, defect);
  if (defect.kind == vqs::DefectKind::kNone)
    return {.version1 = versions.first, .version2 = versions.second, .policies = unpacked(packed)};
  throw Failure{fmt::format("{} is not a valid policy binary: {}", path,
                            documents::describe(defect, vqs::announcedPolicyCount(bytes)))};
}

std::string fileName(const std::string& path) { return fromPath(toPath(path).filename()); }

}  // namespace tool
