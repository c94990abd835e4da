// SPDX-License-Identifier: Apache-2.0
#include <fmt/format.h>

#include <algorithm>

#include "tool/commands/command.h"
#include "tool/terminal/text.h"

namespace tool {

CLI::Option* addChoice(CLI::App& command, const char* name, std::string& value, const std::vector<std::string>& choices,
                       const char* description) {
  return command.add_option(name, value, description)
      ->type_name("WORD")
      ->check(CLI::Validator(
          [choices](const std::string& word) {
            const bool isOne = std::ranges::find(choices, word) != choices.end();
            return isOne ? std::string{} : fmt::format("{} is none of {}", inQuotes(word), fmt::join(choices, ", "));
          },
          ""));
}

std::uint32_t structureVersionOf(const std::string& word) { return static_cast<std::uint32_t>(word.front() - '0'); }

void addReadOptions(CLI::App& command, std::string& structureVersion, bool& allowUnknown) {
  addChoice(command, "--structure-version", structureVersion, {"0", "1", "2"},
            "The records that the policies are for: 0 and 1 hold shorter, 8-bit text; 2 when left out");
  command.add_flag("--allow-unknown", allowUnknown, "Let pass with a warning what the catalogues do not know");
}

}  // namespace tool
