// SPDX-License-Identifier: Apache-2.0
#include "format/binary/registry_text.h"

#include <algorithm>
#include <array>

#include "format/bytes.h"

namespace vqs {
namespace {

/// What a byte becomes: two digits and a comma. The fourth character is not used; with it a group is one word.
using Group = std::array<char, 4>;

constexpr std::array<Group, 256> kGroups = [] {
  constexpr char kDigits[] = "0123456789abcdef";
  std::array<Group, 256> groups{};
  for (std::size_t i = 0; i < groups.size(); ++i) groups[i] = {kDigits[i >> 4], kDigits[i & 0xF], ',', '\0'};
  return groups;
}();

/// Characters of a group that are used.
constexpr std::size_t kGroup = 3;

/// "01,ab,00" on one line, however long.
void writeHexLine(const TextSink& sink, std::span<const std::byte> bytes) {
  static constexpr std::size_t kBytesAtATime = 1024;
  // One group more than is used, because groups are written whole and the next one begins in the last character.
  std::array<char, kGroup*(kBytesAtATime + 1)> line;
  while (!bytes.empty()) {
    const auto piece = bytes.first(std::min(bytes.size(), kBytesAtATime));
    bytes = bytes.subspan(piece.size());
    char* end = line.data();
    for (const std::byte byte : piece) {
      copyBytes(end, kGroups[std::to_integer<std::size_t>(byte)].data(), sizeof(Group));
      end += kGroup;
    }
    if (bytes.empty()) end[-1] = '\n';
    sink.put({line.data(), end});
  }
}

}  // namespace

void writeRegistryText(const TextSink& sink, std::string_view valueName, std::span<const std::byte> binary) {
  sink.put(kRegistryHead);
  sink.put(kRegistryKeyHead);
  sink.put(valueName);
  sink.put("\"=hex:");
  writeHexLine(sink, binary);
}

}  // namespace vqs
