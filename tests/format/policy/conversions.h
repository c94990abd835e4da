// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "format/policy/conversion.h"
#include "tests/support/bytes.h"

namespace test {

/// The library's conversions on bodies as bytes; the pointers point at exactly as many bytes as there are. 0 when all
/// went well, -1 for a text that could not be converted, 1 for anything else.
int pack(std::uint32_t version, const Bytes& body, vqs::PackedPolicy& packed);
int unpack(std::uint32_t version, const Bytes& packed, Bytes& body);

/// Names the cases of a test that runs once for each structure version.
std::string versionName(const ::testing::TestParamInfo<std::uint32_t>& instance);

}  // namespace test
