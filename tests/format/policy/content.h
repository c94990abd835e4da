// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "format/policy/conversion.h"
#include "tests/support/bytes.h"

// What a policy holds, apart from any layout, and an assembler that lays it out by explicit offsets: the library's
// packers, and the offsets of its structs, have no part in it.

namespace test {

struct TextContent {
  std::u16string units;
  std::uint8_t flag;
};

struct ActionContent {
  std::uint32_t actionId;
  std::uint32_t value;
  std::uint32_t value2 = 0;
  std::uint8_t option1 = 0;
  std::uint8_t option2 = 0;
  std::uint32_t value3 = 0;
  std::uint8_t option3 = 0;
  std::uint32_t value4 = 0;
};

struct PolicyContent {
  std::u16string name;
  Bytes description = Bytes(32, 0);
  std::uint8_t flag0 = 0;
  std::uint32_t id = 0;
  std::uint32_t param0 = 0;
  std::uint8_t flag1 = 0;
  std::uint8_t flag2 = 0;
  std::uint32_t param1 = 0;
  std::uint32_t param2 = 0;
  /// condition type, comparison, both operands
  std::vector<std::array<std::uint32_t, 4>> conditions;
  std::vector<TextContent> texts;
  std::vector<ActionContent> actions;
};

/// Where a layout keeps what all of them have.
struct Layout {
  std::size_t size, name, description, flag0, id, param0, flag1, flag2, param1, param2;
  std::size_t conditionCount, actionCount, textCount, conditions, texts, textSize, textFlag, actions, actionSize;
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

/// A body of a structure version; padding, reserved bytes and unused entries hold `fill`.
Record callerRecord(std::uint32_t version, const PolicyContent& content, std::uint8_t fill = 0);
/// A policy in the driver's form.
Record packedRecord(const PolicyContent& content);

/// A policy that fills every field and entry, no two fields alike. Names and texts leave room for their zero alone, as
/// far as the 8-bit layouts go. In version 0 the fields that its actions lack are zero.
PolicyContent fullPolicy(std::uint32_t version);
/// Full in its texts and its name, few entries; different for every id.
PolicyContent numberedPolicy(std::uint32_t id);

/// The library's conversions on bodies as bytes; the pointers point at exactly as many bytes as there are. 0 when all
/// went well, -1 for a text that could not be converted, 1 for anything else.
int pack(std::uint32_t version, const Bytes& body, vqs::PackedPolicy& packed);
int unpack(std::uint32_t version, const Bytes& packed, Bytes& body);

/// Names the cases of a test that runs once for each structure version.
std::string versionName(const ::testing::TestParamInfo<std::uint32_t>& instance);

}  // namespace test
