// SPDX-License-Identifier: Apache-2.0
#include <cstring>

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
  LoadedFile file;
  std::uint32_t policyCount;
};

std::optional<LoadedBinary> loadPolicyBinary(const char* path) {
  auto file = loadFile(path, mostUsefulBytes);
  if (!file) return std::nullopt;
  const std::uint32_t policyCount = announcedPolicyCount(file->bytes());
  return LoadedBinary{.file = std::move(*file), .policyCount = policyCount};
}

std::uint64_t imageSize(std::uint32_t policyCount, std::size_t stride) {
  return sizeof(VqsPolicyBinary) + std::uint64_t{policyCount} * stride;
}

VqsPolicyBinary headOf(const BinaryVersions& versions, std::uint32_t policyCount, std::uint32_t structureVersion) {
  VqsPolicyBinary head{};
  head.binaryVersion1 = versions.first;
  head.binaryVersion2 = versions.second;
  head.policyCount = policyCount;
  head.structureVersion = structureVersion;
  return head;
}

vqsStatus readImage(const LoadedBinary& binary, VqsPolicyBinary* destination, std::uint64_t size,
                    std::uint32_t structureVersion) {
  const auto stride = policyBodySize(structureVersion);
  if (!stride || size < imageSize(binary.policyCount, *stride)) return VQS_REQUEST_FAILED;
  BinaryVersions versions{};
  if (!checkBinary(binary.file.bytes(), versions)) return VQS_REQUEST_FAILED;
  // Nothing can fail from here on, so the caller's own memory is written. It may be at any address.
  const VqsPolicyBinary head = headOf(versions, binary.policyCount, structureVersion);
  auto* const image = reinterpret_cast<std::byte*>(destination);
  std::memcpy(image, &head, sizeof(head));
  // A policy that does not fit the structure version ends the conversion; the call succeeds, with the rest of the
  // bodies zero (compatibility.md: unconverted-policies).
  readBodies(binary.file.bytes(), structureVersion, {image + sizeof(head), binary.policyCount * *stride}, kRuntimeText);
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
  BinaryVersions versions{};
  if (!checkBinary(second->file.bytes(), versions)) return VQS_REQUEST_FAILED;
  image.binaryVersion1 = versions.first;
  image.binaryVersion2 = versions.second;
  image.policyCount = second->policyCount;
  return VQS_SUCCESS;
}

}  // namespace
}  // namespace vqs

using namespace vqs;

vqsStatus VQS_CALL vqsPbReadBinary(QtfSession* /*session*/, const char* path, VqsPolicyBinaryV0** binary) {
  if (path == nullptr || binary == nullptr) return VQS_INVALID_PARAMETER;
  VqsPolicyBinary image{};
  const vqsStatus result = readPolicyBinaryImage(path, image);
  if (result != VQS_SUCCESS) return result;
  *binary = ProcessHeapRecord<VqsPolicyBinaryV0>{}.handOver();
  if (*binary == nullptr) return VQS_OUT_OF_MEMORY;
  // The policies were checked and are not handed out (compatibility.md: summary-only).
  (*binary)->binaryVersion1 = image.binaryVersion1;
  (*binary)->binaryVersion2 = image.binaryVersion2;
  (*binary)->policyCount = image.policyCount;
  return VQS_SUCCESS;
}

vqsStatus VQS_CALL vqsPbReadBinaryV2(QtfSession* session, const char* path, VqsPolicyBinary* binary, uint64_t* size,
                                     uint32_t structureVersion) {
  if (!isOpen(session) || path == nullptr || binary == nullptr || size == nullptr) return VQS_INVALID_PARAMETER;
  if (structureVersion == 0xFFFFFFFF) return VQS_INVALID_PARAMETER;
  const auto loaded = loadPolicyBinary(path);
  if (!loaded) return VQS_REQUEST_FAILED;
  if (*size == 0) {
    // Every other version is given version 0's size, even if a read refuses it (compatibility.md: size-query-version).
    const std::size_t stride = policyBodySize(structureVersion).value_or(sizeof(VqsPolicyV0));
    *size = imageSize(loaded->policyCount, stride);
    return VQS_SUCCESS;
  }
  return readImage(*loaded, binary, *size, structureVersion);
}
