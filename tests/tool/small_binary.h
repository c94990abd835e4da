// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

#include "tests/support/bytes.h"

namespace test {

/// A policy binary of one policy in which no field is zero and the texts are awkward, byte by byte.
Bytes smallBinary();

/// A revision 5 header that announces so many policies, version 3.41.
Bytes header(std::uint32_t policyCount);

/// A plain policy of one condition: `name` has at most 63 units.
Bytes plainEntry(std::uint32_t id, std::u16string_view name);

/// The same bytes with one part overwritten.
Bytes patched(Bytes bytes, std::size_t offset, std::string_view hexBytes);

}  // namespace test
