// SPDX-License-Identifier: Apache-2.0
#include <fmt/format.h>

#include "tool/commands/command.h"
#include "tool/driver/stores.h"
#include "tool/terminal/text.h"

namespace tool {
namespace {

void reset(Context& context, const std::string& name) {
  const auto& store = storeNamed(name);
  std::size_t count = 0;
  withDriver(context, [&](const Session& session) {
    count = countPolicies(session, store);
    resetStore(session, store);
  });
  context.out = fmt::format("{} removed, the {} store is empty now.\n", countOfPolicies(count), store.title);
}

}  // namespace

void setUpStoreReset(CLI::App& command, Context& context) {
  const auto store = std::make_shared<std::string>();
  addStoreArgument(command, *store);
  command.footer(
      "Examples:\n"
      "  vqs store save asm backup.bin && vqs store reset asm");
  command.callback([&context, store] { reset(context, *store); });
}

}  // namespace tool
