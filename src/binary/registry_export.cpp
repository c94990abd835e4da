// SPDX-License-Identifier: Apache-2.0
#include "binary/registry_export.h"

#include <array>

#include "binary/file.h"

namespace vqs {
namespace {

const char* valueName(RegistryExportKind kind) {
  switch (kind) {
    case RegistryExportKind::kAsm:
      return "AsmCurrentRegkeyPolicy";
    case RegistryExportKind::kBalanceProfile:
      return "BalanceProfileCurrentRegkeyPolicy";
    default:
      // The key's default value, without a name between the quotes.
      return "";
  }
}

/// "01,ab,00" on one line, however long.
void writeHexLine(std::FILE* stream, std::span<const std::byte> bytes) {
  static constexpr char kDigits[] = "0123456789abcdef";
  std::array<char, std::size_t{3} * 1024> line;
  std::size_t used = 0;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const auto value = static_cast<std::uint8_t>(bytes[i]);
    line[used++] = kDigits[value >> 4];
    line[used++] = kDigits[value & 0xF];
    line[used++] = i + 1 < bytes.size() ? ',' : '\n';
    if (used == line.size() || i + 1 == bytes.size()) {
      writeBytes(stream, std::as_bytes(std::span{line}.first(used)));
      used = 0;
    }
  }
}

}  // namespace

vqsStatus writeRegistryExport(std::FILE* stream, std::span<const std::byte> binary, RegistryExportKind kind) {
  if (stream == nullptr || binary.data() == nullptr || binary.empty()) return VQS_INVALID_PARAMETER;
  if (kind == RegistryExportKind::kNone) return VQS_REQUEST_FAILED;
  std::fputs("Windows Registry Editor Version 5.00\n\n", stream);
  std::fputs("[HKEY_LOCAL_MACHINE\\SYSTEM\\CurrentControlSet\\Services\\vexoqtf\\Parameters]\n", stream);
  std::fputs("\"", stream);
  std::fputs(valueName(kind), stream);
  std::fputs("\"=hex:", stream);
  writeHexLine(stream, binary);
  return VQS_SUCCESS;
}

}  // namespace vqs
