// SPDX-License-Identifier: Apache-2.0
#include <vqs/policy_binary.h>
#include "format/binary/builder.h"
#include "format/policy/conversion.h"
#include "src/binary/file.h"
#include "src/binary/registry_export.h"
#include "src/binary/writer.h"
#include "src/channel/request.h"
#include "src/channel/session_record.h"
#include "src/channel/text.h"
#include "src/channel/work_buffer.h"
#include "src/policy/store_request.h"

namespace vqs {
namespace {

/// Packs bodies that lie back to back and writes them.
vqsStatus createFromBodies(std::uint32_t structureVersion, const void* bodies, std::uint32_t count,
                           BinaryVersions versions, const char* path, const RuntimeBuffer& memory) {
  const auto stride = policyBodySize(structureVersion);
  if (!stride) return VQS_REQUEST_FAILED;
  const auto policies = memory.arrayAt<VqsPackedPolicy>(0, count);
  const auto* body = static_cast<const std::byte*>(bodies);
  for (std::size_t i = 0; i < count; ++i)
    if (packPolicyBody(structureVersion, body + i * *stride, &policies[i], kRuntimeText) != kConverted)
      return VQS_REQUEST_FAILED;
  return writePolicyBinary(policies, versions, path);
}

/// The packed policies of a store, in store order.
vqsStatus fetchStorePolicies(HANDLE handle, std::uint32_t readCode, std::optional<RuntimeBuffer>& memory,
                             std::span<VqsPackedPolicy>& policies) {
  const RuntimeBuffer fetch{sizeof(PolicyFetchRequest)};
  if (!fetch) return VQS_REQUEST_FAILED;
  auto& request = fetch.as<PolicyFetchRequest>();
  if (queryPolicyCount(handle, readCode, request) != VQS_SUCCESS) return VQS_REQUEST_FAILED;
  const std::uint32_t count = request.policyCount;
  memory.emplace(saturatingProduct(count, sizeof(VqsPackedPolicy)));
  if (!*memory) return VQS_REQUEST_FAILED;
  policies = memory->arrayAt<VqsPackedPolicy>(0, count);
  return fetchPolicies(handle, readCode, request, policies);
}

vqsStatus queryBinaryVersions(HANDLE handle, std::uint32_t modifyCode, BinaryVersions& versions) {
  const RuntimeBuffer memory{sizeof(PolicyStoreRequest)};
  if (!memory) return VQS_REQUEST_FAILED;
  auto& request = memory.as<PolicyStoreRequest>();
  request.operation = kStoreGetBinaryVersion;
  if (sendSame(handle, modifyCode, request) != VQS_SUCCESS) return VQS_REQUEST_FAILED;
  versions = {static_cast<std::uint16_t>(request.versionWord1), static_cast<std::uint16_t>(request.versionWord2)};
  return VQS_SUCCESS;
}

vqsStatus writeExport(std::FILE* stream, std::span<const std::byte> binary, RegistryExportKind kind) {
  if (kind != RegistryExportKind::kNone) return writeRegistryExport(stream, binary, kind);
  writeBytes(stream, binary);
  return VQS_SUCCESS;
}

/// A null session or handle gives VQS_REQUEST_FAILED (compatibility.md: from-driver-session), as does a lack of memory
/// (compatibility.md: from-driver-memory).
vqsStatus createFromDriver(const QtfSession* session, const char* path, BinaryVersions versions, VqsPolicyStore store,
                           RegistryExportKind kind) {
  if (path == nullptr) return VQS_INVALID_PARAMETER;
  if (session == nullptr) return VQS_REQUEST_FAILED;
  const HANDLE handle = session->handle;
  const auto codes = policyStoreCodes(store);
  std::optional<RuntimeBuffer> memory;
  std::span<VqsPackedPolicy> policies;
  if (!codes || fetchStorePolicies(handle, codes->read, memory, policies) != VQS_SUCCESS) return VQS_REQUEST_FAILED;

  const RuntimeBuffer binary{policyBinarySize(policies)};
  if (!binary) return VQS_REQUEST_FAILED;
  // Of this store alone the driver keeps a pair (compatibility.md: asm-version-pair).
  const bool askForVersions = store == VQS_POLICY_STORE_ASM && versions.first == 0 && versions.second == 0;
  if (askForVersions && queryBinaryVersions(handle, codes->modify, versions) != VQS_SUCCESS) return VQS_REQUEST_FAILED;
  if (!buildPolicyBinary(binary.bytes(), policies, versions)) return VQS_REQUEST_FAILED;

  const File file = openFile(path, "wb");
  if (!file) return VQS_REQUEST_FAILED;
  return writeExport(file.get(), binary.bytes(), kind);
}

}  // namespace
}  // namespace vqs

// The session is not looked at (compatibility.md: unused-session).
vqsStatus VQS_CALL vqsPbCreateBinary(QtfSession* /*session*/, const VqsPolicyV0* policies, uint32_t count,
                                     uint16_t binaryVersion1, uint16_t binaryVersion2, const char* path) {
  if (policies == nullptr || path == nullptr) return VQS_INVALID_PARAMETER;
  const vqs::RuntimeBuffer memory{vqs::saturatingProduct(count, sizeof(VqsPackedPolicy))};
  if (!memory) return VQS_OUT_OF_MEMORY;
  return vqs::createFromBodies(0, policies, count, {binaryVersion1, binaryVersion2}, path, memory);
}

vqsStatus VQS_CALL vqsPbCreateBinaryV2(QtfSession* session, const VqsPolicyListV2* list, uint16_t binaryVersion1,
                                       uint16_t binaryVersion2, const char* path) {
  if (!vqs::isOpen(session) || list == nullptr || path == nullptr) return VQS_INVALID_PARAMETER;
  // Read once, because memory is allocated for it and another thread may change the list meanwhile.
  const VqsPolicyListV2 head = *list;
  const vqs::RuntimeBuffer memory{vqs::saturatingProduct(head.count, sizeof(VqsPackedPolicy))};
  if (!memory) return VQS_OUT_OF_MEMORY;
  const auto stride = vqs::policyBodySize(head.structureVersion);
  if (!stride || head.size == 0 || head.size < std::uint64_t{head.count} * *stride) return VQS_REQUEST_FAILED;
  return vqs::createFromBodies(head.structureVersion, list + 1, head.count, {binaryVersion1, binaryVersion2}, path,
                               memory);
}

vqsStatus VQS_CALL vqsPbCreateBinaryFromDriver(QtfSession* session, const char* path, uint16_t binaryVersion1,
                                               uint16_t binaryVersion2) {
  return vqs::createFromDriver(session, path, {binaryVersion1, binaryVersion2}, VQS_POLICY_STORE_PB,
                               vqs::RegistryExportKind::kNone);
}

vqsStatus VQS_CALL vqsAsmCreateBinaryFromDriver(QtfSession* session, const char* path, uint16_t binaryVersion1,
                                                uint16_t binaryVersion2, uint8_t registryExport) {
  return vqs::createFromDriver(session, path, {binaryVersion1, binaryVersion2}, VQS_POLICY_STORE_ASM,
                               registryExport != 0 ? vqs::RegistryExportKind::kAsm : vqs::RegistryExportKind::kNone);
}

vqsStatus VQS_CALL vqsBalanceProfileCreateBinaryFromDriver(QtfSession* session, const char* path,
                                                           uint16_t binaryVersion1, uint16_t binaryVersion2,
                                                           uint8_t registryExport) {
  return vqs::createFromDriver(
      session, path, {binaryVersion1, binaryVersion2}, VQS_POLICY_STORE_BALANCE_PROFILE,
      registryExport != 0 ? vqs::RegistryExportKind::kBalanceProfile : vqs::RegistryExportKind::kNone);
}
