// SPDX-License-Identifier: Apache-2.0
#include "format/binary/registry_text.h"

#include <array>
#include <cstdint>

namespace vqs {
namespace {

/// "01,ab,00" on one line, however long.
void writeHexLine(const TextSink& sink, std::span<const std::byte> bytes) {
  static constexpr char kDigits[] = "0123456789abcdef";
  std::array<char, std::size_t{3} * 1024> line;
  std::size_t used = 0;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const auto value = static_cast<std::uint8_t>(bytes[i]);
    line[used++] = kDigits[value >> 4];
    line[used++] = kDigits[value & 0xF];
    line[used++] = i + 1 < bytes.size() ? ',' : '\n';
    if (used == line.size() || i + 1 == bytes.size()) {
      sink.put({line.data(), used});
      used = 0;
    }
  }
}

}  // namespace

void writeRegistryText(const TextSink& sink, std::string_view valueName, std::span<const std::byte> binary) {
  sink.put("Windows Registry Editor Version 5.00\n\n");
  sink.put("[HKEY_LOCAL_MACHINE\\SYSTEM\\CurrentControlSet\\Services\\vexoqtf\\Parameters]\n\"");
  sink.put(valueName);
  sink.put("\"=hex:");
  writeHexLine(sink, binary);
}

}  // namespace vqs
