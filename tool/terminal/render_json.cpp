// SPDX-License-Identifier: Apache-2.0
#include <fmt/format.h>

#include "tool/terminal/render.h"
#include "tool/terminal/text.h"

namespace tool {
namespace {

using Json = nlohmann::ordered_json;

Json toJson(const VqsPolicyCondition& condition) {
  return {{"conditionId", condition.conditionId},
          {"op", condition.op},
          {"value", condition.value},
          {"value2", condition.value2}};
}

Json toJson(const VqsPolicyTextV2& text) { return {{"text", fromUtf16(text.text)}, {"flag", text.flag}}; }

Json toJson(const VqsPolicyAction& action) {
  return {{"actionId", action.actionId}, {"value", action.value},     {"value2", action.value2},
          {"option1", action.option1},   {"option2", action.option2}, {"value3", action.value3},
          {"option3", action.option3},   {"value4", action.value4}};
}

template <class Entry, std::size_t size>
Json toArray(const Entry (&entries)[size], std::uint32_t count) {
  Json array = Json::array();
  for (const auto& entry : std::span{entries}.first(count)) array.push_back(toJson(entry));
  return array;
}

Json toJson(const VqsPolicyV2& policy) {
  return {{"name", fromUtf16(policy.name)},
          {"description", fromLatin1(policy.description)},
          {"id", policy.id},
          {"flag0", policy.flag0},
          {"param0", policy.param0},
          {"flag1", policy.flag1},
          {"flag2", policy.flag2},
          {"param1", policy.param1},
          {"param2", policy.param2},
          {"conditions", toArray(policy.conditions, policy.conditionCount)},
          {"texts", toArray(policy.texts, policy.textCount)},
          {"actions", toArray(policy.actions, policy.actionCount)}};
}

}  // namespace

Json toJson(std::span<const VqsPolicyV2> policies) {
  Json array = Json::array();
  for (const auto& policy : policies) array.push_back(toJson(policy));
  return array;
}

std::string renderJson(const Json& document) {
  std::string text;
  const std::string dumped = document.dump(2);
  // DEL and the control characters beyond it are legal in JSON, but drive terminals: they only occur in strings.
  for (std::size_t i = 0; i < dumped.size(); ++i) {
    const auto byte = static_cast<unsigned char>(dumped[i]);
    const auto next = i + 1 < dumped.size() ? static_cast<unsigned char>(dumped[i + 1]) : 0U;
    if (byte == 0x7F) {
      text += "\\u007f";
    } else if (byte == 0xC2 && next < 0xA0) {
      text += fmt::format("\\u{:04x}", next);
      ++i;
    } else {
      text += dumped[i];
    }
  }
  return text + '\n';
}

}  // namespace tool
