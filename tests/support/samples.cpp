// SPDX-License-Identifier: Apache-2.0
#include "tests/support/samples.h"

#include <nlohmann/json.hpp>

#include "tests/support/temporary_folder.h"

namespace test {
namespace {

using Json = nlohmann::json;

/// Well-formed UTF-8 to UTF-16.
std::u16string utf16(const std::string& text) {
  std::u16string result;
  for (std::size_t i = 0; i < text.size();) {
    const auto lead = static_cast<unsigned char>(text[i++]);
    const int more = lead < 0x80 ? 0 : lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
    std::uint32_t code = more == 0 ? lead : lead & (0x3FU >> more);
    for (int k = 0; k < more; ++k) code = code << 6 | (static_cast<unsigned char>(text[i++]) & 0x3FU);
    if (code > 0xFFFF) {
      result += static_cast<char16_t>(0xD800 + ((code - 0x10000) >> 10));
      code = 0xDC00 + ((code - 0x10000) & 0x3FF);
    }
    result += static_cast<char16_t>(code);
  }
  return result;
}

template <class T>
T number(const Json& object, const char* key) {
  return object.at(key).get<T>();
}

Condition conditionOf(const Json& json) {
  using Word = std::uint32_t;
  return {number<Word>(json, "conditionId"), number<Word>(json, "op"), number<Word>(json, "value"),
          number<Word>(json, "value2")};
}

Action actionOf(const Json& json) {
  using Word = std::uint32_t;
  using Byte = std::uint8_t;
  return {number<Word>(json, "actionId"), number<Word>(json, "value"),   number<Word>(json, "value2"),
          number<Byte>(json, "option1"),  number<Byte>(json, "option2"), number<Word>(json, "value3"),
          number<Byte>(json, "option3"),  number<Word>(json, "value4")};
}

Policy policyOf(const Json& json) {
  Policy policy;
  policy.name = utf16(json.at("name").get<std::string>());
  policy.description = json.at("description").get<std::string>();
  policy.flag0 = number<std::uint8_t>(json, "flag0");
  policy.id = number<std::uint32_t>(json, "id");
  policy.param0 = number<std::uint32_t>(json, "param0");
  policy.flag1 = number<std::uint8_t>(json, "flag1");
  policy.flag2 = number<std::uint8_t>(json, "flag2");
  policy.param1 = number<std::uint32_t>(json, "param1");
  policy.param2 = number<std::uint32_t>(json, "param2");
  policy.conditions.clear();
  for (const auto& condition : json.at("conditions")) policy.conditions.push_back(conditionOf(condition));
  for (const auto& text : json.at("texts"))
    policy.texts.push_back({utf16(text.at("text").get<std::string>()), number<std::uint8_t>(text, "flag")});
  for (const auto& action : json.at("actions")) policy.actions.push_back(actionOf(action));
  return policy;
}

}  // namespace

SampleContent sampleContent(std::string_view name) {
  const auto json = Json::parse(sample(name));
  SampleContent content{.version1 = number<std::uint16_t>(json, "binaryVersion1"),
                        .version2 = number<std::uint16_t>(json, "binaryVersion2"),
                        .size = number<std::size_t>(json, "size"),
                        .policies = {}};
  for (const auto& policy : json.at("policies")) content.policies.push_back(policyOf(policy));
  return content;
}

}  // namespace test
