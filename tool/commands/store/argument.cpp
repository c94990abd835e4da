// SPDX-License-Identifier: Apache-2.0
#include "tool/commands/command.h"
#include "tool/driver/stores.h"

namespace tool {

CLI::Option* addStoreArgument(CLI::App& command, std::string& store) {
  return command.add_option("STORE", store, "The policy store: " + storeNames())->required()->type_name("");
}

}  // namespace tool
