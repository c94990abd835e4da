// SPDX-License-Identifier: Apache-2.0
#include "tool/commands/command.h"

namespace tool {

CLI::Option* addOutputOption(CLI::App& command, Context& context) {
  return command
      .add_option_function<std::string>(
          "-o,--output", [&context](const std::string& path) { context.output.useFile(path); },
          "Write to FILE instead of standard output; an existing one is replaced, whole or not at all")
      ->type_name("FILE");
}

}  // namespace tool
