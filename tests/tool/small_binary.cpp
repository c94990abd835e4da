// SPDX-License-Identifier: Apache-2.0
#include "tests/tool/small_binary.h"

#include <algorithm>

namespace test {

Bytes smallBinary() {
  return hex(
      "01 00 05 00  03 00 29 00  24 51 54 46  01 00 00 00"  // format 1, revision 5, version 3.41, one policy
      "0c 00 00 00  41 00 1b 00 22 00 e9 00 3d d8 00 00"    // A, escape, quote, e with acute, half a surrogate pair
      "06 00 00 00  63 61 66 e9 9b 00"                      // description "caf", 0xE9, 0x9B
      "01  07 00 00 00  02 00 00 00  03 04  05 00 00 00  06 00 00 00"
      "01 00 00 00  02 00 00 00"  // one condition, two texts
      "09 00 00 00  04 00 00 00  0a 00 00 00  0b 00 00 00"
      "0e 00 00 00  78 00 5c 00 79 00 0a 00 3d d8 00 de 00 00  01"  // x, backslash, y, newline, surrogate pair
      "02 00 00 00  00 00  00"
      "01 00 00 00"  // one action
      "0c 00 00 00  0d 00 00 00  0e 00 00 00  01 02  0f 00 00 00  03  10 00 00 00");
}

Bytes header(std::uint32_t policyCount) {
  return Record{16}.put(0, hex("01 00 05 00 03 00 29 00 24 51 54 46")).u32(12, policyCount);
}

Bytes plainEntry(std::uint32_t id, std::u16string_view name) {
  const auto nameSize = static_cast<std::uint32_t>(2 * (name.size() + 1));
  return joined({Record{4 + nameSize}.u32(0, nameSize).text16(4, name), hex("02 00 00 00  64 00  01"),
                 Record{4}.u32(0, id), hex("00 00 00 00  00 00  00 00 00 00  00 00 00 00"),
                 hex("01 00 00 00  00 00 00 00"), hex("01 00 00 00  02 00 00 00  03 00 00 00  00 00 00 00"),
                 hex("00 00 00 00")});
}

Bytes patched(Bytes bytes, std::size_t offset, std::string_view hexBytes) {
  std::ranges::copy(hex(hexBytes), bytes.begin() + static_cast<std::ptrdiff_t>(offset));
  return bytes;
}

}  // namespace test
