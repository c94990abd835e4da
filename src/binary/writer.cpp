// SPDX-License-Identifier: Apache-2.0
#include "src/binary/writer.h"

#include "format/binary/builder.h"
#include "src/binary/file.h"
#include "src/channel/work_buffer.h"

namespace vqs {

vqsStatus writePolicyBinary(std::span<const PackedPolicy> policies, BinaryVersions versions, const char* path) {
  if (policies.data() == nullptr || path == nullptr) return VQS_INVALID_PARAMETER;
  const std::uint64_t size = policyBinarySize(policies);
  if (size == 0) return VQS_REQUEST_FAILED;
  const RuntimeBuffer binary{size};
  if (!binary || !buildPolicyBinary(binary.bytes(), policies, versions)) return VQS_REQUEST_FAILED;
  const File file = openFile(path, "wb");
  if (!file) return VQS_REQUEST_FAILED;
  writeBytes(file.get(), binary.bytes());
  return VQS_SUCCESS;
}

}  // namespace vqs
