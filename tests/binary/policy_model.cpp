// SPDX-License-Identifier: Apache-2.0
#include "tests/binary/policy_model.h"

#include <algorithm>

namespace test {
namespace {

struct Offsets {
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
};

constexpr Offsets kV0 = {.size = 804,
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
                         .conditions = 136};
constexpr Offsets kV1 = {.size = 1448,
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
                         .conditions = 144};
constexpr Offsets kV2 = {.size = 3916,
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
                         .conditions = 208};
constexpr Offsets kPacked = {.size = 3972,
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
                             .conditions = 196};

/// Everything but names, texts and actions.
Record common(const Policy& policy, const Offsets& at) {
  Record record{at.size};
  record.text(at.description, policy.description).u8(at.flag0, policy.flag0).u32(at.id, policy.id);
  record.u32(at.param0, policy.param0).u8(at.flag1, policy.flag1).u8(at.flag2, policy.flag2);
  record.u32(at.param1, policy.param1).u32(at.param2, policy.param2);
  record.u32(at.conditionCount, static_cast<std::uint32_t>(policy.conditions.size()));
  record.u32(at.actionCount, static_cast<std::uint32_t>(policy.actions.size()));
  record.u32(at.textCount, static_cast<std::uint32_t>(policy.texts.size()));
  std::size_t slot = at.conditions;
  for (const auto& [conditionId, op, value, value2] : policy.conditions) {
    record.u32(slot, conditionId).u32(slot + 4, op).u32(slot + 8, value).u32(slot + 12, value2);
    slot += 16;
  }
  return record;
}

std::string narrow(const std::u16string& text, std::size_t most) {
  std::string result;
  for (const char16_t unit : text.substr(0, most)) result += static_cast<char>(unit);
  return result;
}

void putNarrowTexts(Record& record, const Policy& policy, std::size_t slot) {
  for (const auto& [text, flag] : policy.texts) {
    record.text(slot, narrow(text, 31)).u8(slot + 32, flag);
    slot += 33;
  }
}

void putFullActions(Record& record, const Policy& policy, std::size_t slot) {
  for (const auto& action : policy.actions) {
    record.u32(slot, action.actionId).u32(slot + 4, action.value).u32(slot + 8, action.value2);
    record.u8(slot + 12, action.option1).u8(slot + 13, action.option2).u32(slot + 16, action.value3);
    record.u8(slot + 20, action.option3).u32(slot + 24, action.value4);
    slot += 28;
  }
}

}  // namespace

Policy smallPolicy() {
  return {.name = u"A", .description = "", .flag0 = 1, .id = 10, .conditions = {{.op = 2, .value = 1}}};
}

Policy fullPolicy() {
  return {.name = u"Full",
          .description = "every field",
          .flag0 = 0x11,
          .id = 0x22232425,
          .param0 = 0x32333435,
          .flag1 = 0x41,
          .flag2 = 0x51,
          .param1 = 0x62636465,
          .param2 = 0x72737475,
          .conditions = {{0x81828384, 4, 0x91929394, 0xA1A2A3A4}, {0xB1B2B3B4, 0, 0xC1C2C3C4, 0xD1D2D3D4}},
          .texts = {{u"ab", 1}, {u"second text", 0}},
          .actions = {{0x01020304, 0x05060708, 0x090A0B0C, 0x0D, 0x0E, 0x0F101112, 0x13, 0x14151617},
                      {0xE1E2E3E4, 0xE5E6E7E8, 0, 0, 0, 0, 0, 0xFFFFFFFF}}};
}

Bytes packedPolicy(const Policy& policy) {
  Record record = common(policy, kPacked);
  record.text16(0, policy.name);
  std::size_t slot = 436;
  for (const auto& [text, flag] : policy.texts) {
    record.u8(slot, flag).u16(slot + 12, static_cast<std::uint16_t>(text.size() + 1)).text16(slot + 14, text);
    slot += 528;
  }
  putFullActions(record, policy, 3076);
  return record;
}

Bytes bodyV0(const Policy& policy) {
  Record record = common(policy, kV0);
  record.text(0, narrow(policy.name, 63));
  putNarrowTexts(record, policy, 376);
  std::size_t slot = 544;
  for (const auto& action : policy.actions) {
    record.u32(slot, action.actionId).u32(slot + 4, action.value);
    slot += 8;
  }
  return record;
}

Bytes bodyV1(const Policy& policy) {
  Record record = common(policy, kV1);
  record.text(4, narrow(policy.name, 63));
  putNarrowTexts(record, policy, 384);
  putFullActions(record, policy, 552);
  return record;
}

Bytes bodyV2(const Policy& policy) {
  Record record = common(policy, kV2);
  record.text16(4, policy.name);
  std::size_t slot = 448;
  for (const auto& [text, flag] : policy.texts) {
    record.text16(slot, text).u8(slot + 512, flag);
    slot += 514;
  }
  putFullActions(record, policy, 3020);
  return record;
}

}  // namespace test
