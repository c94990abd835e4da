// SPDX-License-Identifier: Apache-2.0
#include "src/binary/registry_export.h"

#include "format/binary/registry_text.h"
#include "src/binary/file.h"

namespace vqs {
namespace {

std::string_view valueName(RegistryExportKind kind) {
  switch (kind) {
    case RegistryExportKind::kAsm:
      return kAsmValueName;
    case RegistryExportKind::kBalanceProfile:
      return kBalanceProfileValueName;
    default:
      return "";
  }
}

void writePiece(void* stream, std::string_view piece) {
  writeBytes(static_cast<std::FILE*>(stream), std::as_bytes(std::span{piece}));
}

}  // namespace

vqsStatus writeRegistryExport(std::FILE* stream, std::span<const std::byte> binary, RegistryExportKind kind) {
  if (stream == nullptr || binary.data() == nullptr || binary.empty()) return VQS_INVALID_PARAMETER;
  if (kind == RegistryExportKind::kNone) return VQS_REQUEST_FAILED;
  writeRegistryText({.take = writePiece, .target = stream}, valueName(kind), binary);
  return VQS_SUCCESS;
}

}  // namespace vqs
