// SPDX-License-Identifier: Apache-2.0
#include "tests/support/policy_file.h"

namespace test {
namespace {

Assembly& putTexts(Assembly& bytes, const std::vector<EntryText>& texts) {
  for (const auto& [text, flag, size] : texts) {
    bytes.u32(size.value_or(static_cast<std::uint32_t>(text.size()))).bytes(text);
    if (flag) bytes.u8(*flag);
  }
  return bytes;
}

void putAction(Assembly& bytes, const Action& action, bool isShort) {
  bytes.u32(action.actionId).u32(action.value);
  if (isShort) return;
  bytes.u32(action.value2).u8(action.option1).u8(action.option2).u32(action.value3).u8(action.option3);
  bytes.u32(action.value4);
}

template <class List>
std::uint32_t countOf(const std::optional<std::uint32_t>& told, const List& list) {
  return told.value_or(static_cast<std::uint32_t>(list.size()));
}

}  // namespace

Assembly& Assembly::bytes(const Bytes& bytes) {
  bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
  return *this;
}

Assembly& Assembly::little(std::uint64_t value, std::size_t width) {
  for (std::size_t i = 0; i < width; ++i) bytes_.push_back(static_cast<std::uint8_t>(value >> 8 * i));
  return *this;
}

Bytes units(std::u16string_view text) {
  Assembly bytes;
  for (const char16_t unit : text) bytes.u16(unit);
  return bytes;
}

Bytes characters(std::string_view text) { return {text.begin(), text.end()}; }

Bytes entryBytes(const Entry& entry) {
  Assembly bytes;
  bytes.u32(countOf(entry.nameSize, entry.name)).bytes(entry.name);
  bytes.u32(countOf(entry.descriptionSize, entry.description)).bytes(entry.description);
  bytes.u8(entry.flag0).u32(entry.id).u32(entry.param0).u8(entry.flag1).u8(entry.flag2);
  bytes.u32(entry.param1).u32(entry.param2);
  bytes.u32(countOf(entry.conditionCount, entry.conditions)).u32(countOf(entry.textCount, entry.texts));
  for (const auto& [conditionId, op, value, value2] : entry.conditions)
    bytes.u32(conditionId).u32(op).u32(value).u32(value2);
  putTexts(bytes, entry.texts).u32(countOf(entry.actionCount, entry.actions));
  for (const auto& action : entry.actions) putAction(bytes, action, entry.shortActions);
  return bytes;
}

Entry wideEntry(const Policy& policy) {
  std::vector<EntryText> texts;
  texts.reserve(policy.texts.size());
  for (const auto& [text, flag] : policy.texts) texts.push_back({joined({units(text), {0, 0}}), flag});
  return {.name = joined({units(policy.name), {0, 0}}),
          .description = joined({characters(policy.description), {0}}),
          .flag0 = policy.flag0,
          .id = policy.id,
          .param0 = policy.param0,
          .flag1 = policy.flag1,
          .flag2 = policy.flag2,
          .param1 = policy.param1,
          .param2 = policy.param2,
          .conditions = policy.conditions,
          .texts = texts,
          .actions = policy.actions};
}

Bytes fileOf(const std::vector<Entry>& entries, const FileHead& head) {
  Assembly bytes;
  bytes.u16(head.formatVersion).u16(head.revision).u16(head.version1).u16(head.version2);
  bytes.bytes(characters(head.magic)).u32(countOf(head.policyCount, entries));
  for (const auto& entry : entries) bytes.bytes(entryBytes(entry));
  return bytes;
}

Bytes oldFileOf(std::uint16_t revision, const std::vector<Entry>& entries, const OldLimits& limits,
                const FileHead& head) {
  Assembly bytes;
  bytes.u16(head.formatVersion).u16(revision).u16(head.version1).u16(head.version2);
  bytes.u32(countOf(head.policyCount, entries)).bytes(Bytes(24, 0xEE));
  bytes.u32(limits.name).u32(limits.description).u32(limits.conditions).u32(limits.texts).u32(limits.textSize);
  bytes.bytes(Bytes(4, 0xEE)).u32(limits.actions);
  for (const auto& entry : entries) bytes.bytes(entryBytes(entry));
  return bytes;
}

Bytes writtenFile(const std::vector<Policy>& policies, std::uint16_t version1, std::uint16_t version2) {
  std::vector<Entry> entries;
  entries.reserve(policies.size());
  for (const auto& policy : policies) entries.push_back(wideEntry(policy));
  Bytes file = fileOf(entries, {.version1 = version1, .version2 = version2});
  file.resize(file.size() + 3 * policies.size());
  return file;
}

}  // namespace test
