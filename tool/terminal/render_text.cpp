// SPDX-License-Identifier: Apache-2.0
#include <fmt/format.h>

#include "tool/terminal/render.h"
#include "tool/terminal/text.h"
#include "tool/terminal/text_table.h"

namespace tool {
namespace {

/// ", name value" for a value that is not zero.
std::string unlessZero(std::string_view name, std::uint32_t value) {
  return value == 0 ? "" : fmt::format(", {} {}", name, value);
}

std::string line(std::string_view heading, const std::string& text) {
  constexpr std::size_t kHeadingWidth = 13;
  return "  " + padded(std::string{heading}, kHeadingWidth) + text + '\n';
}

std::string renderSettings(const VqsPolicyV2& policy) {
  const std::string settings = unlessZero("flag0", policy.flag0) + unlessZero("param0", policy.param0) +
                               unlessZero("flag1", policy.flag1) + unlessZero("flag2", policy.flag2) +
                               unlessZero("param1", policy.param1) + unlessZero("param2", policy.param2);
  return settings.empty() ? "" : line("settings", settings.substr(2));
}

std::string renderCondition(const VqsPolicyCondition& condition) {
  return fmt::format("id {}, op {}, value {}", condition.conditionId, condition.op, condition.value) +
         unlessZero("value2", condition.value2);
}

std::string renderText(const VqsPolicyTextV2& text) {
  return inQuotes(fromUtf16(text.text)) + unlessZero("flag", text.flag);
}

std::string renderAction(const VqsPolicyAction& action) {
  return fmt::format("id {}, value {}", action.actionId, action.value) + unlessZero("value2", action.value2) +
         unlessZero("option1", action.option1) + unlessZero("option2", action.option2) +
         unlessZero("value3", action.value3) + unlessZero("option3", action.option3) +
         unlessZero("value4", action.value4);
}

}  // namespace

std::string renderPolicy(const VqsPolicyV2& policy) {
  std::string text = fmt::format("Policy {}: {}\n", policy.id, inQuotes(fromUtf16(policy.name)));
  const std::string description = fromLatin1(policy.description);
  if (!description.empty()) text += line("description", inQuotes(description));
  text += renderSettings(policy);
  for (const auto& condition : std::span{policy.conditions}.first(policy.conditionCount))
    text += line("condition", renderCondition(condition));
  for (const auto& entry : std::span{policy.texts}.first(policy.textCount)) text += line("text", renderText(entry));
  for (const auto& action : std::span{policy.actions}.first(policy.actionCount))
    text += line("action", renderAction(action));
  return text;
}

std::string renderTable(std::span<const VqsPolicyV2> policies) {
  TextTable table{{{"ID", Align::kRight},
                   {"NAME", Align::kLeft},
                   {"CONDITIONS", Align::kRight},
                   {"TEXTS", Align::kRight},
                   {"ACTIONS", Align::kRight},
                   {"DESCRIPTION", Align::kLeft}}};
  for (const auto& policy : policies)
    table.add({std::to_string(policy.id), printable(fromUtf16(policy.name)), std::to_string(policy.conditionCount),
               std::to_string(policy.textCount), std::to_string(policy.actionCount),
               printable(fromLatin1(policy.description))});
  return table.render();
}

}  // namespace tool
