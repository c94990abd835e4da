// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "tests/support/bytes.h"

// What a policy holds, apart from any layout, and an assembler that lays it out by explicit offsets: the library's
// packers, and the offsets of its structs, have no part in it.

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

/// Where a layout keeps what all of them have.
struct Layout {
  std::size_t size;
  std::size_t name;
  std::size_t description;
  std::size_t flag0;
  std::size_t id;
  std::size_t param0;
  std::size_t flag1;
  std::size_t flag2;
  std::size_t param1;
  std::size_t param2;
  std::size_t conditionCount;
  std::size_t actionCount;
  std::size_t textCount;
  std::size_t conditions;
  std::size_t texts;
  std::size_t textSize;
  std::size_t textFlag;
  std::size_t actions;
  std::size_t actionSize;
};

inline constexpr Layout kVersion0 = {.size = 804,
                                     .name = 0,
                                     .description = 64,
                                     .flag0 = 96,
                                     .id = 100,
                                     .param0 = 104,
                                     .flag1 = 108,
                                     .flag2 = 109,
                                     .param1 = 112,
                                     .param2 = 116,
                                     .conditionCount = 120,
                                     .actionCount = 800,
                                     .textCount = 124,
                                     .conditions = 136,
                                     .texts = 376,
                                     .textSize = 33,
                                     .textFlag = 32,
                                     .actions = 544,
                                     .actionSize = 8};
inline constexpr Layout kVersion1 = {.size = 1448,
                                     .name = 4,
                                     .description = 68,
                                     .flag0 = 100,
                                     .id = 104,
                                     .param0 = 108,
                                     .flag1 = 112,
                                     .flag2 = 113,
                                     .param1 = 116,
                                     .param2 = 120,
                                     .conditionCount = 124,
                                     .actionCount = 128,
                                     .textCount = 132,
                                     .conditions = 144,
                                     .texts = 384,
                                     .textSize = 33,
                                     .textFlag = 32,
                                     .actions = 552,
                                     .actionSize = 28};
inline constexpr Layout kVersion2 = {.size = 3916,
                                     .name = 4,
                                     .description = 132,
                                     .flag0 = 164,
                                     .id = 168,
                                     .param0 = 172,
                                     .flag1 = 176,
                                     .flag2 = 177,
                                     .param1 = 180,
                                     .param2 = 184,
                                     .conditionCount = 188,
                                     .actionCount = 192,
                                     .textCount = 196,
                                     .conditions = 208,
                                     .texts = 448,
                                     .textSize = 514,
                                     .textFlag = 512,
                                     .actions = 3020,
                                     .actionSize = 28};
inline constexpr Layout kPacked = {.size = 3972,
                                   .name = 0,
                                   .description = 128,
                                   .flag0 = 160,
                                   .id = 164,
                                   .param0 = 168,
                                   .flag1 = 172,
                                   .flag2 = 173,
                                   .param1 = 176,
                                   .param2 = 180,
                                   .conditionCount = 184,
                                   .actionCount = 188,
                                   .textCount = 192,
                                   .conditions = 196,
                                   .texts = 436,
                                   .textSize = 528,
                                   .textFlag = 0,
                                   .actions = 3076,
                                   .actionSize = 28};

const Layout& layoutOf(std::uint32_t version);

/// Zero throughout, without entries.
Policy emptyPolicy();
/// The policy of tests/data/one-policy.bin: name "A", id 10, one condition.
Policy smallPolicy();
/// A value of its own in every field, two texts and two actions.
Policy richPolicy();
/// A policy that fills every field and entry, no two fields alike. Names and texts leave room for their zero alone, as
/// far as the 8-bit layouts go. In version 0 the fields that its actions lack are zero.
Policy fullPolicy(std::uint32_t version);
/// Full in its texts and its name, few entries; different for every id.
Policy numberedPolicy(std::uint32_t id);
/// The policy with its name and texts cut to what the 8-bit layouts can hold and end with a zero.
Policy shortened(Policy policy);

/// A policy in a structure version, as callers have it; padding, reserved bytes and unused entries hold `fill`. A text
/// that fills its 8-bit field has no zero.
Record policyBody(std::uint32_t version, const Policy& policy, std::uint8_t fill = 0);
/// A policy in the driver's form.
Record packedPolicy(const Policy& policy);

}  // namespace test
