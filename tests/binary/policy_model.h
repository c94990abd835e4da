// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tests/support/bytes.h"

namespace test {

struct Condition {
  std::uint32_t conditionId = 0;
  std::uint32_t op = 0;
  std::uint32_t value = 0;
  std::uint32_t value2 = 0;
};

struct Text {
  std::u16string text;
  std::uint8_t flag = 0;
};

struct Action {
  std::uint32_t actionId = 0;
  std::uint32_t value = 0;
  std::uint32_t value2 = 0;
  std::uint8_t option1 = 0;
  std::uint8_t option2 = 0;
  std::uint32_t value3 = 0;
  std::uint8_t option3 = 0;
  std::uint32_t value4 = 0;
};

/// What a policy says, in no layout.
struct Policy {
  std::u16string name;
  std::string description;
  std::uint8_t flag0 = 0;
  std::uint32_t id = 0;
  std::uint32_t param0 = 0;
  std::uint8_t flag1 = 0;
  std::uint8_t flag2 = 0;
  std::uint32_t param1 = 0;
  std::uint32_t param2 = 0;
  std::vector<Condition> conditions = {{}};
  std::vector<Text> texts = {};
  std::vector<Action> actions = {};
};

/// The policy of tests/data/one-policy.bin: name "A", id 10, one condition.
Policy smallPolicy();
/// A value of its own in every field, two texts and two actions.
Policy fullPolicy();

// The same policy in each layout, put together by offset; what no field covers is zero. The 8-bit layouts take texts of
// 8-bit characters only and cut what is longer than 31.
Bytes packedPolicy(const Policy& policy);
Bytes bodyV0(const Policy& policy);
Bytes bodyV1(const Policy& policy);
Bytes bodyV2(const Policy& policy);

}  // namespace test
