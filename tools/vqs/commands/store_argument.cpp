// SPDX-License-Identifier: Apache-2.0
#include "../stores.h"
#include "command.h"

namespace tool {

CLI::Option* addStoreArgument(CLI::App& command, std::string& store) {
  return command.add_option("STORE", store, "The policy store: " + storeNames())->required()->type_name("");
}

}  // namespace tool
