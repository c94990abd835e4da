// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "tests/support/policy_model.h"

namespace test {

/// What a .json of examples/policies says of the .bin beside it.
struct SampleContent {
  std::uint16_t version1 = 0;
  std::uint16_t version2 = 0;
  std::size_t size = 0;
  std::vector<Policy> policies;
};

SampleContent sampleContent(std::string_view name);

}  // namespace test
