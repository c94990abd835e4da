// SPDX-License-Identifier: Apache-2.0
#include "tests/support/policy_model.h"

#include <string_view>

namespace test {
namespace {

std::string narrow(std::u16string_view units) {
  std::string characters;
  for (const char16_t unit : units) characters += static_cast<char>(unit);
  return characters;
}

void putConditions(Record& record, const Layout& layout, const Policy& policy) {
  std::size_t slot = layout.conditions;
  for (const auto& [conditionId, op, value, value2] : policy.conditions) {
    record.u32(slot, conditionId).u32(slot + 4, op).u32(slot + 8, value).u32(slot + 12, value2);
    slot += 16;
  }
}

void putFullAction(Record& record, std::size_t slot, const Action& action) {
  record.u32(slot + 8, action.value2).u8(slot + 12, action.option1).u8(slot + 13, action.option2);
  record.u32(slot + 16, action.value3).u8(slot + 20, action.option3).u32(slot + 24, action.value4);
}

void putActions(Record& record, const Layout& layout, const Policy& policy) {
  std::size_t slot = layout.actions;
  for (const auto& action : policy.actions) {
    record.u32(slot, action.actionId).u32(slot + 4, action.value);
    if (layout.actionSize == 28) putFullAction(record, slot, action);
    slot += layout.actionSize;
  }
}

void putScalars(Record& record, const Layout& layout, const Policy& policy) {
  record.fill(layout.description, 32, 0).text(layout.description, policy.description);
  record.u8(layout.flag0, policy.flag0).u32(layout.id, policy.id).u32(layout.param0, policy.param0);
  record.u8(layout.flag1, policy.flag1).u8(layout.flag2, policy.flag2);
  record.u32(layout.param1, policy.param1).u32(layout.param2, policy.param2);
  record.u32(layout.conditionCount, static_cast<std::uint32_t>(policy.conditions.size()));
  record.u32(layout.actionCount, static_cast<std::uint32_t>(policy.actions.size()));
  record.u32(layout.textCount, static_cast<std::uint32_t>(policy.texts.size()));
}

void putNarrowTexts(Record& record, const Layout& layout, const Policy& policy) {
  record.text(layout.name, narrow(policy.name + u'\0'));
  std::size_t slot = layout.texts;
  for (const auto& [text, flag] : policy.texts) {
    record.text(slot, narrow(text.size() < layout.textFlag ? text + u'\0' : text)).u8(slot + layout.textFlag, flag);
    slot += layout.textSize;
  }
}

void putWideTexts(Record& record, const Layout& layout, const Policy& policy) {
  record.fill(layout.name, 128, 0).text16(layout.name, policy.name);
  std::size_t slot = layout.texts;
  for (const auto& [text, flag] : policy.texts) {
    record.fill(slot, layout.textFlag, 0).text16(slot, text).u8(slot + layout.textFlag, flag);
    slot += layout.textSize;
  }
}

void putPackedTexts(Record& record, const Layout& layout, const Policy& policy) {
  record.text16(layout.name, policy.name);
  std::size_t slot = layout.texts;
  for (const auto& [text, flag] : policy.texts) {
    record.u8(slot + layout.textFlag, flag).u16(slot + 12, static_cast<std::uint16_t>(text.size() + 1));
    record.text16(slot + 14, text);
    slot += layout.textSize;
  }
}

/// Everything but name and texts.
Record numbersOf(const Layout& layout, const Policy& policy, std::uint8_t fill) {
  Record record{layout.size, fill};
  putScalars(record, layout, policy);
  putConditions(record, layout, policy);
  putActions(record, layout, policy);
  return record;
}

/// `count` units from `first` on.
std::u16string unitsFrom(std::uint32_t first, std::size_t count) {
  std::u16string units;
  for (std::size_t i = 0; i < count; ++i) units += static_cast<char16_t>(first + i);
  return units;
}

Action numberedAction(std::uint32_t number, bool isShort) {
  const auto byte = static_cast<std::uint8_t>(number);
  Action action{.actionId = 0x50010200 + number, .value = 0x51030400 + number};
  if (isShort) return action;
  action.value2 = 0x52050600 + number;
  action.option1 = static_cast<std::uint8_t>(0x80 + byte);
  action.option2 = static_cast<std::uint8_t>(0xA0 + byte);
  action.value3 = 0x53070800 + number;
  action.option3 = static_cast<std::uint8_t>(0xC0 + byte);
  action.value4 = 0x54090A00 + number;
  return action;
}

/// Every field but the entries.
Policy fullScalars() {
  Policy policy{.name = unitsFrom(0x21, 63),
                .description = {},
                .flag0 = 0x11,
                .id = 0x12131415,
                .param0 = 0x16171819,
                .flag1 = 0x1A,
                .flag2 = 0x1B,
                .param1 = 0x1C1D1E1F,
                .param2 = 0x20212223,
                .conditions = {}};
  for (int i = 0; i < 32; ++i) policy.description += static_cast<char>(0xE0 + i);
  return policy;
}

}  // namespace

const Layout& layoutOf(std::uint32_t version) {
  return version == 0 ? kVersion0 : version == 1 ? kVersion1 : kVersion2;
}

Policy emptyPolicy() { return {.name = {}, .description = {}, .conditions = {}}; }

Policy smallPolicy() {
  return {.name = u"A", .description = "", .flag0 = 1, .id = 10, .conditions = {{.op = 2, .value = 1}}};
}

Policy richPolicy() {
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

Policy fullPolicy(std::uint32_t version) {
  auto policy = fullScalars();
  for (std::uint32_t i = 0; i < 15; ++i)
    policy.conditions.push_back({0x40010200 + i, i % 5, 0x41030400 + i, 0x42050600 + i});
  for (std::uint8_t i = 0; i < 5; ++i)
    policy.texts.push_back({unitsFrom(0x21 + 32U * i, 31), static_cast<std::uint8_t>(i % 2)});
  for (std::uint32_t i = 0; i < 32; ++i) policy.actions.push_back(numberedAction(i, version == 0));
  return policy;
}

Policy numberedPolicy(std::uint32_t id) {
  auto policy = fullPolicy(0);
  policy.id = id;
  policy.param0 = ~id;
  policy.name[0] = static_cast<char16_t>(0x30 + id % 10);
  policy.conditions.resize(3);
  policy.texts.resize(2);
  policy.actions.resize(4);
  policy.actions[3].value = id;
  return policy;
}

Policy shortened(Policy policy) {
  policy.name = policy.name.substr(0, 63);
  for (auto& [text, flag] : policy.texts) text = text.substr(0, 31);
  return policy;
}

Record policyBody(std::uint32_t version, const Policy& policy, std::uint8_t fill) {
  const auto& layout = layoutOf(version);
  auto record = numbersOf(layout, policy, fill);
  if (version == 2)
    putWideTexts(record, layout, policy);
  else
    putNarrowTexts(record, layout, policy);
  return record;
}

Record packedPolicy(const Policy& policy) {
  auto record = numbersOf(kPacked, policy, 0);
  putPackedTexts(record, kPacked, policy);
  return record;
}

}  // namespace test
