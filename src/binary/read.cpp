// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include <vqs/policy_binary.h>
#include "format/binary/reader.h"
#include "format/policy/conversion.h"
#include "src/binary/file.h"
#include "src/channel/session_record.h"
#include "src/channel/text.h"
#include "src/channel/work_buffer.h"

namespace vqs {
namespace {

/// A policy binary whose header has been accepted.
struct LoadedBinary {
  RuntimeBuffer file;
  std::uint32_t policyCount;
};

std::optional<LoadedBinary> loadPolicyBinary(const char* path) {
  auto file = loadFile(path, mostUsefulBytes);
  if (!file) return std::nullopt;
  const std::uint32_t policyCount = announcedPolicyCount(file->bytes());
  return LoadedBinary{.file = std::move(*file), .policyCount = policyCount};
}

/// Policies that were parsed, and the version numbers that came with them.
struct ParsedBinary {
  RuntimeBuffer memory;
  std::span<const VqsPackedPolicy> policies;
  BinaryVersions versions;
};

std::optional<ParsedBinary> parse(const LoadedBinary& binary) {
  if (headerDefect(binary.file.bytes()).kind != DefectKind::kNone) return std::nullopt;
  RuntimeBuffer memory{saturatingProduct(binary.policyCount, sizeof(VqsPackedPolicy))};
  if (!memory) return std::nullopt;
  const auto policies = memory.arrayAt<VqsPackedPolicy>(0, binary.policyCount);
  BinaryVersions versions{};
  if (!readBinary(binary.file.bytes(), policies, versions)) return std::nullopt;
  return ParsedBinary{.memory = std::move(memory), .policies = policies, .versions = versions};
}

std::uint64_t imageSize(std::uint32_t policyCount, std::size_t stride) {
  return sizeof(VqsPolicyBinary) + std::uint64_t{policyCount} * stride;
}

vqsStatus readBodies(const LoadedBinary& binary, VqsPolicyBinary* destination, std::uint64_t size,
                     std::uint32_t structureVersion) {
  const auto stride = policyBodySize(structureVersion);
  if (!stride || size < imageSize(binary.policyCount, *stride)) return VQS_REQUEST_FAILED;
  const auto parsed = parse(binary);
  if (!parsed) return VQS_REQUEST_FAILED;
  const RuntimeBuffer image{imageSize(binary.policyCount, *stride)};
  if (!image) return VQS_REQUEST_FAILED;

  auto& head = image.as<VqsPolicyBinary>();
  head.binaryVersion1 = parsed->versions.first;
  head.binaryVersion2 = parsed->versions.second;
  head.policyCount = binary.policyCount;
  head.structureVersion = structureVersion;
  // A policy that does not fit the structure version ends the conversion; the call succeeds, with the rest of the
  // bodies zero (compatibility.md: unconverted-policies).
  static_cast<void>(unpackPolicyArray(&head + 1, image.bytes().size() - sizeof(head), structureVersion,
                                      parsed->policies.data(), binary.policyCount, kRuntimeText));
  std::ranges::copy(image.bytes(), reinterpret_cast<std::byte*>(destination));
  return VQS_SUCCESS;
}

/// Checks a file and takes its versions and its count. The file is read twice; a file with more policies at the second
/// reading than at the first is refused.
vqsStatus readPolicyBinaryImage(const char* path, VqsPolicyBinary& image) {
  std::uint32_t announced = 0;
  if (const auto first = loadPolicyBinary(path)) announced = first->policyCount;
  // The file could not be read, or is no policy binary with a policy in it.
  if (announced == 0) return VQS_REQUEST_FAILED;
  const auto second = loadPolicyBinary(path);
  if (!second || second->policyCount > announced) return VQS_REQUEST_FAILED;
  const auto parsed = parse(*second);
  if (!parsed) return VQS_REQUEST_FAILED;
  image.binaryVersion1 = parsed->versions.first;
  image.binaryVersion2 = parsed->versions.second;
  image.policyCount = second->policyCount;
  return VQS_SUCCESS;
}

}  // namespace
}  // namespace vqs

vqsStatus VQS_CALL vqsPbReadBinary(QtfSession* /*session*/, const char* path, VqsPolicyBinaryV0** binary) {
  if (path == nullptr || binary == nullptr) return VQS_INVALID_PARAMETER;
  VqsPolicyBinary image{};
  const vqsStatus result = vqs::readPolicyBinaryImage(path, image);
  if (result != VQS_SUCCESS) return result;
  vqs::ProcessHeapBuffer memory{sizeof(VqsPolicyBinaryV0)};
  *binary = static_cast<VqsPolicyBinaryV0*>(memory.handOver());
  if (*binary == nullptr) return VQS_OUT_OF_MEMORY;
  // The policies were checked and are not handed out (compatibility.md: summary-only).
  (*binary)->binaryVersion1 = image.binaryVersion1;
  (*binary)->binaryVersion2 = image.binaryVersion2;
  (*binary)->policyCount = image.policyCount;
  return VQS_SUCCESS;
}

vqsStatus VQS_CALL vqsPbReadBinaryV2(QtfSession* session, const char* path, VqsPolicyBinary* binary, uint64_t* size,
                                     uint32_t structureVersion) {
  if (!vqs::isOpen(session) || path == nullptr || binary == nullptr || size == nullptr) return VQS_INVALID_PARAMETER;
  if (structureVersion == 0xFFFFFFFF) return VQS_INVALID_PARAMETER;
  const auto loaded = vqs::loadPolicyBinary(path);
  if (!loaded) return VQS_REQUEST_FAILED;
  if (*size == 0) {
    // Every other version is given version 0's size, even if a read refuses it (compatibility.md: size-query-version).
    const std::size_t stride = vqs::policyBodySize(structureVersion).value_or(sizeof(VqsPolicyV0));
    *size = vqs::imageSize(loaded->policyCount, stride);
    return VQS_SUCCESS;
  }
  return vqs::readBodies(*loaded, binary, *size, structureVersion);
}
