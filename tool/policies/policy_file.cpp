// SPDX-License-Identifier: Apache-2.0
#include "tool/policies/policy_file.h"

#include <fmt/format.h>

#include <limits>

#include "documents/files/defect_text.h"
#include "format/binary/reader.h"
#include "format/policy/conversion.h"
#include "tool/system/input_file.h"
#include "tool/system/paths.h"
#include "tool/terminal/errors.h"

namespace tool {
namespace {

constexpr std::uint64_t kAll = std::numeric_limits<std::uint64_t>::max();

void requireContent(const std::vector<std::byte>& bytes, const std::string& path) {
  if (bytes.empty()) throw Failure{fmt::format("{} is empty, a policy binary is not", path)};
}

/// Reads as much of a policy binary as its head says that its policies can take.
std::vector<std::byte> readBinaryBytes(const std::string& path) {
  InputFile source{path};
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
  InputFile{path}.readUpTo(kAll, bytes);
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
