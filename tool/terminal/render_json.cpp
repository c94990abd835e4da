// SPDX-License-Identifier: Apache-2.0
#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "tool/terminal/render.h"
#include "tool/terminal/text.h"

namespace tool {
namespace {

using Json = nlohmann::ordered_json;

void addMembers(Json::object_t& /*members*/) {}

template <class Value, class... Rest>
void addMembers(Json::object_t& members, const char* name, Value&& value, Rest&&... rest) {
  members.emplace_back(name, std::forward<Value>(value));
  addMembers(members, std::forward<Rest>(rest)...);
}

/// An object of names and values in turn. No two of the names are equal: they are not compared, and nothing is copied,
/// for there are thousands of these in a full store.
template <class... NamesAndValues>
Json object(NamesAndValues&&... namesAndValues) {
  Json object = Json::object();
  auto& members = object.get_ref<Json::object_t&>();
  members.reserve(sizeof...(namesAndValues) / 2);
  addMembers(members, std::forward<NamesAndValues>(namesAndValues)...);
  return object;
}

Json toJson(const VqsPolicyCondition& condition) {
  return object("conditionId", condition.conditionId, "op", condition.op, "value", condition.value,  //
                "value2", condition.value2);
}

Json toJson(const VqsPolicyTextV2& text) { return object("text", fromUtf16(text.text), "flag", text.flag); }

Json toJson(const VqsPolicyAction& action) {
  return object("actionId", action.actionId, "value", action.value, "value2", action.value2,    //
                "option1", action.option1, "option2", action.option2, "value3", action.value3,  //
                "option3", action.option3, "value4", action.value4);
}

template <class Entry, std::size_t size>
Json toArray(const Entry (&entries)[size], std::uint32_t count) {
  Json array = Json::array();
  for (const auto& entry : std::span{entries}.first(count)) array.push_back(toJson(entry));
  return array;
}

Json toJson(const VqsPolicyV2& policy) {
  return object("name", fromUtf16(policy.name), "description", fromLatin1(policy.description), "id", policy.id,  //
                "flag0", policy.flag0, "param0", policy.param0, "flag1", policy.flag1, "flag2", policy.flag2,    //
                "param1", policy.param1, "param2", policy.param2,                                                //
                "conditions", toArray(policy.conditions, policy.conditionCount),                                 //
                "texts", toArray(policy.texts, policy.textCount),                                                //
                "actions", toArray(policy.actions, policy.actionCount));
}

bool isSuspicious(char byte) { return byte == '\x7F' || byte == '\xC2'; }

/// DEL and the control characters beyond it are legal in JSON, but drive terminals: they only occur in strings. Takes
/// one character and says how long it was.
std::size_t appendTerminalSafe(std::string& text, std::string_view rest) {
  const auto next = rest.size() > 1 ? static_cast<unsigned char>(rest[1]) : 0U;
  if (rest[0] == '\x7F') {
    text += "\\u007f";
    return 1;
  }
  if (next >= 0xA0) {
    text += rest[0];
    return 1;
  }
  text += fmt::format("\\u{:04x}", next);
  return 2;
}

}  // namespace

Json toJson(std::span<const VqsPolicyV2> policies) {
  Json array = Json::array();
  for (const auto& policy : policies) array.push_back(toJson(policy));
  return array;
}

std::string renderJson(const Json& document) {
  // Names of files may be no UTF-8.
  const std::string dumped = document.dump(2, ' ', false, Json::error_handler_t::replace);
  std::string text;
  text.reserve(dumped.size() + 1);
  for (auto rest = std::string_view{dumped}; !rest.empty();) {
    const auto end = std::ranges::find_if(rest, isSuspicious);
    text.append(rest.begin(), end);
    rest.remove_prefix(static_cast<std::size_t>(end - rest.begin()));
    if (!rest.empty()) rest.remove_prefix(appendTerminalSafe(text, rest));
  }
  return text + '\n';
}

}  // namespace tool
