// SPDX-License-Identifier: Apache-2.0
#include "tool/terminal/render.h"
#include "tool/terminal/text.h"
#include "tool/terminal/text_table.h"

namespace tool {

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
