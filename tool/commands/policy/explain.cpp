// SPDX-License-Identifier: Apache-2.0
#include <fmt/format.h>

#include "tool/commands/command.h"
#include "tool/policies/explanation.h"

namespace tool {

void setUpPolicyExplain(CLI::App& command, Context& context) {
  const auto words = std::make_shared<std::vector<std::string>>();
  command
      .add_option("WORD", *words, "A condition, an action, an option's text, a number as in #12, or a finding's code")
      ->required()
      ->type_name("");
  command.footer(
      "Examples:\n"
      "  vqs policy explain Power Source\n"
      "  vqs policy explain P0012");
  command.callback([&context, words] { context.out = explain(fmt::format("{}", fmt::join(*words, " "))); });
}

}  // namespace tool
