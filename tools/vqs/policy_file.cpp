// SPDX-License-Identifier: Apache-2.0
#include "policy_file.h"

#include <fmt/format.h>

#include <cerrno>
#include <cstring>
#include <memory>

#include "errors.h"
#include "files.h"
#include "format_check.h"
#include "paths.h"

namespace tool {
namespace {

[[noreturn]] void failToRead(const std::string& path, int error) {
  throw Failure{fmt::format("{} cannot be read: {}", path, systemMessage(error))};
}

/// What can be told without opening the file; opening a pipe would wait for its other end.
void requireRegularFile(const std::string& path) {
  const auto kind = platform::fileKind(path);
  if (kind == platform::FileKind::folder) failToRead(path, EISDIR);
  if (kind == platform::FileKind::other)
    throw Failure{fmt::format("{} cannot be read: it is not a regular file", path)};
}

/// Most policies that a file of this size has room for.
std::size_t mostPolicies(std::size_t fileSize) { return fileSize / kSmallestFileEntry; }

}  // namespace

std::vector<std::byte> readBytes(const std::string& path) {
  if (path.empty()) throw UsageError{"FILE: the file's name is empty"};
  requireRegularFile(path);
  const File file{platform::openFile(path, "rb")};
  if (!file) failToRead(path, errno);
  const auto size = platform::fileSize(path);
  if (!size) failToRead(path, errno);
  std::vector<std::byte> bytes(*size);
  errno = 0;
  if (std::fread(bytes.data(), 1, bytes.size(), file.get()) != bytes.size()) failToRead(path, errno != 0 ? errno : EIO);
  if (bytes.empty()) throw Failure{fmt::format("{} is empty, a policy binary is not", path)};
  return bytes;
}

std::optional<PolicyFile> tryReadPolicyFile(const Session& session, const std::string& path, std::size_t fileSize) {
  const std::string libraryPath = platform::libraryPath(path);
  VqsPolicyBinary head{};
  std::uint64_t size = 0;
  if (vqsPbReadBinaryV2(session.get(), libraryPath.c_str(), &head, &size, 2) != VQS_SUCCESS) return std::nullopt;
  // The size comes from what the file announces.
  if ((size - sizeof(VqsPolicyBinary)) / sizeof(VqsPolicyV2) > mostPolicies(fileSize)) return std::nullopt;

  std::vector<std::byte> buffer(size);
  auto* binary = new (buffer.data()) VqsPolicyBinary{};
  if (vqsPbReadBinaryV2(session.get(), libraryPath.c_str(), binary, &size, 2) != VQS_SUCCESS) return std::nullopt;
  PolicyFile file{.version1 = binary->binaryVersion1, .version2 = binary->binaryVersion2, .policies = {}};
  file.policies.resize(binary->policyCount);
  std::memcpy(file.policies.data(), buffer.data() + sizeof(VqsPolicyBinary), buffer.size() - sizeof(VqsPolicyBinary));
  return file;
}

void requireReadable(const std::string& path) { static_cast<void>(readBytes(path)); }

PolicyFile readPolicyFile(const Session& session, const std::string& path) {
  const auto bytes = readBytes(path);
  auto file = tryReadPolicyFile(session, path, bytes.size());
  const auto defect = findFormatDefect(bytes);
  // The library reads a file whose comparisons and flags do not exist, but leaves out what follows the first of them.
  if (file && !defect) return std::move(*file);
  throw Failure{fmt::format("{} is not a valid policy binary: {}", path, defect.value_or("damaged or cut short"))};
}

std::string fileName(const std::string& path) { return fromPath(toPath(path).filename()); }

}  // namespace tool
