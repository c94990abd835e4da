// SPDX-License-Identifier: Apache-2.0
#include "tests/format/policy/content.h"

#include <cerrno>

#include "src/channel/text.h"

namespace test {
namespace {

/// The conversions tell no more than that they failed: the runtime's error indicator, cleared before, tells why.
int resultOf(bool isConverted) {
  if (isConverted) return 0;
  return errno == 0 ? 1 : -1;
}

void putNarrow(Record& record, std::size_t offset, const std::u16string& units) {
  for (const char16_t unit : units) record.u8(offset++, static_cast<std::uint8_t>(unit));
}

void putConditions(Record& record, const Layout& layout, const PolicyContent& content) {
  std::size_t offset = layout.conditions;
  for (const auto& condition : content.conditions) {
    for (std::size_t i = 0; i < 4; ++i) record.u32(offset + 4 * i, condition[i]);
    offset += 16;
  }
}

void putActions(Record& record, const Layout& layout, const PolicyContent& content) {
  std::size_t offset = layout.actions;
  for (const auto& action : content.actions) {
    record.u32(offset, action.actionId).u32(offset + 4, action.value);
    if (layout.actionSize == 28) {
      record.u32(offset + 8, action.value2).u8(offset + 12, action.option1).u8(offset + 13, action.option2);
      record.u32(offset + 16, action.value3).u8(offset + 20, action.option3).u32(offset + 24, action.value4);
    }
    offset += layout.actionSize;
  }
}

void putScalars(Record& record, const Layout& layout, const PolicyContent& content) {
  record.put(layout.description, content.description).u8(layout.flag0, content.flag0).u32(layout.id, content.id);
  record.u32(layout.param0, content.param0).u8(layout.flag1, content.flag1).u8(layout.flag2, content.flag2);
  record.u32(layout.param1, content.param1).u32(layout.param2, content.param2);
  record.u32(layout.conditionCount, static_cast<std::uint32_t>(content.conditions.size()));
  record.u32(layout.actionCount, static_cast<std::uint32_t>(content.actions.size()));
  record.u32(layout.textCount, static_cast<std::uint32_t>(content.texts.size()));
}

void putNarrowTexts(Record& record, const Layout& layout, const PolicyContent& content) {
  putNarrow(record, layout.name, content.name + u'\0');
  std::size_t offset = layout.texts;
  for (const auto& text : content.texts) {
    // A text that fills the field has no NUL.
    putNarrow(record, offset, text.units.size() < 32 ? text.units + u'\0' : text.units);
    record.u8(offset + 32, text.flag);
    offset += 33;
  }
}

void putWideTexts(Record& record, const PolicyContent& content) {
  record.fill(4, 128, 0).text16(4, content.name);
  std::size_t offset = 448;
  for (const auto& text : content.texts) {
    record.fill(offset, 512, 0).text16(offset, text.units).u8(offset + 512, text.flag);
    offset += 514;
  }
}

void putPackedTexts(Record& record, const PolicyContent& content) {
  record.text16(0, content.name);
  std::size_t offset = 436;
  for (const auto& text : content.texts) {
    record.u8(offset, text.flag).u16(offset + 12, static_cast<std::uint16_t>(text.units.size() + 1));
    record.text16(offset + 14, text.units);
    offset += 528;
  }
}

/// `count` units from `first` on.
std::u16string unitsFrom(std::uint32_t first, std::size_t count) {
  std::u16string units;
  for (std::size_t i = 0; i < count; ++i) units += static_cast<char16_t>(first + i);
  return units;
}

ActionContent action(std::uint32_t number, bool isShort) {
  const auto byte = static_cast<std::uint8_t>(number);
  ActionContent content{.actionId = 0x50010200 + number, .value = 0x51030400 + number};
  if (isShort) return content;
  content.value2 = 0x52050600 + number;
  content.option1 = static_cast<std::uint8_t>(0x80 + byte);
  content.option2 = static_cast<std::uint8_t>(0xA0 + byte);
  content.value3 = 0x53070800 + number;
  content.option3 = static_cast<std::uint8_t>(0xC0 + byte);
  content.value4 = 0x54090A00 + number;
  return content;
}

}  // namespace

const Layout& layoutOf(std::uint32_t version) {
  return version == 0 ? kVersion0 : version == 1 ? kVersion1 : kVersion2;
}

Record callerRecord(std::uint32_t version, const PolicyContent& content, std::uint8_t fill) {
  const auto& layout = layoutOf(version);
  Record record{layout.size, fill};
  putScalars(record, layout, content);
  putConditions(record, layout, content);
  if (version == 2)
    putWideTexts(record, content);
  else
    putNarrowTexts(record, layout, content);
  putActions(record, layout, content);
  return record;
}

Record packedRecord(const PolicyContent& content) {
  Record record{kPacked.size};
  putScalars(record, kPacked, content);
  putConditions(record, kPacked, content);
  putPackedTexts(record, content);
  putActions(record, kPacked, content);
  return record;
}

PolicyContent fullPolicy(std::uint32_t version) {
  PolicyContent content;
  content.name = unitsFrom(0x21, 63);
  for (std::uint8_t i = 0; i < 32; ++i) content.description[i] = static_cast<std::uint8_t>(0xE0 + i);
  content.flag0 = 0x11;
  content.id = 0x12131415;
  content.param0 = 0x16171819;
  content.flag1 = 0x1A;
  content.flag2 = 0x1B;
  content.param1 = 0x1C1D1E1F;
  content.param2 = 0x20212223;
  for (std::uint32_t i = 0; i < 15; ++i)
    content.conditions.push_back({0x40010200 + i, i % 5, 0x41030400 + i, 0x42050600 + i});
  for (std::uint8_t i = 0; i < 5; ++i)
    content.texts.push_back({unitsFrom(0x21 + 32U * i, 31), static_cast<std::uint8_t>(i % 2)});
  for (std::uint32_t i = 0; i < 32; ++i) content.actions.push_back(action(i, version == 0));
  return content;
}

PolicyContent numberedPolicy(std::uint32_t id) {
  auto content = fullPolicy(0);
  content.id = id;
  content.param0 = ~id;
  content.name[0] = static_cast<char16_t>(0x30 + id % 10);
  content.conditions.resize(3);
  content.texts.resize(2);
  content.actions.resize(4);
  content.actions[3].value = id;
  return content;
}

int pack(std::uint32_t version, const Bytes& body, vqs::PackedPolicy& packed) {
  EXPECT_EQ(body.size(), layoutOf(version).size);
  errno = 0;
  return resultOf(vqs::packPolicyBody(version, body.data(), &packed, vqs::kRuntimeText));
}

int unpack(std::uint32_t version, const Bytes& packed, Bytes& body) {
  EXPECT_EQ(packed.size(), 3972U);
  EXPECT_EQ(body.size(), layoutOf(version).size);
  errno = 0;
  const auto* source = reinterpret_cast<const vqs::PackedPolicy*>(packed.data());
  return resultOf(vqs::unpackPolicyBody(version, source, body.data(), vqs::kRuntimeText));
}

std::string versionName(const ::testing::TestParamInfo<std::uint32_t>& instance) {
  return std::string{"Version"}.append(std::to_string(instance.param));
}

}  // namespace test
