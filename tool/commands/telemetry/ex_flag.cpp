// SPDX-License-Identifier: Apache-2.0
#include "tool/commands/command.h"

namespace tool {

CLI::Option* addExFlag(CLI::App& command, LogGeneration& generation) {
  return command.add_flag_callback(
      "--ex", [&generation] { generation = LogGeneration::kEx; }, "The Ex key/value log, which has keys of its own");
}

}  // namespace tool
